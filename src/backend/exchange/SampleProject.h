// One sample project, from its texts into the database.
#pragma once

#include "backend/exchange/SampleRequirement.h"

#include <deque>
#include <filesystem>

namespace Exchange {

// What all projects of the database share.
struct SampleNames {
    NameMap Users; // by logon name
    NameMap Groups;
    NameMap Requirements; // by the ids that their texts give them
};

class SampleProject {
public:
    // Folder: the one with the project.txt, beside which stand pictures and icons.
    SampleProject(Backend::BulkWriter& writer, SampleNames& names, std::filesystem::path folder,
                  std::filesystem::path sourceFolder);

    // Everything but traces.
    void Write();
    // Once the requirements of all projects are written, because traces run between them,
    // and once nothing changes any more, because a change makes traces suspect.
    void WriteTraces();

private:
    struct Section {
        const OutlineEntry* Head;
        std::vector<const OutlineEntry*> Below;
    };

    std::vector<Section> SectionsOf(const std::string& kind) const;
    void WriteProject();
    void WriteGlossary(const Section& section);
    void ReadType(const Section& section);
    void PlanRequirements(const SampleType& type, const std::string& file);
    void WriteHistory();
    void WriteBaseline(const OutlineEntry& entry);
    void WriteRequirement(SampleRequirement& plan);
    void WriteDiscussion(const SampleRequirement& plan);
    void WriteMessage(const SampleRequirement& plan, const OutlineField& field,
                      Backend::ObjectId& lastMessage);
    void WriteTrace(const SampleRequirement& plan, const OutlineField& field);
    void WriteSourceTrace(const SampleRequirement& plan, const OutlineField& field, bool away, bool suspect);
    std::string AddPicture(const std::string& file);

    Backend::BulkWriter& FWriter;
    SampleNames& FNames;
    std::filesystem::path FFolder, FSourceFolder;
    std::vector<OutlineEntry> FEntries;
    std::deque<std::vector<OutlineEntry>> FTexts; // of the requirements; entries stay where they are
    std::deque<SampleType> FTypes;
    std::vector<SampleRequirement> FRequirements;
    Backend::ObjectId FProjectId = 0;
};

} // namespace Exchange
