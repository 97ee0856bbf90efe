// The bar's command for tables.
#include "description/UDescriptionToolbarFrame.h"

void TfraDescriptionToolbar::btnInsertTableExecute() {}

void TfraDescriptionToolbar::InsertTable() {}

void TfraDescriptionToolbar::ChangeSelectedTable() {}
