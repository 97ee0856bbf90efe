// One UTF-16 text, offered to other programs as Unicode text in global memory.
#pragma once

#include "contracts/DataTransfer.h"

class TTextDataObject : public IDataObject {
public:
    explicit TTextDataObject(std::u16string text);

    // The text with its terminating zero, for the one format that EnumFormatEtc tells;
    // StatusBadFormat and an empty medium for any other.
    Ole::HResult GetData(const FORMATETC& format, STGMEDIUM& medium) override;
    Ole::HResult GetDataHere(const FORMATETC& format, STGMEDIUM& medium) override;
    // Looks at the clipboard format alone, so that it may promise more than GetData gives.
    Ole::HResult QueryGetData(const FORMATETC& format) override;
    Ole::HResult GetCanonicalFormatEtc(const FORMATETC& format, FORMATETC& canonical) override;
    Ole::HResult SetData(const FORMATETC& format, STGMEDIUM& medium, bool release) override;
    // The data object must outlive the enumerator and its clones.
    Ole::HResult EnumFormatEtc(std::uint32_t direction, std::shared_ptr<IEnumFORMATETC>& enumerator) override;
    Ole::HResult DAdvise(const FORMATETC& format, std::uint32_t flags, IAdviseSink* sink,
                         std::uint32_t& connection) override;
    Ole::HResult DUnadvise(std::uint32_t connection) override;
    Ole::HResult EnumDAdvise(std::shared_ptr<IEnumSTATDATA>& enumerator) override;

private:
    FORMATETC FFormatEtc;
    std::u16string FText;
};

class TEnumFormatEtc : public IEnumFORMATETC {
public:
    // formats: count records that must outlive the enumerator and its clones.
    TEnumFormatEtc(const FORMATETC* formats, std::uint32_t count, std::uint32_t index);

    Ole::HResult Next(std::uint32_t count, FORMATETC* records, std::uint32_t* fetched) override;
    Ole::HResult Skip(std::uint32_t count) override;
    Ole::HResult Reset() override;
    Ole::HResult Clone(std::shared_ptr<IEnumFORMATETC>& enumerator) override;

private:
    const FORMATETC* FFormats;
    std::uint32_t FCount;
    std::uint32_t FIndex;
};
