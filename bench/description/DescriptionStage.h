// The panel on a generated project, with the real HTML engine behind the description.
#pragma once

#include "../Limits.h"

#include "description/UDescriptionFrame.h"
#include "description/UDescriptionToolbarFrame.h"
#include "platform/widgets/tree/TreeView.h"
#include "support/PanelStage.h"

#include <functional>
#include <string>

class QWidget;

class TDescriptionStage {
public:
    // Logs on to a project of a hundred requirements and so many glossary terms, and
    // shows the requirements of the first level.
    explicit TDescriptionStage(int terms = 0);
    ~TDescriptionStage();
    TDescriptionStage(const TDescriptionStage&) = delete;
    TDescriptionStage& operator=(const TDescriptionStage&) = delete;

    TPanelStage& Panel() { return *FStage; }
    TfraDescription& Frame() { return *FStage->Panel().fraDescription; }
    TfraDescriptionToolbar& Bar() { return *FStage->Panel().fraDescriptionToolbar; }
    // The widget that takes the page's mouse and keys.
    QWidget& Page();
    std::int64_t EngineCalls() { return Frame().wbrReqDescription->EngineCalls(); }

    int Count() { return Type().Count(); }
    std::int32_t Number(int index);
    // Shows the requirement; its description is loaded when this returns.
    void Select(int index) { Type().Item(index)->SetSelected(); }
    void SelectNone() { Type().SetSelected(); }

    // As a second client writes and reads it.
    void Write(int index, const std::string& html);
    std::string Read(int index);

    // Handles events until the condition holds; raises std::runtime_error naming what
    // was waited for when it never does.
    static void WaitUntil(const std::string& what, const std::function<bool()>& condition);

private:
    TTreeNode& Type();

    TTempFolder FFolder;
    std::unique_ptr<TPanelStage> FStage;
    Quorane_TLB::Handle<Quorane_TLB::ISession> FOther;
};

// Paragraphs, lists and tables of about so many bytes.
std::string TextOfSize(std::size_t bytes);

TLimits MeasureLoading();
TLimits MeasureCalls();
TLimits MeasureIdle();
TLimits MeasureMemory();
TLimits MeasureDrift();
