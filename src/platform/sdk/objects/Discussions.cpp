#include "platform/sdk/objects/Make.h"

namespace Sdk {

namespace {

using TDiscussionHandle = std::shared_ptr<TDiscussionData>;

Handle<IDiscussionMessage> MakeMessage(const TSessionHandle& session, const TDiscussionHandle& discussion,
                                       std::size_t position);

// In the server's order, those that answer that message; 0: those at the top.
Handle<IStCollection> Answers(const TSessionHandle& session, const TDiscussionHandle& discussion,
                              std::int32_t messageId) {
    std::vector<Variant> messages;
    for (std::size_t i = 0; i < discussion->Messages.size(); ++i)
        if (discussion->Messages[i].parent_id() == messageId)
            messages.emplace_back(MakeMessage(session, discussion, i));
    return MakeCollection(std::move(messages));
}

Handle<IDiscussionMessage> Post(const TSessionHandle& session, const TDiscussionHandle& discussion,
                                std::int32_t parentId, const std::u16string& subject,
                                const std::u16string& body) {
    session->Post(*discussion, parentId, Utf8(subject), Utf8(body));
    return MakeMessage(session, discussion, discussion->Messages.size() - 1);
}

class TMessage final : public IDiscussionMessage {
public:
    TMessage(TSessionHandle session, TDiscussionHandle discussion, std::size_t position)
        : FSession(std::move(session))
        , FDiscussion(std::move(discussion))
        , FPosition(position) {}

    Handle<IDiscussionMessage> reply(const std::u16string& subject, const std::u16string& body) override {
        const TCall call("IDiscussionMessage.reply");
        return Post(FSession, FDiscussion, Message().id(), subject, body);
    }

    std::u16string Get_Body() override {
        const TCall call("IDiscussionMessage.Get_Body");
        return Wide(Message().body());
    }

    Handle<IUser> Get_Author() override {
        const TCall call("IDiscussionMessage.Get_Author");
        if (const auto user = MakeUser(FSession, Message().author_id())) return user;
        // Somebody who has left: the message still tells the name.
        auto named = std::make_shared<wire::User>();
        named->set_id(Message().author_id());
        named->set_name(Message().author_name());
        return MakeUser(FSession, named);
    }

    double Get_Date() override {
        const TCall call("IDiscussionMessage.Get_Date");
        return LocalDate(Message().date());
    }

    void Set_Read(WordBool read) override {
        const TCall call("IDiscussionMessage.Set_Read");
        FSession->MarkRead(Message().id(), read != WordFalse);
        Message().set_read(read != WordFalse);
    }

    WordBool Get_Read() override {
        const TCall call("IDiscussionMessage.Get_Read");
        return ToWordBool(Message().read());
    }

    Handle<IStCollection> Get_Replies() override {
        const TCall call("IDiscussionMessage.Get_Replies");
        return Answers(FSession, FDiscussion, Message().id());
    }

    std::u16string Get_Subject() override {
        const TCall call("IDiscussionMessage.Get_Subject");
        return Wide(Message().subject());
    }

private:
    wire::DiscussionMessage& Message() const { return FDiscussion->Messages[FPosition]; }

    const TSessionHandle FSession;
    const TDiscussionHandle FDiscussion;
    const std::size_t FPosition;
};

class TDiscussion final : public TObject<IDiscussion> {
public:
    TDiscussion(const TSessionHandle& session, std::int32_t requirementId)
        : TObject(session, requirementId, "discussion", ECache::Discussions) {}

    Handle<IDiscussionMessage> post(const std::u16string& subject, const std::u16string& body) override {
        const TCall call("IDiscussion.post");
        return Post(FSession, FSession->Discussion(Number()), 0, subject, body);
    }

    Handle<IStCollection> Get_Messages() override {
        const TCall call("IDiscussion.Get_Messages");
        return Answers(FSession, FSession->Discussion(Number()), 0);
    }

protected:
    std::string ReadName() override { return FSession->LatestRequirement(Number())->Snapshot->name(); }
};

Handle<IDiscussionMessage> MakeMessage(const TSessionHandle& session, const TDiscussionHandle& discussion,
                                       std::size_t position) {
    return std::make_shared<TMessage>(session, discussion, position);
}

} // namespace

Handle<IDiscussion> MakeDiscussion(const TSessionHandle& session, std::int32_t requirementId) {
    return std::make_shared<TDiscussion>(session, requirementId);
}

} // namespace Sdk
