// A test's own panel stage. A case that leaves an error box or a message box behind
// that it did not look at has failed.
#pragma once

#include <gtest/gtest.h>

#include "support/PanelStage.h"

class TPanelFixture : public testing::Test, protected TPanelStage {
protected:
    void TearDown() override {
        for (const std::string& error : Dialogs.Errors())
            ADD_FAILURE() << "an error box was left unread: " << error;
        for (const TMessage& message : Dialogs.Unexpected())
            ADD_FAILURE() << "an unexpected box: " << message.Text;
    }
};
