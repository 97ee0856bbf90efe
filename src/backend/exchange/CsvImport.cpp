#include "backend/exchange/CsvImport.h"

#include "backend/exchange/Xhtml.h"
#include "backend/rules/Refusal.h"

#include <algorithm>
#include <unordered_map>

namespace Exchange {

using namespace Backend;

namespace {

constexpr const char* TabName = "Imported";
constexpr int ShortText = 255;
constexpr int LongText = 4000;

int CharactersIn(std::string_view text) {
    return static_cast<int>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string DescriptionOf(const ImportItem& item) {
    const auto rationale = ParagraphsOf(item.Rationale);
    return ParagraphsOf(item.Text) + (rationale.empty() ? std::string() : "<h4>Rationale</h4>" + rationale);
}

class Import {
public:
    Import(BulkWriter& writer, const ImportTable& table, const ImportOptions& options, ImportReport& report)
        : FWriter(writer)
        , FTable(table)
        , FOptions(options)
        , FReport(report) {}

    // False when a bad record ended it.
    bool Write(const Revision& revision) {
        PrepareProject();
        PrepareType();
        PrepareAttributes();
        FindKnown();
        FIds.assign(FTable.Items.size(), 0);
        FReport.Missing = static_cast<int>(FKnown.size());
        for (const auto& item : FTable.Items)
            FReport.Missing -= static_cast<int>(FKnown.count(item.Id));
        for (std::size_t i = 0; i < FTable.Items.size(); ++i)
            if (!WriteItem(i, revision) && !FOptions.SkipBad) return false;
        return true;
    }

private:
    void PrepareProject() {
        FProjectId = FWriter.FindProject(FOptions.ProjectName);
        FReport.NewProject = FProjectId == 0;
        if (!FReport.NewProject) return;
        NewProject project;
        project.Name = FOptions.ProjectName;
        FProjectId = FWriter.AddProject(project);
    }

    void PrepareType() {
        FTypeId = FReport.NewProject ? 0 : FWriter.FindRequirementType(FProjectId, FOptions.TypeName);
        FReport.NewType = FTypeId == 0;
        if (!FReport.NewType) return;
        NewRequirementType type;
        type.Name = FOptions.TypeName;
        type.Tag = FOptions.TypeTag;
        FTypeId = FWriter.AddRequirementType(FProjectId, type);
    }

    // The id's attribute comes first, then those of the other columns.
    void PrepareAttributes() {
        auto known = FWriter.Attributes(FTypeId);
        ObjectId tab = 0;
        const auto prepare = [&](const std::string& name, int length) {
            const auto found = known.find(name);
            if (found != known.end()) {
                FAttributes.push_back(found->second);
                return;
            }
            if (tab == 0) tab = FWriter.AddCustomTab(FTypeId, TabName, {});
            Attribute attribute;
            attribute.Name = name;
            attribute.MaxLength = length <= ShortText ? ShortText : std::max(length, LongText);
            FAttributes.push_back(FWriter.AddAttribute(tab, attribute));
        };
        const auto longest = [&](const auto& textOf) {
            int length = 0;
            for (const auto& item : FTable.Items)
                length = std::max(length, CharactersIn(textOf(item)));
            return length;
        };
        prepare(FTable.IdColumn, longest([](const ImportItem& item) { return item.Id; }));
        for (std::size_t column = 0; column < FTable.ExtraColumns.size(); ++column)
            prepare(FTable.ExtraColumns[column],
                    longest([column](const ImportItem& item) { return item.Extras[column]; }));
    }

    void FindKnown() {
        if (FReport.NewType) return;
        for (auto& [id, requirement] : FWriter.FindByText(FProjectId, FAttributes[0]))
            FKnown.emplace(std::move(id), requirement);
    }

    bool WriteItem(std::size_t position, const Revision& revision) {
        const auto& item = FTable.Items[position];
        const auto known = FKnown.find(item.Id);
        try {
            if (known == FKnown.end()) return AddItem(position, revision);
            FIds[position] = known->second;
            return item.IsHeading || UpdateItem(item, known->second, revision);
        } catch (const RuleViolation& violation) {
            return Refuse(item, violation.Sentence());
        }
    }

    bool UpdateItem(const ImportItem& item, ObjectId id, const Revision& revision) {
        if (!FOptions.Update) return Refuse(item, "its id \"" + item.Id + "\" is in the project already");
        if (const auto user = FWriter.LockedBy(id, revision.Date); !user.empty())
            return Refuse(item, "the requirement " + item.Id + " is locked by " + user);
        RequirementChange change;
        change.Name = item.Name;
        change.Description = DescriptionOf(item);
        for (std::size_t column = 0; column < item.Extras.size(); ++column)
            change.Values.push_back({FAttributes[column + 1], item.Extras[column]});
        ++(FWriter.AddRevision(id, change, revision) ? FReport.Changed : FReport.AsBefore);
        return true;
    }

    bool AddItem(std::size_t position, const Revision& revision) {
        const auto& item = FTable.Items[position];
        NewRequirement requirement;
        requirement.ProjectId = FProjectId;
        requirement.TypeId = FTypeId;
        if (item.Parent >= 0) {
            requirement.ParentId = FIds[static_cast<std::size_t>(item.Parent)];
            if (requirement.ParentId == 0) return Refuse(item, "the record that it goes under was not taken");
        }
        Fill(requirement, item);
        FIds[position] = FWriter.AddRequirement(requirement, revision);
        ++(item.IsHeading ? FReport.Headings : FReport.Taken);
        return true;
    }

    void Fill(NewRequirement& requirement, const ImportItem& item) const {
        requirement.Name = item.Name;
        requirement.Description = DescriptionOf(item);
        requirement.Values.push_back({FAttributes[0], item.Id});
        for (std::size_t column = 0; column < item.Extras.size(); ++column)
            if (!item.Extras[column].empty())
                requirement.Values.push_back({FAttributes[column + 1], item.Extras[column]});
    }

    bool Refuse(const ImportItem& item, const std::string& reason) {
        FReport.Refusals.push_back({item.Line, reason});
        return false;
    }

    BulkWriter& FWriter;
    const ImportTable& FTable;
    const ImportOptions& FOptions;
    ImportReport& FReport;
    ObjectId FProjectId = 0, FTypeId = 0;
    std::vector<ObjectId> FAttributes;
    std::unordered_map<std::string, ObjectId> FKnown; // requirements of the project by id
    std::vector<ObjectId> FIds;                       // of the items; 0: not taken
};

} // namespace

ImportReport ImportCsv(BulkWriter& writer, std::string_view bytes, const ImportOptions& options, Instant now,
                       const std::function<void(std::int64_t, std::int64_t)>& progress) {
    const auto table = ReadImportTable(bytes, options.Table);
    ImportReport report;
    report.Records = table.Records;
    report.Refusals = table.Refusals;
    if (!report.Refusals.empty() && !options.SkipBad) {
        report.Refusals.resize(1);
        return report;
    }
    const auto all = static_cast<std::int64_t>(table.Items.size());
    if (progress) writer.OnProgress(1000, [&](std::int64_t written) { progress(written, all); });
    const Revision revision{options.AuthorId, now, "Imported"};
    const bool completed = Import(writer, table, options, report).Write(revision);
    std::stable_sort(report.Refusals.begin(), report.Refusals.end(),
                     [](const Refusal& one, const Refusal& other) { return one.Line < other.Line; });
    const bool empty = report.Taken + report.Changed == 0;
    if (!completed || empty || options.DryRun) return report;
    writer.Commit();
    report.Written = true;
    return report;
}

} // namespace Exchange
