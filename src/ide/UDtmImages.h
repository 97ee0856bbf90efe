// The pictures that the add-in hands to the host for its menus.
#pragma once

#include "platform/widgets/Forms.h"
#include "platform/widgets/look/ImageList.h"

class TdtmImages : public TDataModule {
public:
    TdtmImages();

    const TImageList& imlImages() const { return *FImages; }

private:
    TImageList* FImages;
};
