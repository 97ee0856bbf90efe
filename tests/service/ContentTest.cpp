// Discussions, traces, glossaries, images: what stands around the requirements.
#include "ServiceFixture.h"
#include "support/TinyPicture.h"

#include <gmock/gmock.h>

using namespace testing;

namespace {

class ContentTest : public ServiceFixture {
public:
    Client FAnn = LoggedOn("ann");
    Client FBen = LoggedOn("ben");

    int Post(Client& client, const std::string& name, const std::string& body, int parent = 0) {
        wire::PostMessageRequest request;
        request.set_requirement_id(Id(name));
        request.set_parent_id(parent);
        request.set_subject("About it");
        request.set_body(body);
        return client.Call(&Stub::PostMessage, request).message().id();
    }

    std::vector<wire::DiscussionMessage> Discussion(Client& client, const std::string& name) {
        wire::GetDiscussionRequest request;
        request.set_requirement_id(Id(name));
        std::vector<wire::DiscussionMessage> messages;
        for (const auto& batch : client.Stream(&Stub::GetDiscussion, request))
            messages.insert(messages.end(), batch.messages().begin(), batch.messages().end());
        return messages;
    }

    bool Unread(Client& client, const std::string& name) {
        return client.Path(FCurrent, Id(name)).back().has_unread_messages();
    }

    grpc::Status Put(const std::string& image, wire::PutImageReply& reply) {
        constexpr std::size_t piece = 1'000'000;
        grpc::ClientContext context;
        context.AddMetadata("quorane-token-bin", FAnn.Token());
        auto writer = FAnn.FStub->PutImage(&context, &reply);
        wire::ImageChunk chunk;
        for (std::size_t at = 0; at < image.size(); at += piece) {
            chunk.set_data(image.substr(at, piece));
            writer->Write(chunk);
        }
        writer->WritesDone();
        return writer->Finish();
    }

    void MarkRead(Client& client, int message, bool read = true) {
        wire::MarkReadRequest request;
        request.set_message_id(message);
        request.set_read(read);
        client.Call(&Stub::MarkRead, request);
    }

    wire::CreateTraceRequest FileTrace(const std::string& key, bool away) {
        wire::CreateTraceRequest request;
        request.set_requirement_id(Id("Two"));
        request.set_away(away);
        request.mutable_external()->set_integration_name("Files");
        request.mutable_external()->set_external_key(key);
        return request;
    }
};

TEST_F(ContentTest, ADiscussionKeepsItsOrderAndItsReplies) {
    const int first = Post(FAnn, "Two", "first");
    const int reply = Post(FBen, "Two", "reply", first);
    for (int i = 0; i < 50; ++i)
        Post(FAnn, "Two", "more " + std::to_string(i));
    const auto messages = Discussion(FBen, "Two");
    ASSERT_EQ(messages.size(), 52U);
    EXPECT_EQ(messages[0].author_name(), "Ann Miller");
    EXPECT_EQ(messages[1].id(), reply);
    EXPECT_EQ(messages[1].parent_id(), first);
    EXPECT_EQ(messages[51].body(), "more 49");
    EXPECT_THAT(RefusalOf([&] { Post(FAnn, "One", "x", first); }), HasSubstr("another requirement"));
    EXPECT_THAT(Discussion(FAnn, "One"), IsEmpty());
}

TEST_F(ContentTest, UnreadIsPerUserAndEndsWithTheLastReadMessage) {
    const int one = Post(FAnn, "Two", "1"), two = Post(FAnn, "Two", "2");
    EXPECT_FALSE(Unread(FAnn, "Two"));
    EXPECT_TRUE(Unread(FBen, "Two"));
    EXPECT_FALSE(Unread(FBen, "One"));
    MarkRead(FBen, one);
    MarkRead(FBen, one);
    EXPECT_TRUE(Unread(FBen, "Two"));
    MarkRead(FBen, two);
    EXPECT_FALSE(Unread(FBen, "Two"));
    EXPECT_TRUE(Discussion(FBen, "Two")[1].read());
    MarkRead(FBen, one, false);
    EXPECT_TRUE(Unread(FBen, "Two"));
    EXPECT_TRUE(FBen.Children(FCurrent, FSrs)[1].has_unread_messages());
}

TEST_F(ContentTest, InterestIsPerUser) {
    wire::SetInterestRequest request;
    request.set_id(Id("Two"));
    request.set_interested(true);
    FAnn.Call(&Stub::SetInterest, request);
    EXPECT_TRUE(FAnn.Children(FCurrent, FSrs)[1].user_is_interested());
    EXPECT_FALSE(FBen.Children(FCurrent, FSrs)[1].user_is_interested());
    request.set_interested(false);
    FAnn.Call(&Stub::SetInterest, request);
    EXPECT_FALSE(FAnn.Path(FCurrent, Id("Two")).back().user_is_interested());
}

TEST_F(ContentTest, ATraceLeadsToAFileOrFromIt) {
    const auto away = FAnn.Call(&Stub::CreateTrace, FileTrace("/src/heat/main.cpp", true)).trace();
    EXPECT_EQ(away.to().external().name(), "main.cpp");
    EXPECT_EQ(away.to().external().location(), "/src/heat/main.cpp");
    EXPECT_EQ(away.from().requirement().name(), "Two");
    FAnn.Call(&Stub::CreateTrace, FileTrace("/src/heat/main.cpp", false));
    const auto traces = FAnn.Traces(Id("Two"));
    ASSERT_EQ(traces.traces_to_size(), 1);
    ASSERT_EQ(traces.traces_from_size(), 2);
    EXPECT_EQ(traces.traces_from(1).from().external().id(), away.to().external().id());
    EXPECT_EQ(traces.traces_from(0).from().requirement().requirement_type_tag(), "SRS");
    wire::RemoveTraceRequest remove;
    remove.set_id(away.id());
    FBen.Call(&Stub::RemoveTrace, remove);
    EXPECT_EQ(FAnn.Traces(Id("Two")).traces_to_size(), 0);
}

TEST_F(ContentTest, ATraceThatMakesNoSenseIsRefused) {
    FAnn.Call(&Stub::CreateTrace, FileTrace("a.cpp", true));
    const auto refusal = [&](const wire::CreateTraceRequest& request) {
        return RefusalOf([&] { FAnn.Call(&Stub::CreateTrace, request); });
    };
    EXPECT_THAT(refusal(FileTrace("a.cpp", true)), HasSubstr("such a trace already"));
    EXPECT_THAT(refusal(FileTrace("", true)), HasSubstr("key is empty"));
    auto request = FileTrace("b.cpp", true);
    request.mutable_external()->set_integration_name("Nobody's");
    EXPECT_THAT(refusal(request), HasSubstr("no integration Nobody's"));
    request.set_other_requirement_id(Id("Two"));
    EXPECT_THAT(refusal(request), HasSubstr("traced to itself"));
    request.set_other_requirement_id(999999);
    EXPECT_THAT(refusal(request), StartsWith("ObjectNotFoundException"));
    EXPECT_EQ(FAnn.Traces(Id("Two")).traces_to_size(), 1);
}

TEST_F(ContentTest, AnIntegrationIsSavedOnceUnderItsName) {
    wire::SaveIntegrationRequest request;
    request.mutable_integration()->set_name("Tool");
    request.mutable_integration()->set_icon(std::string(768, 'i'));
    const int id = FAnn.Call(&Stub::SaveIntegration, request).id();
    EXPECT_THAT(RefusalOf([&] { FBen.Call(&Stub::SaveIntegration, request); }), HasSubstr("already"));
    request.mutable_integration()->set_id(id);
    request.mutable_integration()->set_library_name("libtool");
    FBen.Call(&Stub::SaveIntegration, request);
    const auto list = FAnn.Call(&Stub::ListIntegrations, wire::ListIntegrationsRequest());
    ASSERT_EQ(list.integrations_size(), 2);
    EXPECT_EQ(list.integrations(1).library_name(), "libtool");
    request.mutable_integration()->set_icon("too small");
    EXPECT_THAT(RefusalOf([&] { FBen.Call(&Stub::SaveIntegration, request); }), HasSubstr("16 x 16"));
}

TEST_F(ContentTest, ALargeImageGoesThereAndBackInPieces) {
    std::string data(5'000'000, '\0');
    for (std::size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<char>(i * 7 >> 3);
    data = TinyPicture(data);
    wire::PutImageReply reply;
    ASSERT_TRUE(Put(data, reply).ok());
    wire::GetImageRequest request;
    request.set_hash(reply.hash());
    const auto chunks = FBen.Stream(&Stub::GetImage, request);
    std::string back;
    for (const wire::ImageChunk& piece : chunks)
        back += piece.data();
    EXPECT_EQ(chunks[0].media_type(), "image/gif");
    EXPECT_TRUE(back == data);
    request.set_hash(std::string(64, '0'));
    EXPECT_THAT(RefusalOf([&] { FBen.Stream(&Stub::GetImage, request); }),
                StartsWith("ObjectNotFoundException"));
}

TEST_F(ContentTest, WhatIsNoImageIsRefused) {
    const auto refusal = [&](const std::string& bytes) {
        wire::PutImageReply reply;
        return Put(bytes, reply).error_message();
    };
    EXPECT_THAT(refusal(""), HasSubstr("empty or larger than 16777216 bytes"));
    EXPECT_THAT(refusal(TinyPicture(std::string(16 << 20, 'x'))), HasSubstr("larger than 16777216 bytes"));
    for (const char* bytes : {"GIF", "<svg/>", "RIFF1234WAVE", "RIFFWEBP"})
        EXPECT_THAT(refusal(bytes), HasSubstr("no PNG, JPEG, GIF or WebP picture")) << bytes;
    for (const char* bytes : {"\x89PNG\r\n\x1A\n", "\xFF\xD8\xFF\xE0", "GIF87a", "RIFF1234WEBP"})
        EXPECT_EQ(refusal(bytes), "") << bytes;
}

} // namespace
