#include "contracts/Object.h"

TObject::~TObject() = default;
TEditTextDragObject::~TEditTextDragObject() = default;
IDragSource::~IDragSource() = default;
