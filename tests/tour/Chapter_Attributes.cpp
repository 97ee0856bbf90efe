#include "tour/Chapters.h"
#include "tour/Tour.h"
#include "tour/TourServer.h"

#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"

#include <map>

#include <QTest>

namespace {

using namespace Quorane_TLB;

using TValues = std::map<std::string, std::string>;

const std::vector<std::string> Filter{"Firmware Requirement", "Zone control",
                                      "Filter the readings of a zone"};

std::string NameOf(const Handle<IUDAListEntry>& entry) {
    const Variant value = entry->Get_Value();
    if (value.Kind() != Variant::EKind::Dispatch) return VarToStr(value);
    return Utf8(Cast<IQuoraneObject>(value.AsDispatch())->Get_Name());
}

std::string Chosen(IUDAListValue& list) {
    std::string names;
    const auto entries = list.Get_Entries();
    for (std::int32_t index = 0; index < entries->Get_Count(); ++index) {
        const auto entry = Cast<IUDAListEntry>(entries->Get_Item(index).AsDispatch());
        if (entry->Get_Selected() != 0) names += (names.empty() ? "" : ", ") + NameOf(entry);
    }
    return names;
}

std::string TextOf(const Handle<IDispatch>& value) {
    if (const auto flag = Query<IUDABooleanValue>(value)) return flag->Get_Value() != 0 ? "yes" : "no";
    if (const auto number = Query<IUDAIntegerValue>(value)) return std::to_string(number->Get_Value());
    if (const auto text = Query<IUDATextValue>(value)) return Utf8(text->Get_Value());
    if (const auto list = Query<IUDAListValue>(value)) return Chosen(*list);
    if (const auto date = Query<IUDADateValue>(value))
        return date->Get_IsEmpty() != 0 ? "" : std::to_string(static_cast<int>(date->Get_Value()));
    return VarToStr(Variant(static_cast<double>(Cast<IUDAFloatValue>(value)->Get_Value())));
}

// A firmware requirement, whose two custom tabs hold an attribute of every kind.
class TAttributes {
public:
    explicit TAttributes(TTour& tour)
        : FTour(tour)
        , FServer("ben", "hearth-ben")
        , FBaseline(FServer.Baseline("Hearth Controller", "Current")) {
        std::vector<std::string> path{"Hearth Controller"};
        path.insert(path.end(), Filter.begin(), Filter.end());
        tour.User().SelectNode("trvRequirements", path);
    }

    static std::string Planning(int control) {
        return "ctl_ctl_ctl_pgcRequirement_8_1_" + std::to_string(control);
    }
    static std::string Safety(int control) {
        return "ctl_ctl_ctl_pgcRequirement_9_1_" + std::to_string(control);
    }

    Handle<IRequirement> OnServer() {
        FServer.Forget(FBaseline);
        return FServer.Latest(FServer.Node(FBaseline, Filter));
    }
    TValues ValuesOnServer() {
        TValues texts;
        const auto values = OnServer()->Get_AttributeValues();
        for (std::int32_t index = 0; index < values->Get_Count(); ++index) {
            const auto value = Cast<IAttributeValue>(values->Get_Item(index).AsDispatch());
            texts[Utf8(value->Get_Attribute()->Get_Name())] = TextOf(value);
        }
        return texts;
    }
    void SaveAndCheck(const TValues& wanted) {
        TTour::Check(FTour.User().Find("btnSave").isEnabled(), "Save is not enabled");
        FTour.User().Click("btnSave");
        const TValues held = ValuesOnServer();
        for (const auto& [name, text] : wanted)
            TTour::CheckEqual<std::string>(held.at(name), text, name + " on the server");
    }

private:
    TTour& FTour;
    TTourServer FServer;
    Handle<IBaseline> FBaseline;
};

// Over what stands there: an emptied number is told at once that it is none.
void TypeNumber(TTour& tour, const std::string& name, const char* text) {
    auto& edit = tour.User().Get<TMaskEdit>(name);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, QString::fromLatin1(text));
    TActor::Settle();
}

void EditPlanning(TTour& tour, TAttributes& attributes) {
    TActor& user = tour.User();
    user.ChooseTab("pgcRequirement", "Planning");
    TypeNumber(tour, TAttributes::Planning(2), "17");
    auto& due = user.Get<TDatePicker>(TAttributes::Planning(4));
    TTour::Check(due.Blank(), "a date that was never set is shown");
    user.Key(TAttributes::Planning(4), Qt::Key_Up);
    TTour::Check(!due.Blank(), "the chosen date is not shown");
    const std::string day = std::to_string(static_cast<int>(due.Date()));
    user.Choose(TAttributes::Planning(6), "1.1");
    TypeNumber(tour, TAttributes::Planning(8), "8");
    tour.Picture("planning is being edited", tour.Studio().Window());
    attributes.SaveAndCheck(
        {{"Effort", "17"}, {"Due", day}, {"Target release", "1.1"}, {"Story points", "8"}});
}

void EditSafety(TTour& tour, TAttributes& attributes) {
    TActor& user = tour.User();
    user.ChooseTab("pgcRequirement", "Safety");
    user.Key(TAttributes::Safety(1), Qt::Key_Space);
    TypeNumber(tour, TAttributes::Safety(3), "7.5");
    user.Choose(TAttributes::Safety(5), "Safety Board");
    for (const char* name : {"Eva Novak", "Anna Lind"}) {
        auto& reviewers = user.Get<TCheckListBox>(TAttributes::Safety(7));
        reviewers.SetItemIndex(reviewers.Items().IndexOf(name));
        user.Key(TAttributes::Safety(7), Qt::Key_Space);
    }
    user.Type(TAttributes::Safety(9), "Overheated room");
    user.Type(TAttributes::Safety(11), "Two readings must agree.");
    user.Get<TScrollBox>("ctl_ctl_pgcRequirement_9_1")
        .ensureWidgetVisible(&user.Find(TAttributes::Safety(11)));
    tour.Picture("safety is being edited", tour.Studio().Window());
    attributes.SaveAndCheck({{"Safety relevant", "yes"},
                             {"Fault tolerance time", "7.5"},
                             {"Approved by", "Safety Board"},
                             {"Reviewers", "Anna Lind, Eva Novak"},
                             {"Hazard", "Overheated room"},
                             {"Safety argument", "Two readings must agree."}});
}

void Cancel(TTour& tour, TAttributes& attributes) {
    const TValues before = attributes.ValuesOnServer();
    tour.User().Type(TAttributes::Safety(9), "Nobody will read this");
    tour.User().Key(TAttributes::Safety(1), Qt::Key_Space);
    tour.User().Click("btnCancelSave");
    TTour::CheckEqual<std::string>(tour.Text(TAttributes::Safety(9)), "Overheated room",
                                   "the cancelled text");
    TTour::Check(tour.User().Get<TCheckBox>(TAttributes::Safety(1)).Checked(), "the cancelled box stays");
    TTour::Check(attributes.ValuesOnServer() == before, "a cancelled value is on the server");
}

void BeRefused(TTour& tour, TAttributes& attributes) {
    const auto held = attributes.OnServer();
    held->lock();
    tour.User().Choose(TAttributes::Safety(5), "Firmware Team");
    TTour::Check(tour.Dialogs().TakeErrors() ==
                     std::vector<std::string>{"The object requested is currently locked."},
                 "the refused lock was not told");
    held->unlock();
    TTour::CheckEqual<std::string>(attributes.ValuesOnServer().at("Approved by"), "Safety Board",
                                   "the refused value");
}

} // namespace

void TourAttributes(TTour& tour) {
    TAttributes attributes(tour);
    tour.Step("numbers, a date and a list", [&] { EditPlanning(tour, attributes); });
    tour.Step("texts, boxes and people", [&] { EditSafety(tour, attributes); });
    tour.Step("attributes cancelled", [&] { Cancel(tour, attributes); });
    tour.Step("attribute refused", [&] { BeRefused(tour, attributes); });
}
