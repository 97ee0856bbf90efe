#include "backend/exchange/GeneratedProject.h"

#include <array>
#include <string_view>

namespace Exchange {

using namespace Backend;

namespace {

constexpr int BranchSize = 10;
// 1 January 2025.
constexpr Instant FirstDate = 1'735'689'600'000'000;
constexpr Instant Minute = 60'000'000;

constexpr std::array<std::string_view, 8> Subjects = {
    "The controller",       "Each sensor", "The service page", "The installer's view",
    "The boiler interface", "The log",     "The update",       "Every zone"};
constexpr std::array<std::string_view, 7> Duties = {
    "reports its state within one second",  "keeps its settings over a power cut",
    "refuses values outside the range",     "names the cause of a fault in one sentence",
    "takes up its work again without help", "shows the time of the last change",
    "answers while a transfer is running"};
constexpr std::array<std::string_view, 5> Conditions = {"when the supply returns", "after a restart",
                                                        "with eight zones connected", "during an update",
                                                        "without a network"};

std::string Sentence(std::int64_t number) {
    const auto n = static_cast<std::size_t>(number);
    return std::string(Subjects[n % Subjects.size()]) + ' ' +
           std::string(Duties[n / Subjects.size() % Duties.size()]) + ' ' +
           std::string(Conditions[n / 3 % Conditions.size()]);
}

std::string Description(std::int64_t number) {
    std::string html;
    html.reserve(2200);
    for (int paragraph = 0; paragraph < 4; ++paragraph) {
        html += paragraph == 1 ? "<ul>" : "<p>";
        for (int i = 0; i < 6; ++i) {
            const std::string sentence = Sentence(number + paragraph * 6 + i) + ".";
            html += paragraph == 1 ? "<li>" + sentence + "</li>" : sentence + ' ';
        }
        html += paragraph == 1 ? "</ul>" : "</p>";
    }
    return html;
}

class Generator {
public:
    Generator(BulkWriter& writer, ObjectId project, ObjectId type, ObjectId user)
        : FWriter(writer) {
        FRequirement.ProjectId = project;
        FRequirement.TypeId = type;
        FRequirement.OwnerId = user;
        FRevision.UserId = user;
    }

    void Write(const GeneratedSize& size) {
        // Those of the long branch are written together, so that they lie together in the
        // file as the children of one imported requirement do.
        std::vector<ObjectId> parents = {0};
        std::size_t next = 0;
        int room = BranchSize;
        std::int64_t left = size.Requirements;
        while (left > size.ChildrenOfOne) {
            if (room-- == 0) {
                ++next;
                room = BranchSize - 1;
            }
            parents.push_back(Add(parents[next]));
            --left;
        }
        const ObjectId one = parents.size() > 1 ? parents[1] : 0;
        for (; left > 0; --left)
            Add(one);
    }

private:
    ObjectId Add(ObjectId parent) {
        ++FNumber;
        FRequirement.ParentId = parent;
        FRequirement.Name = Sentence(FNumber) + ", case " + std::to_string(FNumber);
        FRequirement.Description = Description(FNumber);
        FRequirement.StatusIndex = static_cast<int>(FNumber % 4);
        FRequirement.PriorityIndex = static_cast<int>(FNumber % 3);
        FRevision.Date = FirstDate + FNumber * Minute;
        return FWriter.AddRequirement(FRequirement, FRevision);
    }

    BulkWriter& FWriter;
    NewRequirement FRequirement;
    Revision FRevision;
    std::int64_t FNumber = 0;
};

Backend::Glossary MakeGlossary(std::int64_t terms) {
    Backend::Glossary glossary{.Id = 0, .Name = "Terms", .Red = 0, .Green = 0, .Blue = 128, .Terms = {}};
    for (std::int64_t term = 0; term < terms; ++term)
        glossary.Terms.push_back({0, "term" + std::to_string(term), "What it means"});
    return glossary;
}

} // namespace

void BuildGeneratedDatabase(const std::string& databasePath, const GeneratedSize& size,
                            BulkWriter::Hashing hashing) {
    BulkWriter writer(databasePath, hashing);
    NewUser admin;
    admin.UserName = "admin";
    admin.Name = "Administrator";
    admin.Password = "admin";
    admin.Administrator = true;
    const auto user = writer.AddUser(admin);
    NewProject project;
    project.Name = "Generated";
    const auto projectId = writer.AddProject(project);
    NewRequirementType type;
    type.Name = "Requirement";
    type.Tag = "GEN";
    const auto typeId = writer.AddRequirementType(projectId, type);
    if (size.GlossaryTerms > 0) writer.AddGlossary(projectId, MakeGlossary(size.GlossaryTerms));
    Generator(writer, projectId, typeId, user).Write(size);
    writer.Commit();
}

} // namespace Exchange
