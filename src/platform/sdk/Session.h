// One logon: the connection under its token, the locks it holds, and the cache of
// what was read. Everything that an SDK object asks the server for goes through
// here, so that how many round trips something costs is decided in one place.
#pragma once

#include "contracts/Pictures.h"
#include "platform/sdk/Cache.h"
#include "platform/sdk/ImageCache.h"
#include "platform/sdk/TreeData.h"

#include <map>
#include <memory>
#include <string>
#include <utility>

namespace Quorane_TLB {
class IStCollection;
}

namespace Sdk {

class TConnection;
class TLeaseKeeper;

// What a manager's cache holds.
enum class ECache { Requirements, Discussions, Projects, RequirementTypes, Glossaries, Directory, None };

// A project's glossaries, and the list of them that was given out last: whoever still
// holds it gets the same one, which tells him that nothing has changed.
struct TGlossaries {
    std::shared_ptr<const wire::GetGlossariesReply> Reply;
    std::weak_ptr<Quorane_TLB::IStCollection> List;
};

// Used on one thread. Each operation raises EOleSysError when the server refuses or
// cannot be reached; what was known before stays known then.
class TSession : public std::enable_shared_from_this<TSession> {
public:
    // Logs on. The server's refusal carries its class name.
    static std::shared_ptr<TSession> LogOn(std::shared_ptr<TConnection> connection, const std::string& user,
                                           const std::string& password);

    ~TSession();

    // The session is over for this object also when the server cannot be told.
    void LogOut();

    // Raises the failure of a lost connection after LogOut.
    TConnection& Connection();
    std::int32_t UserId() const { return FUserId; }
    const std::string& ServerVersion() const { return FServerVersion; }
    const TImageCache& Images() const { return FImages; }
    // Forgets what that cache holds, with what was written and not saved.
    void Clear(ECache cache);

    // Users and groups: no round trip but for the first, as every reading of a
    // requirement brings what is newer.
    std::shared_ptr<const TDirectory> Directory();
    // Those of the last reading; reads when there was none.
    std::shared_ptr<const TProjects> Projects();
    std::shared_ptr<const TProjects> ReadProjects();
    // The one that holds the baseline or bears the number itself; empty when none
    // that the user sees does.
    std::shared_ptr<const wire::Project> FindProject(std::int32_t id);
    std::shared_ptr<const wire::Project> FindProjectOfBaseline(std::int32_t baselineId);

    // As known when it has that revision, else read. Revision 0 asks the server
    // whether what is known is the newest.
    std::shared_ptr<const wire::RequirementType> RequirementType(std::int32_t id, std::int64_t revision);
    TGlossaries& Glossaries(std::int32_t projectId);
    std::shared_ptr<const wire::ListIntegrationsReply> Integrations();
    std::shared_ptr<const wire::ListIntegrationsReply> ReadIntegrations();

    std::shared_ptr<TTreeData> Tree(std::int32_t baselineId);

    // The newest version. While this session holds its lock, the requirement with
    // what was written to it, without a round trip; else what the server has now,
    // and what was written and not saved is gone.
    std::shared_ptr<TRequirementState> LatestRequirement(std::int32_t id);
    // The version that the baseline holds.
    std::shared_ptr<TRequirementState> RequirementIn(std::int32_t id, std::int32_t baselineId);
    std::shared_ptr<TRequirementState> CreateRequirement(const wire::CreateRequirementRequest& request);
    // Everything written to it; it stays locked. One that this client has made and
    // not locked is locked for as long as it takes.
    void Save(TRequirementState& requirement, const std::string& comment);
    // With everything below it.
    void RemoveRequirement(std::int32_t id);
    // The newest revision first.
    std::vector<wire::HistoryRevision> History(std::int32_t id, std::int32_t baselineId);

    void Lock(std::int32_t id);
    // The same for a requirement that was read before: refused when somebody has
    // changed it since, because a save would undo that change. While the lock is
    // held, this state is the newest version.
    void Lock(const std::shared_ptr<TRequirementState>& requirement);
    void Unlock(std::int32_t id);
    bool HoldsLock(std::int32_t id);

    std::shared_ptr<TDiscussionData> Discussion(std::int32_t requirementId);
    // Adds the new message behind the others. ParentId 0: at the top.
    void Post(TDiscussionData& discussion, std::int32_t parentId, const std::string& subject,
              const std::string& body);
    void MarkRead(std::int32_t messageId, bool read);

    // Both lists come in one round trip. The one that is not asked for first is kept
    // for the next question, and for that one alone.
    std::vector<wire::Trace> TracesOf(std::int32_t id, std::int32_t baselineId, bool away);
    wire::Trace CreateTrace(const wire::CreateTraceRequest& request);
    void SaveTrace(const wire::Trace& trace);
    void RemoveTrace(std::int32_t id);
    // Gives the integration's number.
    std::int32_t SaveIntegration(const wire::Integration& integration);

private:
    TSession(std::shared_ptr<TConnection> connection, const wire::LoginReply& reply);

    void TakeDirectory(wire::Directory&& directory);
    void ForgetTrees();
    std::int64_t KnownDirectory() const { return FDirectory ? FDirectory->Data().revision() : 0; }
    std::shared_ptr<TRequirementState> ReadRequirement(wire::GetRequirementRequest& request,
                                                       const TRequirementState* known);
    wire::SaveRequirementReply SendSave(const wire::SaveRequirementRequest& request);
    [[noreturn]] void RaiseChangedMeanwhile(TRequirementState& outdated);

    const std::shared_ptr<TConnection> FConnection;
    const std::int32_t FUserId;
    const std::string FServerVersion;
    const TImageCache FImages{PictureCacheFolder()};
    std::unique_ptr<TLeaseKeeper> FLeases;
    bool FLoggedOut = false;

    std::shared_ptr<const TDirectory> FDirectory;
    std::shared_ptr<const TProjects> FProjects;
    std::shared_ptr<const wire::ListIntegrationsReply> FIntegrations;
    std::map<std::int32_t, std::shared_ptr<const wire::RequirementType>> FTypes;
    std::map<std::int32_t, TGlossaries> FGlossaries;
    std::map<std::int32_t, std::shared_ptr<TTreeData>> FTrees;
    std::map<std::int32_t, std::shared_ptr<TRequirementState>> FLatest;
    std::map<std::pair<std::int32_t, std::int32_t>, std::shared_ptr<TRequirementState>> FFrozen;
    std::map<std::int32_t, std::shared_ptr<TDiscussionData>> FDiscussions;

    struct TTraceLists {
        std::int32_t Id = 0;
        std::int32_t BaselineId = 0;
        bool Away = false;
        std::vector<wire::Trace> Traces;
    };
    TTraceLists FOtherTraces;
};

} // namespace Sdk
