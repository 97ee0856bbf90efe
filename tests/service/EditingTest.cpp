#include "ServiceFixture.h"

#include <gmock/gmock.h>

using namespace testing;

namespace {

using Save = wire::SaveRequirementRequest;

class EditingTest : public ServiceFixture {
public:
    Client FAnn = LoggedOn("ann");

    // Saves one change of "Two" under its lock; gives the refusal or nothing.
    std::string SaveTwo(const std::function<void(Save&)>& change) {
        Save request;
        request.set_id(Id("Two"));
        change(request);
        FAnn.Lock(Id("Two"));
        return RefusalOf([&] { FAnn.Save(request); });
    }

    wire::AttributeValue& Add(Save& request, const char* attribute) {
        wire::AttributeValue& value = *request.add_values();
        value.set_attribute_id(FAttributes[attribute]);
        return value;
    }

    wire::AttributeValue ValueOf(const wire::Requirement& requirement, const char* attribute) {
        for (const wire::AttributeValue& value : requirement.values())
            if (value.attribute_id() == FAttributes[attribute]) return value;
        ADD_FAILURE() << "no value for " << attribute;
        return {};
    }

    std::string LastChanges() {
        std::string text;
        const auto history = FAnn.History(Id("Two"));
        for (const wire::HistoryChange& change : history[0].changes())
            text += change.attribute_name() + ": " + Text(change.old_value()) + " > " +
                    Text(change.new_value()) + "; ";
        return text;
    }

    static std::string Text(const wire::HistoryValue& value) {
        switch (value.value_case()) {
        case wire::HistoryValue::kText:
            return value.text();
        case wire::HistoryValue::kInteger:
            return std::to_string(value.integer());
        case wire::HistoryValue::kReal:
            return std::to_string(value.real()).substr(0, 3);
        case wire::HistoryValue::kFlag:
            return value.flag() ? "true" : "false";
        case wire::HistoryValue::kDate:
            return "day " + std::to_string(static_cast<int>(value.date()));
        default:
            return "none";
        }
    }
};

TEST_F(EditingTest, ASaveMakesTheNextVersionWithOneRevision) {
    EXPECT_EQ(SaveTwo([](Save& request) {
                  request.set_name("New name");
                  request.set_comment("why");
              }),
              "");
    EXPECT_EQ(FAnn.Read(Id("Two")).version().minor(), 1);
    const auto history = FAnn.History(Id("Two"));
    ASSERT_EQ(history.size(), 2U);
    EXPECT_EQ(history[0].comment(), "why");
    EXPECT_EQ(history[0].user_name(), "Ann Miller");
    EXPECT_EQ(history[0].date(), FNow);
    EXPECT_EQ(history[0].version().minor(), 1);
    EXPECT_EQ(LastChanges(), "Name: Two > New name; ");
}

TEST_F(EditingTest, ASaveOfWhatIsThereAlreadyChangesNothing) {
    EXPECT_EQ(SaveTwo([&](Save& request) {
                  request.set_name("Two");
                  request.set_description("<html><head></head><body><p>About Two</p></body></html>");
                  request.set_validation("");
                  request.set_owner_id(0);
                  Add(request, "Count").set_integer(3);
                  Add(request, "Note").set_text("");
                  Add(request, "Source").mutable_selected()->add_indices(0);
                  request.mutable_references();
                  request.mutable_responsible_users();
              }),
              "");
    EXPECT_EQ(FAnn.Read(Id("Two")).version().minor(), 0);
    EXPECT_EQ(FAnn.History(Id("Two")).size(), 1U);
}

TEST_F(EditingTest, EveryKindOfValueIsKeptAndStandsInTheHistory) {
    const auto type = FAnn.Read(Id("Two"));
    EXPECT_EQ(SaveTwo([&](Save& request) {
                  Add(request, "Safety").set_flag(true);
                  Add(request, "Due").set_date(45000.5);
                  Add(request, "Weight").set_real(2.5F);
                  Add(request, "Count").set_integer(9);
                  Add(request, "Effort").set_integer(40);
                  Add(request, "Note").set_text("short");
                  Add(request, "Source").mutable_selected()->add_indices(1);
                  Add(request, "Reviewers").mutable_selected()->add_indices(1);
                  request.mutable_values(7)->mutable_selected()->add_indices(2);
                  wire::AttributeValue& status = *request.add_values();
                  status.set_attribute_id(type.status().attribute_id());
                  status.mutable_selected()->add_indices(2);
              }),
              "");
    const wire::Requirement two = FAnn.Read(Id("Two"));
    EXPECT_TRUE(ValueOf(two, "Safety").flag());
    EXPECT_EQ(ValueOf(two, "Due").date(), 45000.5);
    EXPECT_EQ(ValueOf(two, "Weight").real(), 2.5F);
    EXPECT_EQ(ValueOf(two, "Effort").integer(), 40);
    EXPECT_EQ(ValueOf(two, "Note").text(), "short");
    EXPECT_THAT(ValueOf(two, "Reviewers").selected().indices(), ElementsAre(1, 2));
    EXPECT_THAT(two.status().selected().indices(), ElementsAre(2));
    EXPECT_EQ(LastChanges(), "Safety: false > true; Due: none > day 45000; Weight: none > 2.5; Count: 3 > 9; "
                             "Effort: none > 40; Note:  > short; Source: Customer > Law; "
                             "Reviewers:  > Ben Ortega, Testers; Status: Draft > Accepted; ");
}

TEST_F(EditingTest, AValueCanBeEmptiedAgain) {
    SaveTwo([&](Save& request) { Add(request, "Due").set_date(45000); });
    SaveTwo([&](Save& request) { Add(request, "Due"); });
    EXPECT_EQ(ValueOf(FAnn.Read(Id("Two")), "Due").value_case(), wire::AttributeValue::VALUE_NOT_SET);
    EXPECT_EQ(FAnn.Read(Id("Two")).version().minor(), 2);
}

TEST_F(EditingTest, OwnerReferencesAndResponsibilitiesAreKept) {
    EXPECT_EQ(SaveTwo([&](Save& request) {
                  request.set_owner_id(FUsers["ben"]);
                  auto& references = *request.mutable_references();
                  references.add_references()->mutable_file()->set_path("a.txt");
                  references.mutable_references(0)->mutable_file()->set_description("A file");
                  references.add_references()->mutable_web()->set_url("http://example.org");
                  auto& assignment = *request.mutable_responsible_users()->add_assignments();
                  assignment.set_group_id(FGroup);
                  assignment.add_user_ids(FUsers["ben"]);
                  assignment.add_user_ids(FUsers["ann"]);
              }),
              "");
    const wire::Requirement two = FAnn.Read(Id("Two"));
    EXPECT_EQ(two.owner_id(), FUsers["ben"]);
    ASSERT_EQ(two.references_size(), 2);
    EXPECT_EQ(two.references(0).file().description(), "A file");
    EXPECT_EQ(two.references(1).web().url(), "http://example.org");
    EXPECT_THAT(two.responsible_users(0).user_ids(), ElementsAre(FUsers["ann"], FUsers["ben"]));
    EXPECT_EQ(two.responsible_users(1).user_ids_size(), 0);
    EXPECT_EQ(LastChanges(), "Owner: none > Ben Ortega; References:  > a.txt; http://example.org; "
                             "Responsibilities:  > Developers: Ann Miller, Ben Ortega; ");
}

TEST_F(EditingTest, AKeyReferenceProtectsTheDescriptionUntilItIsRemoved) {
    SaveTwo([](Save& request) {
        auto& reference = *request.mutable_references()->add_references();
        reference.set_is_key(true);
        reference.mutable_text()->set_text("The real text");
    });
    SaveTwo([](Save& request) {
        request.set_description("<p>The real text</p>");
        request.set_name("Changed");
    });
    EXPECT_EQ(FAnn.Read(Id("Two")).description(), "<p>About Two</p>");
    EXPECT_EQ(FAnn.Read(Id("Two")).name(), "Changed");
    SaveTwo([](Save& request) {
        request.mutable_references();
        request.set_description("<p>Typed</p>");
    });
    EXPECT_EQ(FAnn.Read(Id("Two")).description(), "<p>Typed</p>");
}

TEST_F(EditingTest, ASaveOfAnOldSnapshotIsRefused) {
    Client ben = LoggedOn("ben");
    wire::GetRequirementRequest read;
    read.set_latest_id(Id("Two"));
    const auto old = FAnn.Call(&Stub::GetRequirement, read);
    ben.Rename(Id("Two"), "By Ben");
    EXPECT_THAT(SaveTwo([&](Save& request) {
                    request.set_stamp(old.stamp());
                    request.set_name("By Ann");
                }),
                StartsWith("StaleObjectException: The requirement SRS" + std::to_string(Id("Two"))));
    EXPECT_EQ(FAnn.Read(Id("Two")).name(), "By Ben");
}

TEST_F(EditingTest, ChangesMakeTracesSuspectUntilSomebodyClearsThem) {
    ASSERT_FALSE(FAnn.Traces(Id("Two")).traces_from(0).suspect());
    FAnn.Rename(Id("Two"), "Changed");
    const wire::Trace trace = FAnn.Traces(Id("One")).traces_to(0);
    EXPECT_TRUE(trace.suspect());
    EXPECT_EQ(trace.to().requirement().name(), "Changed");
    wire::SaveTraceRequest clear;
    clear.set_id(trace.id());
    FAnn.Call(&Stub::SaveTrace, clear);
    EXPECT_FALSE(FAnn.Traces(Id("Two")).traces_from(0).suspect());
}

struct RefusedSave {
    const char* Name;
    std::function<void(EditingTest&, Save&)> Change;
    const char* Refusal;
};

void PrintTo(const RefusedSave& row, std::ostream* out) {
    *out << row.Name;
}

class RefusedSaves : public EditingTest, public WithParamInterface<RefusedSave> {};

TEST_P(RefusedSaves, WriteNothing) {
    const std::string refusal = SaveTwo([&](Save& request) {
        request.set_validation("would be new");
        GetParam().Change(*this, request);
    });
    EXPECT_THAT(refusal, HasSubstr(GetParam().Refusal));
    EXPECT_EQ(FAnn.Read(Id("Two")).validation(), "");
    EXPECT_EQ(FAnn.History(Id("Two")).size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, RefusedSaves,
    Values(
        RefusedSave{"EmptyName", [](EditingTest&, Save& r) { r.set_name(""); }, "name is empty"},
        RefusedSave{"LongName", [](EditingTest&, Save& r) { r.set_name(std::string(256, 'n')); },
                    "longer than 255"},
        RefusedSave{"NulInName", [](EditingTest&, Save& r) { r.set_name(std::string("a\0b", 3)); },
                    "holds the character NUL"},
        RefusedSave{"UnendedTag", [](EditingTest&, Save& r) { r.set_description("<p x"); }, "well-formed"},
        RefusedSave{"HugeDescription",
                    [](EditingTest&, Save& r) { r.set_description(std::string(1'500'001, 'x')); },
                    "larger than"},
        RefusedSave{"ForeignAttribute", [](EditingTest&, Save& r) { r.add_values()->set_attribute_id(1); },
                    "has no attribute 1"},
        RefusedSave{"OutOfBounds", [](EditingTest& test, Save& r) { test.Add(r, "Count").set_integer(10); },
                    "takes values from 1 to 9"},
        RefusedSave{"WrongKind", [](EditingTest& test, Save& r) { test.Add(r, "Count").set_text("3"); },
                    "whole number"},
        RefusedSave{"LongText",
                    [](EditingTest& test, Save& r) { test.Add(r, "Note").set_text("12345678901"); },
                    "longer than 10"},
        RefusedSave{"UnknownOwner", [](EditingTest&, Save& r) { r.set_owner_id(1000000); },
                    "no user 1000000"},
        RefusedSave{"ForeignGroup",
                    [](EditingTest&, Save& r) {
                        r.mutable_responsible_users()->add_assignments()->set_group_id(999);
                    },
                    "does not belong to the project"},
        RefusedSave{"NoMember",
                    [](EditingTest& test, Save& r) {
                        auto& assignment = *r.mutable_responsible_users()->add_assignments();
                        assignment.set_group_id(test.FGroup);
                        assignment.add_user_ids(test.FUsers["ron"]);
                    },
                    "no member of the group Developers"},
        RefusedSave{"EmptyReference", [](EditingTest&, Save& r) { r.mutable_references()->add_references(); },
                    "neither a file"}),
    [](const auto& row) { return std::string(row.param.Name); });

} // namespace
