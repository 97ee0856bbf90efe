// How a sink finds its source, leaves it, and what it tells of itself.
#include <gtest/gtest.h>

#include "FakeSource.h"
#include "contracts/Exceptions.h"
#include "description/MSHTMLEvents.h"

namespace {

std::shared_ptr<TFakeSource> Window() {
    return std::make_shared<TFakeSource>(HTMLWindowEventsId);
}

TEST(ConnectionTest, BringsTheEventsOfTheSourceToTheHandlers) {
    const auto source = Window();
    THTMLWindowEvents sink;
    int focused = 0;
    sink.onfocus = [&](TMSHTMLEventsBaseSink&) { ++focused; };
    sink.Connect(source);
    ASSERT_EQ(source->Point->Sinks.size(), 1U);
    THtmlValue result;
    EXPECT_EQ(source->Point->Sinks.begin()->second->Invoke(heOnFocus, 1, {}, result), hsOk);
    EXPECT_EQ(focused, 1);
}

TEST(ConnectionTest, LeavesTheLastSourceForTheNext) {
    const auto first = Window();
    const auto second = Window();
    THTMLWindowEvents sink;
    for (const auto& source : {first, second, second})
        sink.Connect(source);
    EXPECT_TRUE(first->Point->Sinks.empty());
    EXPECT_EQ(second->Point->Sinks.size(), 1U);
    EXPECT_EQ(first.use_count(), 1) << "the first source is still held";
}

TEST(ConnectionTest, LeavesItsSourceWhenItGoes) {
    const auto source = Window();
    { // The sink's life.
        THTMLWindowEvents sink;
        sink.Connect(source);
    }
    EXPECT_TRUE(source->Point->Sinks.empty());
    EXPECT_EQ(source.use_count(), 1);
}

TEST(ConnectionTest, SwallowsTheFailureOfASourceThatIsGone) {
    const auto source = Window();
    source->Point->UnadviseRaises = true;
    THTMLWindowEvents sink;
    sink.Connect(source);
    sink.Disconnect();
    EXPECT_FALSE(sink.Connected());
    const auto next = Window();
    sink.Connect(next);
    EXPECT_EQ(next->Point->Sinks.size(), 1U);
}

struct TRefusalRow {
    const char* What;
    THtmlHandle<IHtmlObject> Source;
    const char* Reason;
};

TEST(ConnectionTest, TellsWhyItCannotConnectAndStaysUnconnected) {
    const auto refusing = Window();
    refusing->Point->AdviseStatus = static_cast<THtmlStatus>(0x80040201);
    const TRefusalRow rows[] = {
        {"no source", nullptr, "Interface not supported"},
        {"no events", std::make_shared<TFakeObject>(), "Interface not supported"},
        {"other events", std::make_shared<TFakeSource>(Ole::DispatchId), "Unspecified error"},
        {"refuses", refusing, "OLE error 80040201"},
    };
    for (const TRefusalRow& row : rows) {
        const auto last = Window();
        THTMLWindowEvents sink(nullptr, "sinkWindow");
        sink.Connect(last);
        try {
            sink.Connect(row.Source);
            ADD_FAILURE() << row.What;
        } catch (const Exception& error) {
            EXPECT_EQ(error.what(), std::string("Unable to connect sinkWindow.\r") + row.Reason) << row.What;
        }
        EXPECT_FALSE(sink.Connected()) << row.What;
        EXPECT_TRUE(last->Point->Sinks.empty()) << row.What;
        EXPECT_EQ(refusing->Point.use_count(), 1) << "the connection point is still held";
        sink.Connect(last);
        EXPECT_TRUE(sink.Connected()) << row.What;
    }
}

TEST(ConnectionTest, GivesOutItsDispatchInterfaceForItsEvents) {
    THTMLWindowEvents sink;
    void* const dispatch = static_cast<Ole::IDispatch*>(&sink);
    const std::pair<const char*, void*> rows[] = {
        {HTMLWindowEventsId, dispatch},
        {Ole::DispatchId, dispatch},
        {Ole::UnknownId, static_cast<Ole::IUnknown*>(&sink)},
        {"{3050F625-98B5-11CF-BB82-00AA00BDCE0B}", nullptr},
    };
    for (const auto& [iid, expected] : rows) {
        void* object = &sink;
        EXPECT_EQ(sink.QueryInterface(iid, object), expected ? Ole::StatusOk : Ole::StatusNoInterface) << iid;
        EXPECT_EQ(object, expected) << iid;
    }
    EXPECT_EQ(sink._AddRef(), 2);
    EXPECT_EQ(sink._Release(), 1);
}

TEST(ConnectionTest, HasNoTypeInformation) {
    THTMLWindowEvents sink;
    std::int32_t count = 7;
    std::vector<std::int32_t> dispIds;
    auto* info = reinterpret_cast<Ole::ITypeInfo*>(&count);
    EXPECT_EQ(sink.GetTypeInfoCount(count), Ole::StatusNotImplemented);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(sink.GetTypeInfo(0, 0, info), Ole::StatusNotImplemented);
    EXPECT_EQ(info, nullptr);
    EXPECT_EQ(sink.GetIDsOfNames({}, {u"onfocus"}, 0, dispIds), Ole::StatusNotImplemented);
}

} // namespace
