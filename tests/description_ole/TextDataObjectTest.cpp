#include <gtest/gtest.h>

#include "description/ole/UTextDataObject.h"

namespace {

const FORMATETC unicodeText{13, nullptr, 1, -1, 1};

FORMATETC With(std::uint16_t format, std::uint32_t aspect, std::uint32_t medium) {
    return {format, nullptr, aspect, -1, medium};
}

TEST(TextDataObjectTest, GivesTheTextWithItsTerminatingZero) {
    for (const std::u16string& text : {std::u16string(), std::u16string(u"r\u00E9sum\u00E9 \U0001F600")}) {
        TTextDataObject data(text);
        STGMEDIUM medium;
        medium.pUnkForRelease = std::make_shared<int>(1);
        ASSERT_EQ(data.GetData(unicodeText, medium), Ole::StatusOk);
        EXPECT_EQ(medium.tymed, 1U);
        EXPECT_FALSE(medium.pUnkForRelease);
        EXPECT_EQ(medium.hGlobal->Flags(), 0x2000U);
        EXPECT_EQ(medium.hGlobal->Locks(), 0);
        ASSERT_EQ(medium.hGlobal->Size(), (text.size() + 1) * 2);
        const auto* units = reinterpret_cast<const char16_t*>(medium.hGlobal->Lock());
        EXPECT_EQ(std::u16string(units, text.size() + 1), text + u'\0');
    }
}

struct TFormatRow {
    const char* What;
    FORMATETC Format;
    bool Queried;
    bool Given;
};

TEST(TextDataObjectTest, OffersUnicodeTextInGlobalMemoryAlone) {
    const TFormatRow rows[] = {
        {"as offered", unicodeText, true, true},       {"other index", {13, nullptr, 1, 0, 1}, true, true},
        {"other format", With(1, 1, 1), false, false}, {"other aspect", With(13, 2, 1), true, false},
        {"other medium", With(13, 1, 4), true, false}, {"several media", With(13, 1, 5), true, false},
    };
    for (const TFormatRow& row : rows) {
        TTextDataObject data(u"text");
        const auto refused = static_cast<Ole::HResult>(0x80040064);
        STGMEDIUM medium{1, std::make_unique<TGlobalMemory>(0, 8), nullptr};
        EXPECT_EQ(data.QueryGetData(row.Format), row.Queried ? Ole::StatusOk : refused) << row.What;
        EXPECT_EQ(data.GetData(row.Format, medium), row.Given ? Ole::StatusOk : refused) << row.What;
        EXPECT_EQ(medium.tymed, row.Given ? 1U : 0U) << row.What;
        EXPECT_EQ(medium.hGlobal != nullptr, row.Given) << row.What;
        STGMEDIUM here;
        EXPECT_EQ(data.GetDataHere(row.Format, here), row.Given ? Ole::StatusOk : refused) << row.What;
        EXPECT_EQ(here.hGlobal != nullptr, row.Given) << row.What;
    }
}

TEST(TextDataObjectTest, RefusesWhatItDoesNotDoAndClearsWhatItHandsOut) {
    TTextDataObject data(u"text");
    STGMEDIUM medium;
    FORMATETC canonical = unicodeText;
    canonical.ptd = reinterpret_cast<const DVTARGETDEVICE*>(&medium);
    std::uint32_t connection = 0;
    std::shared_ptr<IEnumSTATDATA> connections(nullptr, [](IEnumSTATDATA*) {});
    EXPECT_EQ(data.GetCanonicalFormatEtc(unicodeText, canonical), Ole::StatusNotImplemented);
    EXPECT_EQ(canonical.ptd, nullptr);
    EXPECT_EQ(data.SetData(unicodeText, medium, true), Ole::StatusNotImplemented);
    const auto noAdvise = static_cast<Ole::HResult>(0x80040003);
    EXPECT_EQ(data.DAdvise(unicodeText, 0, nullptr, connection), noAdvise);
    EXPECT_EQ(data.DUnadvise(connection), noAdvise);
    EXPECT_EQ(data.EnumDAdvise(connections), noAdvise);
    EXPECT_EQ(connections.use_count(), 0);
}

TEST(TextDataObjectTest, ListsItsFormatForGettingOnly) {
    TTextDataObject data(u"text");
    std::shared_ptr<IEnumFORMATETC> formats;
    ASSERT_EQ(data.EnumFormatEtc(1, formats), Ole::StatusOk);
    FORMATETC records[2];
    std::uint32_t fetched = 9;
    EXPECT_EQ(formats->Next(2, records, &fetched), Ole::StatusFalse);
    EXPECT_EQ(fetched, 1U);
    EXPECT_EQ(records[0], unicodeText);
    EXPECT_EQ(data.EnumFormatEtc(2, formats), Ole::StatusNotImplemented);
    EXPECT_FALSE(formats);
}

// An enumerator over three records, told by the clipboard format of the next one.
class EnumFormatEtcTest : public testing::Test {
protected:
    static int Next(IEnumFORMATETC& formats) {
        FORMATETC record;
        return formats.Next(1, &record, nullptr) == Ole::StatusOk ? record.cfFormat : 0;
    }

    const FORMATETC FRecords[3] = {With(11, 1, 1), With(12, 1, 1), With(13, 1, 1)};
    TEnumFormatEtc FFormats{FRecords, 3, 0};
};

TEST_F(EnumFormatEtcTest, HandsOutOneRecordAfterTheOther) {
    EXPECT_EQ(Next(FFormats), 11);
    FORMATETC records[3];
    std::uint32_t fetched = 0;
    EXPECT_EQ(FFormats.Next(2, records, &fetched), Ole::StatusOk);
    EXPECT_EQ(fetched, 2U);
    EXPECT_EQ(records[1].cfFormat, 13);
    EXPECT_EQ(FFormats.Next(0, records, &fetched), Ole::StatusOk);
    EXPECT_EQ(FFormats.Next(1, records, &fetched), Ole::StatusFalse);
    EXPECT_EQ(fetched, 0U);
    FFormats.Reset();
    EXPECT_EQ(Next(FFormats), 11);
}

struct TSkipRow {
    std::uint32_t Count;
    Ole::HResult Status;
    int Next;
};

TEST_F(EnumFormatEtcTest, SkipsToTheEndAtMost) {
    const TSkipRow rows[] = {{0, 0, 12}, {1, 0, 13}, {2, 0, 0}, {3, 1, 0}, {0xFFFFFFFF, 1, 0}};
    for (const TSkipRow& row : rows) {
        TEnumFormatEtc formats(FRecords, 3, 1);
        EXPECT_EQ(formats.Skip(row.Count), row.Status) << row.Count;
        EXPECT_EQ(Next(formats), row.Next) << row.Count;
    }
}

TEST_F(EnumFormatEtcTest, ClonesStandWhereTheFirstStoodAndGoOnAlone) {
    FFormats.Skip(1);
    std::shared_ptr<IEnumFORMATETC> clone;
    EXPECT_EQ(FFormats.Clone(clone), Ole::StatusOk);
    EXPECT_EQ(Next(FFormats), 12);
    EXPECT_EQ(Next(*clone), 12);
    EXPECT_EQ(Next(*clone), 13);
    EXPECT_EQ(Next(*clone), 0);
    EXPECT_EQ(Next(FFormats), 13);
}

} // namespace
