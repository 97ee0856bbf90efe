// What the description shows while the pointer rests on it.
#include "description/UDescriptionFrame.h"

void TfraDescription::wbrReqDescriptiononmousemove() {}

std::u16string TfraDescription::CurrentDescriptionElement() {
    return {};
}
