#include "backend/rules/Images.h"
#include "backend/rules/Rules.h"
#include "backend/service/RequirementsServer.h"
#include "backend/service/Wire.h"

namespace Backend {

namespace {

// Messages hold texts of some size each.
constexpr int MessagesPerBatch = 20;
constexpr std::size_t ChunkBytes = 256 * 1024;
constexpr std::size_t HashLength = 64;

void ToWire(const Message& from, wire::DiscussionMessage& message) {
    message.set_id(from.Id);
    message.set_parent_id(from.ParentId);
    message.set_subject(from.Subject);
    message.set_body(from.Body);
    message.set_author_id(from.AuthorId);
    message.set_author_name(from.AuthorName);
    message.set_date(from.Date);
    message.set_read(from.Read);
}

Message FindMessage(Connection& connection, const Caller& caller, ObjectId messageId) {
    if (auto message = connection.Discussions.Find(messageId, caller.UserId)) return *message;
    throw Refusal(Refusal::Reason::NotFound, "ObjectNotFoundException",
                  "There is no message " + std::to_string(messageId) + ".");
}

} // namespace

grpc::Status RequirementsServer::GetDiscussion(Context* context, const wire::GetDiscussionRequest* request,
                                               grpc::ServerWriter<wire::DiscussionBatch>* writer) {
    std::vector<Message> messages;
    const Status status = Read(*context, [&](Connection& connection, const Caller& caller) {
        DemandRole(connection, caller, connection.Requirements.ProjectOf(request->requirement_id()),
                   Role::Reader);
        messages = connection.Discussions.ReadAll(request->requirement_id(), caller.UserId);
    });
    wire::DiscussionBatch batch;
    for (const Message& message : messages) {
        ToWire(message, *batch.add_messages());
        if (batch.messages_size() < MessagesPerBatch && &message != &messages.back()) continue;
        if (!writer->Write(batch)) break;
        batch.Clear();
    }
    return status;
}

grpc::Status RequirementsServer::PostMessage(Context* context, const wire::PostMessageRequest* request,
                                             wire::PostMessageReply* reply) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        CurrentPlace(connection, caller, request->requirement_id(), Role::Discusser);
        CheckText("The subject", request->subject(), MaxRequirementName);
        CheckText("The message", request->body(), MaxTextLength);
        if (request->parent_id() != 0 &&
            FindMessage(connection, caller, request->parent_id()).RequirementId != request->requirement_id())
            throw RuleViolation("The message to answer belongs to another requirement.");
        Message message{connection.Numbers.Next(),
                        request->requirement_id(),
                        request->parent_id(),
                        request->subject(),
                        request->body(),
                        caller.UserId,
                        connection.Accounts.NameOf(caller.UserId),
                        FSessions.Now(),
                        true};
        connection.Discussions.Add(message);
        ToWire(message, *reply->mutable_message());
    });
}

grpc::Status RequirementsServer::MarkRead(Context* context, const wire::MarkReadRequest* request,
                                          wire::MarkReadReply*) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        const Message message = FindMessage(connection, caller, request->message_id());
        DemandRole(connection, caller, connection.Requirements.ProjectOf(message.RequirementId),
                   Role::Reader);
        connection.Discussions.MarkRead(message.Id, message.RequirementId, caller.UserId, request->read());
    });
}

grpc::Status RequirementsServer::GetImage(Context* context, const wire::GetImageRequest* request,
                                          grpc::ServerWriter<wire::ImageChunk>* writer) {
    std::optional<Image> image;
    const Status status = Read(*context, [&](Connection& connection, const Caller&) {
        if (request->hash().size() == HashLength) image = connection.Images.Read(request->hash());
        if (!image)
            throw Refusal(Refusal::Reason::NotFound, "ObjectNotFoundException", "There is no such image.");
    });
    for (std::size_t at = 0; image && at < image->Data.size(); at += ChunkBytes) {
        wire::ImageChunk chunk;
        if (at == 0) chunk.set_media_type(image->MediaType);
        chunk.set_data(image->Data.substr(at, ChunkBytes));
        if (!writer->Write(chunk)) break;
    }
    return status;
}

grpc::Status RequirementsServer::PutImage(Context* context, grpc::ServerReader<wire::ImageChunk>* reader,
                                          wire::PutImageReply* reply) {
    // The right is checked before anything is taken in.
    const Status allowed = Read(*context, [&](Connection& connection, const Caller& caller) {
        DemandAnyRole(connection, caller, Role::Editor);
    });
    if (!allowed.ok()) return allowed;
    std::string bytes;
    wire::ImageChunk chunk;
    while (bytes.size() <= MaxPictureBytes && reader->Read(&chunk))
        bytes += chunk.data();
    return Write(*context, [&](Connection& connection, const Caller&) {
        reply->set_hash(KeepImage(connection, bytes));
    });
}

} // namespace Backend
