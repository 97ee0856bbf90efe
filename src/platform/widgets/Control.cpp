#include "platform/widgets/Control.h"

#include "platform/widgets/QtText.h"

std::string TComponent::Name() const { return FromQt(Object().objectName()); }

void TComponent::SetName(const std::string& name) { Object().setObjectName(ToQt(name)); }
