#include "tour/Chapters.h"
#include "tour/Tour.h"
#include "tour/TourServer.h"

#include "platform/widgets/Lists.h"
#include "platform/widgets/tree/TreeView.h"

namespace {

std::vector<std::string> Entries(TComboBox& list) {
    std::vector<std::string> texts;
    for (int index = 0; index < list.Items().Count(); ++index)
        texts.push_back(list.Items().Text(index));
    return texts;
}

void RefuseWrongPassword(TTour& tour) {
    tour.AnswerLogon("anna", "not the password");
    tour.ChooseMenu("ViewQuoraneRequirementsItem");
    const auto errors = tour.Dialogs().TakeErrors();
    TTour::Check(errors == std::vector<std::string>{"Invalid Login"}, "a wrong password was not refused");
    TTour::Check(!tour.User().Find("frmQuoraneMain").isVisible(), "the panel came up without a logon");
}

void LogOn(TTour& tour) {
    tour.AnswerLogon("anna", "hearth-anna", true);
    tour.ChooseMenu("ViewQuoraneRequirementsItem");
    TTour::Check(tour.User().Find("frmQuoraneMain").isVisible(), "the panel did not come up");
    const std::vector<std::string> projects{"Hearth Controller", "Hearth Service Portal"};
    TTour::Check(Entries(tour.User().Get<TComboBox>("cbxProjects")) == projects,
                 "the project list is not the server's");
    // The deleted baseline is not listed.
    const std::vector<std::string> baselines{"Current", "Release 1.0"};
    TTour::Check(Entries(tour.User().Get<TComboBox>("cbxProjectBaselines")) == baselines,
                 "the baseline list is not the server's");
    auto& tree = tour.User().Get<TTreeView>("trvRequirements");
    TTour::CheckEqual<std::string>(tree.GetFirstNode()->Text(), "Hearth Controller", "the top node");
    TTour::Check(tree.GetFirstNode()->Count() == 3, "the requirement types are not there");
    TTour::Check(!tour.Text("mmoProjectInfo").empty(), "the project page is empty");
}

void LogOffAndOnAgain(TTour& tour) {
    tour.User().Click("btnLogOff");
    TTour::Check(!tour.User().Find("frmQuoraneMain").isVisible(), "the panel stayed after the logoff");
    tour.AnswerLogon("chloe", "hearth-chloe");
    tour.ChooseMenu("ViewQuoraneRequirementsItem");
    TTour::CheckEqual<std::string>(tour.Text("cbxProjects"), "Hearth Controller", "the project kept by name");
}

void RememberAfterRestart(TTour& tour) {
    tour.CloseStudio();
    tour.StartStudio();
    std::string host, user, password;
    tour.User().WhenModal([&](TForm& form) {
        TActor actor(form.Widget());
        host = tour.Text("edtHost");
        user = tour.Text("edtUser");
        password = tour.Text("edtPassword");
        actor.Type("edtPassword", "hearth-chloe");
        actor.Click("btnOk");
    });
    tour.ChooseMenu("ViewQuoraneRequirementsItem");
    TTour::CheckEqual<std::string>(host, "local", "the remembered server");
    TTour::CheckEqual<std::string>(user, "chloe", "the remembered user");
    TTour::CheckEqual<std::string>(password, "", "the password");
}

} // namespace

void TourConnect(TTour& tour) {
    tour.StartStudio();
    tour.Step("studio", [&] {
        tour.Studio().Window().OpenFolder(QStringLiteral(QUORANE_SAMPLES_DIR "/source"));
        tour.Studio().Window().OpenFile(
            QStringLiteral(QUORANE_SAMPLES_DIR "/source/firmware/zone_control.cpp"));
        TTour::Check(tour.Studio().HasModule(), "the add-in is not loaded");
    });
    tour.Step("wrong password is refused", [&] { RefuseWrongPassword(tour); });
    tour.Step("connected", [&] { LogOn(tour); });
    tour.Step("another user after a logoff", [&] { LogOffAndOnAgain(tour); });
    tour.Step("restart remembers server and user", [&] { RememberAfterRestart(tour); });
}
