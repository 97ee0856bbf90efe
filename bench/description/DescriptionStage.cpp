#include "DescriptionStage.h"

#include "backend/exchange/GeneratedProject.h"
#include "platform/engine/WebBrowser.h"
#include "server/UQuoraneStHelpers.h"

#include <QElapsedTimer>
#include <QTimer>

#include <stdexcept>

using namespace Quorane_TLB;

namespace {

constexpr int LongestWaitMs = 30'000;
std::string MakeDatabase(const std::string& path, int terms) {
    Exchange::BuildGeneratedDatabase(path, {100, 50, terms}, Backend::BulkWriter::Hashing::QuickForTests);
    return path;
}

} // namespace

TDescriptionStage::TDescriptionStage(int terms) {
    SetHtmlEngineFactory([](TWinControl& parent, const std::string& name) {
        PrepareEngine();
        return std::make_unique<TWebBrowser>(parent, name);
    });
    FStage = std::make_unique<TPanelStage>(MakeDatabase(FFolder.File("description.db"), terms));
    if (!FStage->LogOn("local", "admin", "admin")) throw std::runtime_error("the logon was refused");
    const auto server = CoQuoraneServerFactory::Create()->Create1(u"local");
    FOther = Cast<ISession>(
        CallByName(server, "login", {Variant(Wide("admin")), Variant(Wide("admin"))}).AsDispatch());
    Type().Expand(false);
}

TDescriptionStage::~TDescriptionStage() {
    FOther->logout();
    FStage.reset();
    SetHtmlEngineFactory({});
}

TTreeNode& TDescriptionStage::Type() {
    return *FStage->Panel().trvRequirements->GetFirstNode()->GetFirstChild();
}

QWidget& TDescriptionStage::Page() {
    return *Frame().wbrReqDescription->Control().Widget().focusProxy();
}

std::int32_t TDescriptionStage::Number(int index) {
    return Type().Item(index)->DataAs<TRequirementTreeNodeContainer>()->Node->Get_ID()->Get_IDNumber();
}

void TDescriptionStage::Write(int index, const std::string& html) {
    const auto requirement = FOther->getLatestRequirement(Number(index));
    requirement->lock();
    requirement->Get_Description()->Set_Text(Wide(html));
    CallByName(requirement, "save", {Variant(Wide(""))});
    requirement->unlock();
}

std::string TDescriptionStage::Read(int index) {
    return Utf8(FOther->getLatestRequirement(Number(index))->Get_Description()->Get_Text());
}

void TDescriptionStage::WaitUntil(const std::string& what, const std::function<bool()>& condition) {
    QElapsedTimer waited;
    waited.start();
    QTimer wake;
    wake.start(1);
    while (!condition()) {
        if (waited.elapsed() > LongestWaitMs) throw std::runtime_error("waited in vain for " + what);
        Application().WaitMessage();
    }
}

std::string TextOfSize(std::size_t bytes) {
    std::string html;
    for (int number = 1; html.size() < bytes; ++number) {
        const std::string text = std::to_string(number);
        html += "<p>The <b>controller</b> answers request " + text +
                " within <i>200 ms</i>, also while a <u>zone</u> heats &amp; another one cools.</p>";
        if (number % 10 == 0) html += "<ul><li>first of " + text + "</li><li>second</li></ul>";
        if (number % 25 == 0)
            html += "<table border=\"1\"><tbody><tr><td>" + text + "</td><td>cell</td></tr></tbody></table>";
    }
    return html;
}
