// What the tests of the panel share: a logged-on panel, the second client's hand on a
// requirement, and short names for what a case looks at.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "description/UDescriptionFrame.h"
#include "frames/UDetailsFrame.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UQuoraneSession.h"
#include "server/UQuoraneStHelpers.h"
#include "support/PanelFixture.h"

inline const std::string FirmwareType = "Firmware Requirement";
inline const std::vector<std::string> ZoneControl{FirmwareType, "Zone control"};
inline const std::vector<std::string> FilterReadings{FirmwareType, "Zone control",
                                                     "Filter the readings of a zone"};
inline const std::vector<std::string> Implausible{
    FirmwareType, "Zone control", "Filter the readings of a zone", "Reject implausible readings"};

inline constexpr const char* LostConnection =
    "RemoteServerException: the server is away. Quorane.SERVER_ERROR";

class TPanelTest : public TPanelFixture {
protected:
    using TReq = Quorane_TLB::Handle<Quorane_TLB::IRequirement>;

    TTreeView& Tree() { return *Panel().trvRequirements; }
    TTreeNode& Top() { return *Tree().GetFirstNode(); }
    std::string SelectedText() { return Tree().Selected() ? Tree().Selected()->Text() : std::string(); }
    int SelectedImage() { return Tree().Selected()->ImageIndex(); }
    TEdit& NameEdit() { return *Panel().fraDetails->edtRequirementName; }

    // The requirement's number, with its node selected.
    std::int32_t SelectedNumber() { return Panel().CurrentRequirementTreeNode()->Get_ID()->Get_IDNumber(); }
    std::string SelectedName() { return Quorane_TLB::Utf8(Helpers().CurrentRequirement->Get_Name()); }

    // The requirement as another user's client reads it now.
    TReq ReadAs(const std::string& user, std::int32_t number) {
        return Server->LogOn(user)->getLatestRequirement(number);
    }
    std::string NameOnServer(std::int32_t number) {
        return Quorane_TLB::Utf8(ReadAs("admin", number)->Get_Name());
    }
    // The value of the requirement's attribute, as text.
    static std::string ValueOf(const TReq& requirement, const std::u16string& attribute) {
        const auto values = EnumerableStCollection(requirement->Get_AttributeValues())->GetEnumerator();
        while (values->MoveNext()) {
            const auto value = Quorane_TLB::Cast<Quorane_TLB::IAttributeValue>(values->GetCurrent());
            if (value->Get_Attribute()->Get_Name() == attribute) return TQuoraneHelpers::UDAToString(value);
        }
        return "no such attribute";
    }
    static void RenameAs(const TReq& requirement, const std::u16string& name) {
        requirement->lock();
        requirement->Set_Name(name);
        SaveByName(requirement);
        requirement->unlock();
    }

    // Position of the first call of the operation; -1 when there was none.
    int FirstCall(const std::string& operation) {
        const auto& calls = Server->Calls.Operations();
        const auto found = std::ranges::find(calls, operation);
        return found == calls.end() ? -1 : static_cast<int>(found - calls.begin());
    }
    bool Called(const std::string& operation) { return FirstCall(operation) >= 0; }
    std::string OnlyError() {
        const std::vector<std::string> errors = Dialogs.TakeErrors();
        EXPECT_EQ(errors.size(), 1U);
        return errors.empty() ? std::string() : errors.front();
    }
};
