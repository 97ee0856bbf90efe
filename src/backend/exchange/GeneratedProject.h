// A big project of even content, for measuring.
#pragma once

#include "backend/service/BulkWriter.h"

#include <cstdint>
#include <string>

namespace Exchange {

struct GeneratedSize {
    std::int64_t Requirements = 0;
    std::int64_t ChildrenOfOne = 0; // of these, under one requirement of the first level
    std::int64_t GlossaryTerms = 0; // "term0", "term1" and so on, in one glossary
};

// Writes one project "Generated" with the user "admin", password "admin", into a new
// database: descriptions of about 2 kB, branches of ten, and the one long branch under
// the first requirement. The same size gives the same database. Raises
// Backend::StoreError; the caller then has to remove what was begun.
void BuildGeneratedDatabase(const std::string& databasePath, const GeneratedSize& size,
                            Backend::BulkWriter::Hashing hashing = Backend::BulkWriter::Hashing::Secure);

} // namespace Exchange
