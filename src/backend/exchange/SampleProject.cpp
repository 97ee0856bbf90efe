#include "backend/exchange/SampleProject.h"

#include "backend/exchange/Files.h"

#include <algorithm>

namespace Exchange {

using namespace Backend;

namespace {

// By this name the add-in knows its own traces to source files.
constexpr const char* SourceIntegration = "VantrelQuoraneAddin";

const OutlineEntry& ProjectEntry(const std::vector<OutlineEntry>& entries,
                                 const std::filesystem::path& folder) {
    if (entries.empty() || entries.front().Text("kind") != "project")
        throw OutlineError((folder / "project.txt").string(), 1, "the first heading is no project");
    return entries.front();
}

std::string PlainBody(const OutlineEntry& entry) {
    std::string text;
    for (const auto& block : entry.Blocks)
        text += (text.empty() ? "" : "\n") + block;
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

Instant InstantOf(const OutlineEntry& entry, const std::string& key) {
    try {
        return ParseInstant(entry.Text(key));
    } catch (const std::invalid_argument& error) {
        throw entry.Error(error.what());
    }
}

} // namespace

SampleProject::SampleProject(BulkWriter& writer, SampleNames& names, std::filesystem::path folder,
                             std::filesystem::path sourceFolder)
    : FWriter(writer)
    , FNames(names)
    , FFolder(std::move(folder))
    , FSourceFolder(std::move(sourceFolder))
    , FEntries(ReadOutline((FFolder / "project.txt").string())) {}

void SampleProject::Write() {
    WriteProject();
    for (const auto& section : SectionsOf("type"))
        ReadType(section);
    WriteHistory();
    for (const auto& section : SectionsOf("glossary"))
        WriteGlossary(section);
    for (const auto& plan : FRequirements)
        WriteDiscussion(plan);
}

void SampleProject::WriteTraces() {
    for (const auto& plan : FRequirements)
        for (const auto& field : plan.Entry->Fields)
            WriteTrace(plan, field);
}

std::vector<SampleProject::Section> SampleProject::SectionsOf(const std::string& kind) const {
    std::vector<Section> sections;
    bool inside = false;
    for (const auto& entry : FEntries) {
        if (entry.Level <= 2) inside = entry.Level == 2 && entry.Text("kind") == kind;
        if (!inside) continue;
        if (entry.Level == 2)
            sections.push_back({&entry, {}});
        else
            sections.back().Below.push_back(&entry);
    }
    return sections;
}

void SampleProject::WriteProject() {
    const auto& entry = ProjectEntry(FEntries, FFolder);
    NewProject project;
    project.Name = entry.Title;
    project.Description = PlainBody(entry);
    for (const auto& group : entry.List("groups", ','))
        project.Groups.push_back(Find(FNames.Groups, group, entry));
    for (const auto& section : SectionsOf("baseline"))
        if (section.Head->Text("state") == "current") project.BaselineName = section.Head->Title;
    FProjectId = FWriter.AddProject(project);

    static const std::pair<const char*, Role> roles[] = {{"managers", Role::Manager},
                                                         {"editors", Role::Editor},
                                                         {"discussers", Role::Discusser},
                                                         {"readers", Role::Reader}};
    for (const auto& [key, role] : roles)
        for (const auto& user : entry.List(key, ','))
            FWriter.Grant(FProjectId, Find(FNames.Users, user, entry), role);
}

void SampleProject::WriteGlossary(const Section& section) {
    Glossary glossary;
    glossary.Name = section.Head->Title;
    if (std::sscanf(section.Head->Text("color").c_str(), "%d %d %d", &glossary.Red, &glossary.Green,
                    &glossary.Blue) != 3)
        throw section.Head->Error("\"color\" has the form \"red green blue\"");
    for (const auto* term : section.Below)
        glossary.Terms.push_back({0, term->Title, PlainBody(*term)});
    FWriter.AddGlossary(FProjectId, glossary);
}

void SampleProject::ReadType(const Section& section) {
    const auto& head = *section.Head;
    SampleType& type = FTypes.emplace_back();
    type.Statuses = head.List("statuses", ',');
    if (const auto rejected = head.Text("rejected status"); !rejected.empty()) {
        type.Statuses.push_back(rejected);
        type.HasRejected = true;
    }
    type.Priorities = head.List("priorities", ',');
    type.Comments = head.List("comments");
    type.Owner = head.Text("owner");
    type.Id = FWriter.AddRequirementType(
        FProjectId, {head.Title, head.Text("tag"), PlainBody(head), type.Statuses, type.Priorities});

    ObjectId tab = 0;
    for (const auto* entry : section.Below) {
        if (entry->Text("kind") == "tab") {
            const std::string icon = entry->Text("icon");
            const auto path = FFolder.parent_path() / "icons" / icon;
            tab = FWriter.AddCustomTab(type.Id, entry->Title,
                                       icon.empty() ? std::string() : ReadIcon(path.string()));
        } else {
            auto attribute = ReadAttribute(*entry, FNames.Users, FNames.Groups);
            attribute.Definition.Id = FWriter.AddAttribute(tab, attribute.Definition);
            type.Attributes[entry->Title] = std::move(attribute);
        }
    }
    PlanRequirements(type, head.Text("file"));
}

void SampleProject::PlanRequirements(const SampleType& type, const std::string& file) {
    const auto& project = FEntries.front();
    const auto managers = project.List("managers", ',');
    if (managers.empty()) throw project.Error("the project has no managers");
    const SampleSurroundings surroundings{FNames.Users, FNames.Groups, InstantOf(project, "start"),
                                          Find(FNames.Users, managers[0], project),
                                          [this](const std::string& name) { return AddPicture(name); }};
    const auto& entries = FTexts.emplace_back(ReadOutline((FFolder / file).string()));
    std::vector<int> open; // positions of the entries that the next one may go under
    for (const auto& entry : entries) {
        const int position = static_cast<int>(FRequirements.size());
        auto plan = PlanRequirement(entry, position, type, surroundings);
        plan.First.ProjectId = FProjectId;
        open.resize(static_cast<std::size_t>(entry.Level) - 1);
        plan.Parent = open.empty() ? -1 : open.back();
        open.push_back(position);
        FRequirements.push_back(std::move(plan));
    }
}

// Versions and baselines in the order of their dates, so that a frozen baseline holds
// what was there on its day.
void SampleProject::WriteHistory() {
    std::vector<std::pair<Instant, std::function<void()>>> events;
    for (auto& plan : FRequirements) {
        events.emplace_back(plan.Created.Date, [this, &plan] { WriteRequirement(plan); });
        for (const auto& step : plan.Steps)
            events.emplace_back(step.Revision.Date, [this, &plan, &step] {
                FWriter.AddRevision(plan.Id, step.Change, step.Revision);
            });
    }
    for (const auto& section : SectionsOf("baseline"))
        if (const auto* entry = section.Head; entry->Text("state") != "current")
            events.emplace_back(InstantOf(*entry, "date"), [this, entry] { WriteBaseline(*entry); });
    std::stable_sort(events.begin(), events.end(),
                     [](const auto& one, const auto& other) { return one.first < other.first; });
    for (const auto& event : events)
        event.second();
}

void SampleProject::WriteBaseline(const OutlineEntry& entry) {
    const auto id =
        FWriter.FreezeBaseline(FProjectId, entry.Title, PlainBody(entry), InstantOf(entry, "date"));
    if (entry.Text("state") == "deleted") FWriter.DeleteBaseline(id);
}

void SampleProject::WriteRequirement(SampleRequirement& plan) {
    if (plan.Parent >= 0) {
        plan.First.ParentId = FRequirements[static_cast<std::size_t>(plan.Parent)].Id;
        if (plan.First.ParentId == 0) throw plan.Entry->Error("it was created before the one above it");
    }
    plan.Id = FWriter.AddRequirement(plan.First, plan.Created);
    if (const auto id = plan.Entry->Text("id");
        !id.empty() && !FNames.Requirements.emplace(id, plan.Id).second)
        throw plan.Entry->Error("the id \"" + id + "\" is taken");
}

void SampleProject::WriteDiscussion(const SampleRequirement& plan) {
    ObjectId lastMessage = 0;
    for (const auto& field : plan.Entry->Fields)
        if (field.Key == "message" || field.Key == "reply") WriteMessage(plan, field, lastMessage);
    for (const auto& user : plan.Entry->List("interested", ','))
        FWriter.SetInterest(Find(FNames.Users, user, *plan.Entry), plan.Id, true);
}

void SampleProject::WriteMessage(const SampleRequirement& plan, const OutlineField& field,
                                 ObjectId& lastMessage) {
    const auto parts = SplitTrimmed(field.Text, '|');
    if (parts.size() != 4)
        throw OutlineError(plan.Entry->File, field.Line,
                           "a message has the form \"date | user | subject | text\"");
    NewMessage message;
    message.RequirementId = plan.Id;
    message.ParentId = field.Key == "reply" ? lastMessage : 0;
    message.Date = ParseInstant(parts[0]);
    message.AuthorId = Find(FNames.Users, parts[1], *plan.Entry);
    message.Subject = parts[2];
    message.Body = parts[3];
    lastMessage = FWriter.AddMessage(message);
    const bool readByAll = message.Date < InstantOf(FEntries.front(), "messages read until");
    for (const auto& [name, user] : FNames.Users)
        if (readByAll || user == message.AuthorId) FWriter.MarkRead(user, lastMessage);
}

void SampleProject::WriteTrace(const SampleRequirement& plan, const OutlineField& field) {
    const auto& entry = *plan.Entry;
    if (field.Key == "trace" || field.Key == "suspect")
        FWriter.AddTrace(plan.Id, Find(FNames.Requirements, field.Text, entry), field.Key == "suspect");
    else if (field.Key == "source" || field.Key == "suspect source")
        WriteSourceTrace(plan, field, true, field.Key != "source");
    else if (field.Key == "from source")
        WriteSourceTrace(plan, field, false, false);
    else if (field.Key == "external") {
        const auto parts = SplitTrimmed(field.Text, '|');
        if (parts.size() != 4)
            throw OutlineError(entry.File, field.Line, "the form is \"Integration | key | name | location\"");
        ExternalObject object;
        object.IntegrationName = parts[0];
        object.Key = parts[1];
        object.Name = parts[2];
        object.Location = parts[3];
        FWriter.AddExternalTrace(plan.Id, false, object, false);
    }
}

void SampleProject::WriteSourceTrace(const SampleRequirement& plan, const OutlineField& field, bool away,
                                     bool suspect) {
    const auto path = FSourceFolder / field.Text;
    if (!std::filesystem::exists(path))
        throw OutlineError(plan.Entry->File, field.Line, "there is no file " + path.string());
    ExternalObject object;
    object.IntegrationName = SourceIntegration;
    object.Key = object.Location = path.string();
    object.Name = path.filename().string();
    FWriter.AddExternalTrace(plan.Id, away, object, suspect);
}

std::string SampleProject::AddPicture(const std::string& file) {
    const auto path = FFolder.parent_path() / "pictures" / file;
    return FWriter.AddImage(ReadFile(path.string()));
}

} // namespace Exchange
