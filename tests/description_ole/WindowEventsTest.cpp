// What a sink does with the calls of its source, told on the events of a window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FakeSource.h"
#include "contracts/Exceptions.h"
#include "description/MSHTMLEvents.h"

using Quorane_TLB::WordBool;
using testing::ElementsAre;

namespace {

constexpr auto helpId = static_cast<std::int32_t>(0x8001000A);
constexpr std::int32_t errorId = 1002;

struct TEventRow {
    const char* Name;
    std::uint32_t DispId;
    std::function<void(TMSHTMLEventsBaseSink&)> THTMLWindowEvents::*Event;
    std::function<void(TMSHTMLEventsBaseSink&, const THtmlHandle<IHTMLEventObj>&)> THTMLWindowEvents2::*
        Event2;
};

#define ROW(Event, DispId)                                                                                   \
    { #Event, DispId, &THTMLWindowEvents::Event, &THTMLWindowEvents2::Event }
const TEventRow eventRows[] = {
    ROW(onload, 1003),         ROW(onunload, 1008),      ROW(onfocus, 0x80010001),
    ROW(onblur, 0x80010000),   ROW(onresize, 1016),      ROW(onscroll, 1014),
    ROW(onbeforeunload, 1017), ROW(onbeforeprint, 1024), ROW(onafterprint, 1025),
};
#undef ROW

TEST(WindowEventsTest, CallsTheHandlerOfTheEventAndNoOther) {
    THTMLWindowEvents sink;
    std::vector<std::string> calls;
    for (const TEventRow& row : eventRows)
        sink.*row.Event = [&, name = row.Name](TMSHTMLEventsBaseSink& sender) {
            EXPECT_EQ(&sender, &sink);
            calls.push_back(name);
        };
    for (const TEventRow& row : eventRows) {
        THtmlValue result;
        calls.clear();
        EXPECT_EQ(sink.Invoke(static_cast<std::int32_t>(row.DispId), Ole::DispatchMethod, {}, result), hsOk);
        EXPECT_THAT(calls, ElementsAre(row.Name));
        EXPECT_EQ(result, THtmlValue()) << row.Name;
    }
}

TEST(WindowEventsTest, PassesTheEventObjectOfItsFirstArgument) {
    const auto event = std::make_shared<TFakeEvent>();
    for (const TEventRow& row : eventRows) {
        THTMLWindowEvents2 sink;
        THtmlHandle<IHTMLEventObj> passed;
        sink.*row.Event2 = [&](TMSHTMLEventsBaseSink&, const THtmlHandle<IHTMLEventObj>& object) {
            passed = object;
        };
        THtmlValue result;
        sink.Invoke(static_cast<std::int32_t>(row.DispId), Ole::DispatchMethod, {{event}, {}}, result);
        EXPECT_EQ(passed, event) << row.Name;
    }
}

TEST(WindowEventsTest, RefusesAnObjectThatIsNoEventObject) {
    THTMLWindowEvents2 sink;
    THtmlValue result;
    const TEventArguments arguments{{std::make_shared<TFakeObject>()}, {}};
    EXPECT_THROW(sink.Invoke(heOnFocus, Ole::DispatchMethod, arguments, result), EConvertError);
}

TEST(WindowEventsTest, ReadsAValueOfAnotherKindAsTheEmptyOne) {
    THTMLWindowEvents2 sink;
    bool empty = false;
    sink.onfocus = [&](TMSHTMLEventsBaseSink&, const THtmlHandle<IHTMLEventObj>& object) { empty = !object; };
    THtmlValue result;
    EXPECT_EQ(sink.Invoke(heOnFocus, Ole::DispatchMethod, {{7}, {}}, result), hsOk);
    EXPECT_TRUE(empty);
}

TEST(WindowEventsTest, RefusesACallWithTooFewArguments) {
    THTMLWindowEvents sink;
    THtmlValue result;
    EXPECT_THROW(sink.Invoke(errorId, Ole::DispatchMethod, {{1, u"url"}, {}}, result), EOleSysError);
}

struct TArgumentRow {
    const char* What;
    TEventArguments Arguments;
};

// The values stand last argument first; named ones are at the front.
const TArgumentRow argumentRows[] = {
    {"all by position", {{12, u"a.htm", u"Fault"}, {}}},
    {"all by name", {{u"a.htm", 12, u"Fault"}, {1, 2, 0}}},
    {"the last one by name", {{12, u"a.htm", u"Fault"}, {2}}},
    {"the last two by name", {{u"a.htm", 12, u"Fault"}, {1, 2}}},
};

TEST(WindowEventsTest, BringsArgumentsIntoTheOrderOfTheEvent) {
    for (const TArgumentRow& row : argumentRows) {
        THTMLWindowEvents sink;
        int calls = 0;
        sink.onerror = [&](TMSHTMLEventsBaseSink&, const std::u16string& description,
                           const std::u16string& url, std::int32_t line) {
            ++calls;
            EXPECT_EQ(description, u"Fault") << row.What;
            EXPECT_EQ(url, u"a.htm") << row.What;
            EXPECT_EQ(line, 12) << row.What;
        };
        THtmlValue result;
        EXPECT_EQ(sink.Invoke(errorId, Ole::DispatchMethod, row.Arguments, result), hsOk);
        EXPECT_EQ(calls, 1) << row.What;
    }
}

TEST(WindowEventsTest, RefusesANameThatTheCallHasNoPlaceFor) {
    for (const std::int32_t name : {3, -1}) {
        THTMLWindowEvents sink;
        THtmlValue result;
        const TEventArguments arguments{{12, u"a.htm", u"Fault"}, {name}};
        EXPECT_THROW(sink.Invoke(errorId, Ole::DispatchMethod, arguments, result), EOleSysError) << name;
    }
}

TEST(WindowEventsTest, AnswersWithTheHandlersWordBooleanAsABoolean) {
    THTMLWindowEvents sink;
    THtmlValue result;
    EXPECT_EQ(sink.Invoke(helpId, Ole::DispatchMethod, {}, result), hsOk);
    EXPECT_EQ(result, THtmlValue(false)) << "unbound";
    for (const WordBool answer : {WordBool(-1), WordBool(1), WordBool(0)}) {
        sink.onhelp = [&](TMSHTMLEventsBaseSink&) { return answer; };
        sink.Invoke(helpId, Ole::DispatchMethod, {}, result);
        EXPECT_EQ(result, THtmlValue(answer != 0)) << answer;
    }
    EXPECT_EQ(sink.Invoke(helpId, {}, 0, Ole::DispatchMethod, {}, nullptr, nullptr, nullptr), Ole::StatusOk);
}

TEST(WindowEventsTest, TakesNothingButCallsOfMethods) {
    THTMLWindowEvents sink;
    bool called = false;
    sink.onfocus = [&](TMSHTMLEventsBaseSink&) { called = true; };
    for (const std::uint16_t flags : {0, 2, 4, 8}) {
        THtmlValue result;
        try {
            sink.Invoke(heOnFocus, flags, {}, result);
            ADD_FAILURE() << flags;
        } catch (const Exception& error) {
            EXPECT_STREQ(error.what(), "THTMLWindowEvents only supports sinking of method calls!");
        }
    }
    EXPECT_FALSE(called);
    THtmlValue result;
    sink.Invoke(heOnFocus, Ole::DispatchMethod | 2, {}, result);
    EXPECT_TRUE(called);
}

struct TRaiseRow {
    std::function<void(TMSHTMLEventsBaseSink&)> Handler;
    std::int32_t Status;
};

TEST(WindowEventsTest, RaisesAgainWhatAHandlerRaises) {
    const TRaiseRow rows[] = {
        {[](TMSHTMLEventsBaseSink&) { throw EOleSysError("Locked.", Ole::StatusBadFormat); },
         Ole::StatusBadFormat},
        {[](TMSHTMLEventsBaseSink&) { throw EOleSysError("Locked.", 0); }, Ole::StatusUnexpected},
        {[](TMSHTMLEventsBaseSink&) { throw Exception("Locked."); }, Ole::StatusUnexpected},
    };
    for (const TRaiseRow& row : rows) {
        THTMLWindowEvents sink;
        sink.onblur = row.Handler;
        THtmlValue result;
        try {
            sink.Invoke(heOnBlur, Ole::DispatchMethod, {}, result);
            ADD_FAILURE() << row.Status;
        } catch (const EOleSysError& error) {
            EXPECT_STREQ(error.what(), "Locked.");
            EXPECT_EQ(error.ErrorCode(), row.Status);
        }
    }
}

TEST(WindowEventsTest, LetsAHandlerPutAnotherOneInItsPlace) {
    THTMLWindowEvents sink;
    const std::string text(100, 'x');
    std::vector<std::string> calls;
    sink.onfocus = [&sink, &calls, text](TMSHTMLEventsBaseSink&) {
        sink.onfocus = [&calls](TMSHTMLEventsBaseSink&) { calls.push_back("second"); };
        calls.push_back(text);
    };
    THtmlValue result;
    for (int i = 0; i < 2; ++i)
        sink.Invoke(heOnFocus, Ole::DispatchMethod, {}, result);
    EXPECT_THAT(calls, ElementsAre(text, "second"));
}

} // namespace
