// Each sink class against what the engine publishes of its interface.
#include <gtest/gtest.h>

#include "FakeSource.h"
#include "description/MSHTMLEvents.h"

namespace {

struct TClassRow {
    const char* Name;
    const char* Identifier;
    int Events;
    std::unique_ptr<TMSHTMLEventsBaseSink> (*Create)();
};

template<class Sink> std::unique_ptr<TMSHTMLEventsBaseSink> Create() {
    return std::make_unique<Sink>();
}

#define ROW(Class, Identifier, Events)                                                                       \
    { #Class, Identifier, Events, Create < Class> }

const TClassRow classRows[] = {
    ROW(THTMLElementEvents, "{3050F33C-98B5-11CF-BB82-00AA00BDCE0B}", 59),
    ROW(THTMLElementEvents2, "{3050F60F-98B5-11CF-BB82-00AA00BDCE0B}", 58),
    ROW(THTMLLinkElementEvents, "{3050F3CC-98B5-11CF-BB82-00AA00BDCE0B}", 61),
    ROW(THTMLLinkElementEvents2, "{3050F61D-98B5-11CF-BB82-00AA00BDCE0B}", 60),
    ROW(THTMLFormElementEvents, "{3050F364-98B5-11CF-BB82-00AA00BDCE0B}", 61),
    ROW(THTMLFormElementEvents2, "{3050F614-98B5-11CF-BB82-00AA00BDCE0B}", 60),
    ROW(THTMLImgEvents, "{3050F25B-98B5-11CF-BB82-00AA00BDCE0B}", 62),
    ROW(THTMLImgEvents2, "{3050F616-98B5-11CF-BB82-00AA00BDCE0B}", 61),
    ROW(THTMLTextContainerEvents, "{1FF6AA72-5842-11CF-A707-00AA00C0098D}", 61),
    ROW(THTMLTextContainerEvents2, "{3050F624-98B5-11CF-BB82-00AA00BDCE0B}", 60),
    ROW(THTMLAnchorEvents, "{3050F29D-98B5-11CF-BB82-00AA00BDCE0B}", 59),
    ROW(THTMLAnchorEvents2, "{3050F610-98B5-11CF-BB82-00AA00BDCE0B}", 58),
    ROW(THTMLLabelEvents, "{3050F329-98B5-11CF-BB82-00AA00BDCE0B}", 59),
    ROW(THTMLLabelEvents2, "{3050F61C-98B5-11CF-BB82-00AA00BDCE0B}", 58),
    ROW(THTMLSelectElementEvents, "{3050F302-98B5-11CF-BB82-00AA00BDCE0B}", 60),
    ROW(THTMLSelectElementEvents2, "{3050F622-98B5-11CF-BB82-00AA00BDCE0B}", 59),
    ROW(THTMLInputTextElementEvents, "{3050F2A7-98B5-11CF-BB82-00AA00BDCE0B}", 64),
    ROW(THTMLInputTextElementEvents2, "{3050F618-98B5-11CF-BB82-00AA00BDCE0B}", 63),
    ROW(THTMLOptionButtonElementEvents, "{3050F2BD-98B5-11CF-BB82-00AA00BDCE0B}", 64),
    ROW(THTMLButtonElementEvents, "{3050F2B3-98B5-11CF-BB82-00AA00BDCE0B}", 59),
    ROW(THTMLButtonElementEvents2, "{3050F617-98B5-11CF-BB82-00AA00BDCE0B}", 58),
    ROW(THTMLMarqueeElementEvents, "{3050F2B8-98B5-11CF-BB82-00AA00BDCE0B}", 64),
    ROW(THTMLMarqueeElementEvents2, "{3050F61F-98B5-11CF-BB82-00AA00BDCE0B}", 63),
    ROW(THTMLWindowEvents, "{96A0A4E0-D062-11CF-94B6-00AA0060275C}", 11),
    ROW(THTMLWindowEvents2, "{3050F625-98B5-11CF-BB82-00AA00BDCE0B}", 11),
    ROW(THTMLDocumentEvents, "{3050F260-98B5-11CF-BB82-00AA00BDCE0B}", 31),
    ROW(THTMLDocumentEvents2, "{3050F613-98B5-11CF-BB82-00AA00BDCE0B}", 31),
    ROW(TDWebBridgeEvents, "{A6D897FF-0A95-11D1-B0BA-006008166E11}", 10),
    ROW(THTMLControlElementEvents, "{3050F4EA-98B5-11CF-BB82-00AA00BDCE0B}", 59),
    ROW(THTMLControlElementEvents2, "{3050F612-98B5-11CF-BB82-00AA00BDCE0B}", 58),
    ROW(THTMLMapEvents, "{3050F3BA-98B5-11CF-BB82-00AA00BDCE0B}", 59),
    ROW(THTMLMapEvents2, "{3050F61E-98B5-11CF-BB82-00AA00BDCE0B}", 58),
    ROW(THTMLAreaEvents, "{3050F366-98B5-11CF-BB82-00AA00BDCE0B}", 59),
    ROW(THTMLAreaEvents2, "{3050F611-98B5-11CF-BB82-00AA00BDCE0B}", 58),
    ROW(THTMLTableEvents, "{3050F407-98B5-11CF-BB82-00AA00BDCE0B}", 59),
    ROW(THTMLTableEvents2, "{3050F623-98B5-11CF-BB82-00AA00BDCE0B}", 58),
    ROW(THTMLScriptEvents, "{3050F3E2-98B5-11CF-BB82-00AA00BDCE0B}", 60),
    ROW(THTMLScriptEvents2, "{3050F621-98B5-11CF-BB82-00AA00BDCE0B}", 59),
    ROW(THTMLObjectElementEvents, "{3050F3C4-98B5-11CF-BB82-00AA00BDCE0B}", 13),
    ROW(THTMLObjectElementEvents2, "{3050F620-98B5-11CF-BB82-00AA00BDCE0B}", 13),
    ROW(THTMLFrameSiteEvents, "{3050F800-98B5-11CF-BB82-00AA00BDCE0B}", 60),
    ROW(THTMLFrameSiteEvents2, "{3050F7FF-98B5-11CF-BB82-00AA00BDCE0B}", 59),
    ROW(THTMLStyleElementEvents, "{3050F3CB-98B5-11CF-BB82-00AA00BDCE0B}", 61),
    ROW(THTMLStyleElementEvents2, "{3050F615-98B5-11CF-BB82-00AA00BDCE0B}", 60),
    ROW(THTMLNamespaceEvents, "{3050F6BD-98B5-11CF-BB82-00AA00BDCE0B}", 1),
    ROW(THTMLInputFileElementEvents, "{3050F2AF-98B5-11CF-BB82-00AA00BDCE0B}", 64),
    ROW(THTMLInputImageEvents, "{3050F2C3-98B5-11CF-BB82-00AA00BDCE0B}", 62),
};

#undef ROW

void PrintTo(const TClassRow& row, std::ostream* stream) {
    *stream << row.Name;
}

// Whether the sink takes the DISPID for one of its events.
bool Knows(TMSHTMLEventsBaseSink& sink, std::uint32_t dispId) {
    THtmlValue result;
    const TEventArguments arguments{{{}, {}, {}}, {}};
    const auto status =
        sink.Invoke(static_cast<std::int32_t>(dispId), Ole::DispatchMethod, arguments, result);
    EXPECT_TRUE(status == Ole::StatusOk || status == Ole::StatusMemberNotFound) << dispId;
    return status == Ole::StatusOk;
}

class EventClassTest : public testing::TestWithParam<TClassRow> {};

TEST_P(EventClassTest, TakesThePublishedEventsOfItsInterface) {
    const auto sink = GetParam().Create();
    EXPECT_EQ(sink->ClassName(), GetParam().Name);
    void* object = nullptr;
    EXPECT_EQ(sink->QueryInterface(GetParam().Identifier, object), Ole::StatusOk);
    int events = 0;
    // The three ranges in which the engine numbers its events.
    for (const auto& [first, last] : {std::pair{0U, 0x800U}, {0x80010000U, 0x80010040U}, {0xFFFFFD00U, 0U}})
        for (std::uint32_t dispId = first; dispId != last; ++dispId)
            events += Knows(*sink, dispId);
    EXPECT_EQ(events, GetParam().Events);
}

INSTANTIATE_TEST_SUITE_P(Classes, EventClassTest, testing::ValuesIn(classRows),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(EventKindTest, TellsOfEditingAheadWhereElementsPassNoObject) {
    for (const TClassRow& row : classRows) {
        const bool ofElement = row.Events >= 58;
        const bool withObject = std::string(row.Name).back() == '2';
        if (ofElement) {
            EXPECT_EQ(Knows(*row.Create(), 0x403), !withObject) << row.Name;
        }
    }
}

struct TAnswerRow {
    const char* What;
    std::unique_ptr<TMSHTMLEventsBaseSink> (*Create)();
    std::uint32_t DispId;
    bool Answers;
};

TEST(EventKindTest, AnswersWhereTheEngineAsksForIt) {
    const TAnswerRow rows[] = {
        {"change of a list", Create<THTMLSelectElementEvents>, 1001, false},
        {"change of a text", Create<THTMLInputTextElementEvents>, 1001, true},
        {"change of a text, with object", Create<THTMLInputTextElementEvents2>, 1001, true},
        {"fault of an image", Create<THTMLImgEvents>, 1002, false},
        {"fault of an object", Create<THTMLObjectElementEvents>, 0x80010013, true},
        {"change of a property", Create<THTMLElementEvents>, 0x80010013, false},
        {"drag", Create<THTMLElementEvents>, 0x80010014, true},
        {"state of an object", Create<THTMLObjectElementEvents>, 0x80010014, false},
        {"click", Create<TDWebBridgeEvents>, 0xFFFFFDA8, true},
        {"key down", Create<THTMLDocumentEvents2>, 0xFFFFFDA6, false},
        {"key press", Create<THTMLDocumentEvents2>, 0xFFFFFDA5, true},
    };
    for (const TAnswerRow& row : rows) {
        THtmlValue result;
        const auto status = row.Create()->Invoke(static_cast<std::int32_t>(row.DispId), Ole::DispatchMethod,
                                                 {{{}, {}, {}}, {}}, result);
        EXPECT_EQ(status, Ole::StatusOk) << row.What;
        EXPECT_EQ(result, row.Answers ? THtmlValue(false) : THtmlValue()) << row.What;
    }
}

TEST(EventKindTest, PassesTheNameAndAnyValueOfAScriptletsEvent) {
    const auto object = std::make_shared<TFakeObject>();
    for (const THtmlArgument& data : {THtmlArgument(12), THtmlArgument(u"text"), THtmlArgument(object)}) {
        TDWebBridgeEvents sink;
        THtmlArgument passed;
        sink.onscriptletevent = [&](TMSHTMLEventsBaseSink&, const std::u16string& name,
                                    const THtmlArgument& value) {
            EXPECT_EQ(name, u"ready");
            passed = value;
        };
        THtmlValue result;
        sink.Invoke(1, Ole::DispatchMethod, {{data, u"ready"}, {}}, result);
        EXPECT_EQ(passed, data);
    }
}

TEST(EventKindTest, PassesTheEventObjectAndTakesTheAnswer) {
    const auto event = std::make_shared<TFakeEvent>();
    THTMLFormElementEvents2 sink;
    sink.onsubmit = [&](TMSHTMLEventsBaseSink&, const THtmlHandle<IHTMLEventObj>& object) {
        return Quorane_TLB::ToWordBool(object == event);
    };
    THtmlValue result;
    sink.Invoke(1007, Ole::DispatchMethod, {{event}, {}}, result);
    EXPECT_EQ(result, THtmlValue(true));
}

} // namespace
