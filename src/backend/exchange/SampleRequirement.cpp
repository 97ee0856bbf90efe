#include "backend/exchange/SampleRequirement.h"

#include <algorithm>

namespace Exchange {

using namespace Backend;

namespace {

constexpr Instant Minute = 60'000'000;
constexpr Instant Day = 24 * 60 * Minute;

// The same time on Monday when it falls on a weekend.
Instant OnWorkingDay(Instant instant) {
    // 1 January 1970 was a Thursday; Monday counts as 0.
    const auto weekday = (instant / Day + 3) % 7;
    return weekday >= 5 ? instant + (7 - weekday) * Day : instant;
}

// Four are written on a working day.
Instant CreatedAt(Instant start, int index) {
    const Instant days = index / 4;
    const Instant withWeekends = days + days / 5 * 2;
    return OnWorkingDay(start + withWeekends * Day + (index % 4 * 100 + index * 7 % 23) * Minute);
}

Instant SteppedAt(Instant created, int index, int step) {
    const Instant midnight = created / Day * Day;
    const Instant pace = 21 + index * 11 % 29;
    return OnWorkingDay(midnight + pace * step * Day + (8 * 60 + (index * 37 + step * 53) % 540) * Minute);
}

int PositionOf(const std::vector<std::string>& entries, const std::string& name, const OutlineEntry& entry) {
    const auto found = std::find(entries.begin(), entries.end(), name);
    if (found == entries.end()) throw entry.Error("\"" + name + "\" is no status or priority of its type");
    return static_cast<int>(found - entries.begin());
}

// The statuses that the requirement passes, the first one left out.
std::vector<int> PathTo(int status, const SampleType& type) {
    const bool rejected = type.HasRejected && status + 1 == static_cast<int>(type.Statuses.size());
    std::vector<int> path;
    for (int passed = 1; passed <= (rejected ? 1 : status); ++passed)
        path.push_back(passed);
    if (rejected) path.push_back(status);
    return path;
}

std::vector<DocumentReference> ReferencesOf(const OutlineEntry& entry) {
    std::vector<DocumentReference> references;
    for (const auto& field : entry.Fields) {
        if (field.Key == "file reference") {
            const auto bar = field.Text.find('|');
            if (bar == std::string::npos)
                throw entry.Error("a file reference has the form \"path | description\"");
            references.push_back({ReferenceKind::File, Trimmed(field.Text.substr(0, bar)),
                                  Trimmed(field.Text.substr(bar + 1)), false});
        } else if (field.Key == "web reference")
            references.push_back({ReferenceKind::Web, field.Text, {}, false});
        else if (field.Key == "text reference" || field.Key == "key text reference")
            references.push_back({ReferenceKind::Text, field.Text, {}, field.Key.starts_with("key")});
    }
    return references;
}

std::vector<Assignment> ResponsibleOf(const OutlineEntry& entry, const SampleSurroundings& surroundings) {
    std::vector<Assignment> assignments;
    for (const auto& text : entry.List("responsible")) {
        const auto equals = text.find('=');
        if (equals == std::string::npos)
            throw entry.Error("\"responsible\" has the form \"Group = user, user\"");
        Assignment assignment;
        assignment.GroupId = Find(surroundings.Groups, Trimmed(text.substr(0, equals)), entry);
        for (const auto& user : SplitTrimmed(text.substr(equals + 1), ','))
            assignment.UserIds.push_back(Find(surroundings.Users, user, entry));
        assignments.push_back(std::move(assignment));
    }
    return assignments;
}

std::vector<AttributeValue> ValuesOf(const OutlineEntry& entry, const SampleType& type) {
    std::vector<AttributeValue> values;
    for (const auto& field : entry.Fields) {
        if (!field.Key.starts_with('@')) continue;
        const auto attribute = type.Attributes.find(field.Key.substr(1));
        if (attribute == type.Attributes.end())
            throw OutlineError(entry.File, field.Line, "the type has no attribute " + field.Key.substr(1));
        try {
            values.push_back({attribute->second.Definition.Id, ParseValue(attribute->second, field.Text)});
        } catch (const std::invalid_argument& error) {
            throw OutlineError(entry.File, field.Line, error.what());
        }
    }
    return values;
}

std::string CommentOn(const SampleType& type, int status) {
    const auto position = static_cast<std::size_t>(status) - 1;
    return position < type.Comments.size() ? type.Comments[position] : std::string();
}

// What is true now goes into the change of its step, or into the first version when
// the requirement never came that far.
void TellContent(SampleRequirement& plan, const SampleType& type, const SampleSurroundings& surroundings) {
    const OutlineEntry& entry = *plan.Entry;
    auto& first = plan.First;
    const std::string description = DescriptionOf(entry, surroundings.Picture);
    if (plan.Steps.empty()) {
        first.Name = entry.Title;
        first.Description = description;
        first.Validation = entry.Text("validation");
    } else {
        auto& change = plan.Steps[0].Change;
        first.Name = entry.Text("previous name", entry.Title);
        first.Description = entry.Text("previous description", description);
        change.Name = entry.Title;
        change.Description = description;
        change.Validation = entry.Text("validation");
    }
    if (plan.Steps.size() < 2) {
        first.Values = ValuesOf(entry, type);
        first.References = ReferencesOf(entry);
        first.Responsible = ResponsibleOf(entry, surroundings);
    } else {
        auto& change = plan.Steps[1].Change;
        change.Values = ValuesOf(entry, type);
        change.References = ReferencesOf(entry);
        change.Responsible = ResponsibleOf(entry, surroundings);
    }
}

} // namespace

ObjectId Find(const NameMap& names, const std::string& name, const OutlineEntry& entry) {
    const auto found = names.find(name);
    if (found == names.end()) throw entry.Error("there is no \"" + name + '"');
    return found->second;
}

SampleRequirement PlanRequirement(const OutlineEntry& entry, int index, const SampleType& type,
                                  const SampleSurroundings& surroundings) {
    SampleRequirement plan;
    plan.Entry = &entry;
    const ObjectId owner = Find(surroundings.Users, entry.Text("owner", type.Owner), entry);
    const std::string created = entry.Text("created");
    plan.Created = {
        owner, created.empty() ? CreatedAt(surroundings.Start, index) : ParseInstant(created), {}};

    auto& first = plan.First;
    first.TypeId = type.Id;
    first.OwnerId = owner;
    first.PriorityIndex = PositionOf(type.Priorities, entry.Text("priority"), entry);

    const auto path = PathTo(PositionOf(type.Statuses, entry.Text("status"), entry), type);
    for (std::size_t i = 0; i < path.size(); ++i) {
        SampleStep step;
        const int number = static_cast<int>(i) + 1;
        step.Revision = {number == 2 ? surroundings.ManagerId : owner,
                         SteppedAt(plan.Created.Date, index, number), CommentOn(type, path[i])};
        step.Change.StatusIndex = path[i];
        plan.Steps.push_back(std::move(step));
    }
    TellContent(plan, type, surroundings);
    return plan;
}

} // namespace Exchange
