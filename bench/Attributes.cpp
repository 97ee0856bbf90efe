// What the showing of a requirement with 40 attributes on four custom tabs costs beside
// the bare work: making as many Qt widgets of the same kinds, with labels and content,
// on tabs that scroll, in place of those of the requirement before. The HTML engine is
// not there: what a description costs has limits of its own.
#include "Limits.h"

#include "backend/service/BulkWriter.h"
#include "platform/widgets/Containers.h"
#include "support/PanelStage.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QTabWidget>

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace {

using namespace Backend;

constexpr int Rounds = 60;
constexpr int Tabs = 4;
constexpr int AttributesOfATab = 10;
constexpr int ControlHeight = 24;
const std::vector<std::string> Entries = {"First", "Second", "Third", "Fourth"};

enum class EKind { Text, LongText, Check, Number, Choice, Choices, Date };
// Of the attributes of one tab.
constexpr EKind Kinds[AttributesOfATab] = {EKind::Text,    EKind::Text,   EKind::LongText, EKind::Check,
                                           EKind::Check,   EKind::Number, EKind::Number,   EKind::Choice,
                                           EKind::Choices, EKind::Date};

Attribute MakeAttribute(EKind kind, const std::string& name) {
    Attribute attribute;
    attribute.Name = name;
    switch (kind) {
    case EKind::Text:
    case EKind::LongText:
        attribute.Kind = AttributeKind::Text;
        attribute.MaxLength = kind == EKind::Text ? 255 : 4000;
        attribute.Default = std::string("as agreed");
        break;
    case EKind::Check:
        attribute.Kind = AttributeKind::Boolean;
        attribute.Default = true;
        break;
    case EKind::Number:
        attribute.Kind = AttributeKind::Integer;
        attribute.Default = std::int32_t{17};
        break;
    case EKind::Choice:
    case EKind::Choices:
        attribute.Kind = AttributeKind::List;
        attribute.Entries.assign(Entries.begin(), Entries.end());
        attribute.MaxSelections = kind == EKind::Choice ? 1 : 4;
        attribute.Default = Selection{{1}};
        break;
    case EKind::Date:
        attribute.Kind = AttributeKind::Date;
        attribute.Default = Date{46000};
        break;
    }
    return attribute;
}

// Two requirements with the attributes.
void Build(const std::string& path) {
    BulkWriter writer(path, BulkWriter::Hashing::QuickForTests);
    NewUser user;
    user.UserName = user.Password = "admin";
    user.Administrator = true;
    const Revision revision{writer.AddUser(user), 1, ""};
    NewProject project;
    project.Name = "Attributes";
    NewRequirement requirement;
    requirement.ProjectId = writer.AddProject(project);
    requirement.TypeId = writer.AddRequirementType(requirement.ProjectId, {"Type", "T", ""});
    for (int tab = 0; tab < Tabs; ++tab) {
        const ObjectId tabId =
            writer.AddCustomTab(requirement.TypeId, "Tab " + std::to_string(tab), std::string());
        for (int index = 0; index < AttributesOfATab; ++index)
            writer.AddAttribute(tabId, MakeAttribute(Kinds[index], "Attribute " + std::to_string(index)));
    }
    for (const char* name : {"One", "Two"}) {
        requirement.Name = name;
        writer.AddRequirement(requirement, revision);
    }
    writer.Commit();
}

QWidget* MakeWidget(EKind kind, QWidget* parent) {
    const auto text = QStringLiteral("as agreed");
    switch (kind) {
    case EKind::Text:
        return new QLineEdit(text, parent);
    case EKind::Number:
        return new QLineEdit(QStringLiteral("17"), parent);
    case EKind::LongText:
        return new QPlainTextEdit(text, parent);
    case EKind::Check: {
        auto* box = new QCheckBox(text, parent);
        box->setChecked(true);
        return box;
    }
    case EKind::Choice: {
        auto* list = new QComboBox(parent);
        for (const std::string& entry : Entries)
            list->addItem(QString::fromStdString(entry));
        list->setCurrentIndex(1);
        return list;
    }
    case EKind::Choices: {
        auto* list = new QListWidget(parent);
        for (const std::string& entry : Entries)
            (new QListWidgetItem(QString::fromStdString(entry), list))->setCheckState(Qt::Unchecked);
        list->item(1)->setCheckState(Qt::Checked);
        return list;
    }
    case EKind::Date:
        return new QDateEdit(QDate(2025, 12, 9), parent);
    }
    return nullptr;
}

void MakeBareTabs(QTabWidget& tabs) {
    while (tabs.count() > 1) {
        const std::unique_ptr<QWidget> last(tabs.widget(tabs.count() - 1));
        tabs.removeTab(tabs.count() - 1);
    }
    for (int tab = 0; tab < Tabs; ++tab) {
        auto* area = new QScrollArea;
        auto* content = new QWidget;
        int top = 10;
        const auto place = [&](QWidget* widget) {
            widget->setGeometry(10, top, 300, ControlHeight);
            top += ControlHeight + 5;
        };
        for (const EKind kind : Kinds) {
            if (kind != EKind::Check) place(new QLabel(QStringLiteral("Attribute:"), content));
            place(MakeWidget(kind, content));
        }
        content->resize(320, top);
        area->setWidget(content);
        tabs.addTab(area, QStringLiteral("Tab"));
    }
    QApplication::processEvents();
}

} // namespace

TLimits MeasureAttributes() {
    const TTempFolder folder;
    const std::string database = folder.File("attributes.db");
    Build(database);
    TPanelStage stage(database);
    if (!stage.LogOn("local", "admin", "admin")) throw std::runtime_error("the logon was refused");
    const auto show = [&](TTreeNode& node) {
        node.SetSelected();
        QApplication::processEvents();
    };
    stage.Select({"Type"}).Expand(false);
    TTreeNode& type = *stage.Panel().trvRequirements->Selected();
    TTreeNode &one = *type.Item(0), &two = *type.Item(1);
    show(one);
    show(two);
    if (stage.Panel().pgcRequirement->PageCount() != rtFirstCustom + Tabs)
        throw std::runtime_error("the custom tabs are not there");
    stage.Server->Calls.Clear();
    show(one);
    const auto roundTrips = static_cast<double>(stage.Server->Calls.RoundTrips());
    // Observed calls would be timed with what observing them costs.
    Sdk::RemoveCallObserver(stage.Server->Calls);

    QWidget window;
    QTabWidget tabs(&window);
    tabs.addTab(new QWidget, QStringLiteral("Details"));
    window.resize(420, 700);
    tabs.setGeometry(0, 0, 420, 350);
    window.show();
    TTreeNode* next = &two;
    const auto turn = [&] { next = next == &one ? &two : &one; };
    const TComparison times =
        CompareTimes(Rounds, {[&] { show(*next); }, turn}, {{[&] { MakeBareTabs(tabs); }}});
    char detail[64];
    std::snprintf(detail, sizeof detail, "%.2f ms against %.2f ms", times.Ours, times.Bare);
    return {{"round trips: show 40 attributes", 1, roundTrips, ""},
            {"show 40 attributes against 40 bare widgets", 3, times.Ratio, "x", detail}};
}
