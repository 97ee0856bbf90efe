#include "description/ole/UTextDataObject.h"

#include <algorithm>
#include <cstring>

TTextDataObject::TTextDataObject(std::u16string text)
    : FFormatEtc{CF_UNICODETEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL}
    , FText(std::move(text)) {}

Ole::HResult TTextDataObject::GetData(const FORMATETC& format, STGMEDIUM& medium) {
    medium = {};
    if (format.cfFormat != FFormatEtc.cfFormat || format.dwAspect != FFormatEtc.dwAspect ||
        format.tymed != FFormatEtc.tymed)
        return Ole::StatusBadFormat;
    const std::size_t size = (FText.size() + 1) * sizeof(char16_t);
    medium.hGlobal = std::make_unique<TGlobalMemory>(GMEM_SHARE, size);
    medium.tymed = TYMED_HGLOBAL;
    std::memcpy(medium.hGlobal->Lock(), FText.c_str(), size);
    medium.hGlobal->Unlock();
    return Ole::StatusOk;
}

Ole::HResult TTextDataObject::GetDataHere(const FORMATETC& format, STGMEDIUM& medium) {
    return GetData(format, medium);
}

Ole::HResult TTextDataObject::QueryGetData(const FORMATETC& format) {
    return format.cfFormat == FFormatEtc.cfFormat ? Ole::StatusOk : Ole::StatusBadFormat;
}

Ole::HResult TTextDataObject::GetCanonicalFormatEtc(const FORMATETC&, FORMATETC& canonical) {
    canonical.ptd = nullptr;
    return Ole::StatusNotImplemented;
}

Ole::HResult TTextDataObject::SetData(const FORMATETC&, STGMEDIUM&, bool) {
    return Ole::StatusNotImplemented;
}

Ole::HResult TTextDataObject::EnumFormatEtc(std::uint32_t direction,
                                            std::shared_ptr<IEnumFORMATETC>& enumerator) {
    enumerator = nullptr;
    if (direction != DATADIR_GET) return Ole::StatusNotImplemented;
    enumerator = std::make_shared<TEnumFormatEtc>(&FFormatEtc, 1, 0);
    return Ole::StatusOk;
}

Ole::HResult TTextDataObject::DAdvise(const FORMATETC&, std::uint32_t, IAdviseSink*, std::uint32_t&) {
    return Ole::StatusAdviseNotSupported;
}

Ole::HResult TTextDataObject::DUnadvise(std::uint32_t) {
    return Ole::StatusAdviseNotSupported;
}

Ole::HResult TTextDataObject::EnumDAdvise(std::shared_ptr<IEnumSTATDATA>& enumerator) {
    enumerator = nullptr;
    return Ole::StatusAdviseNotSupported;
}

TEnumFormatEtc::TEnumFormatEtc(const FORMATETC* formats, std::uint32_t count, std::uint32_t index)
    : FFormats(formats)
    , FCount(count)
    , FIndex(index) {}

Ole::HResult TEnumFormatEtc::Next(std::uint32_t count, FORMATETC* records, std::uint32_t* fetched) {
    const std::uint32_t copied = std::min(count, FCount - FIndex);
    std::copy_n(FFormats + FIndex, copied, records);
    FIndex += copied;
    if (fetched) *fetched = copied;
    return copied == count ? Ole::StatusOk : Ole::StatusFalse;
}

Ole::HResult TEnumFormatEtc::Skip(std::uint32_t count) {
    if (count > FCount - FIndex) {
        FIndex = FCount;
        return Ole::StatusFalse;
    }
    FIndex += count;
    return Ole::StatusOk;
}

Ole::HResult TEnumFormatEtc::Reset() {
    FIndex = 0;
    return Ole::StatusOk;
}

Ole::HResult TEnumFormatEtc::Clone(std::shared_ptr<IEnumFORMATETC>& enumerator) {
    enumerator = std::make_shared<TEnumFormatEtc>(FFormats, FCount, FIndex);
    return Ole::StatusOk;
}
