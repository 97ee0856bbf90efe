// What descriptions draw on: the glossaries of a project, and images by the hash of
// their content.
#pragma once

#include "backend/store/Database.h"
#include "backend/store/Model.h"

#include <optional>

namespace Backend {

struct Image {
    std::string MediaType;
    std::string Data;
};

class GlossaryTable {
public:
    explicit GlossaryTable(Database& database)
        : FDatabase(database) {}

    // With its terms, after the project's other glossaries.
    void Add(ObjectId projectId, const Glossary& glossary);
    std::vector<Glossary> ReadAll(ObjectId projectId);

private:
    Database& FDatabase;
};

class ImageTable {
public:
    explicit ImageTable(Database& database)
        : FDatabase(database) {}

    // An image that is there already stays.
    void Add(const std::string& hash, const std::string& mediaType, std::string_view data);
    std::optional<Image> Read(const std::string& hash);

private:
    Database& FDatabase;
};

} // namespace Backend
