#include "ide/UDtmImages.h"

#include "platform/widgets/look/Images.h"

TdtmImages::TdtmImages()
    : TDataModule(nullptr, "dtmImages")
    , FImages(new TImageList(this, "imlImages")) {
    FImages->Add(AddInIconName);
}
