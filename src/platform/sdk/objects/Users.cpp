#include "platform/sdk/objects/Make.h"

#include <algorithm>

namespace Sdk {

namespace {

template<class Interface> class TUser : public TLockableObject<Interface> {
public:
    TUser(const TSessionHandle& session, std::shared_ptr<const wire::User> user)
        : TLockableObject<Interface>(session, user->id(), "user", ECache::Directory)
        , FUser(std::move(user)) {}

    Handle<IUserID> Get_UserID() override {
        const TCall call("IUser.Get_UserID");
        return MakeIdentity<IUserID>(FUser->id());
    }

    // The text under which lists show the user, so that a caller finds the owner in a
    // list of users; the name for the logon is nobody's business but its owner's.
    std::u16string Get_UserName() override {
        const TCall call("IUser.Get_UserName");
        return Wide(FUser->name());
    }

protected:
    std::string ReadName() override { return FUser->name(); }

private:
    const std::shared_ptr<const wire::User> FUser;
};

class TGroup final : public TLockableObject<IGroup> {
public:
    TGroup(const TSessionHandle& session, std::shared_ptr<const wire::Group> group)
        : TLockableObject(session, group->id(), "group", ECache::Directory)
        , FGroup(std::move(group)) {}

    Handle<IStCollection> Get_Users() override {
        const TCall call("IGroup.Get_Users");
        std::vector<Variant> users;
        for (const std::int32_t id : FGroup->user_ids())
            if (const auto user = MakeUser(FSession, id)) users.emplace_back(user);
        return MakeCollection(std::move(users));
    }

protected:
    std::string ReadName() override { return FGroup->name(); }

private:
    const std::shared_ptr<const wire::Group> FGroup;
};

class TAssignment final : public IProjectGroupMemberAssignment, public TDataHolder<wire::Assignment> {
public:
    TAssignment(TSessionHandle session, std::shared_ptr<wire::Assignment> assignment)
        : TDataHolder(std::move(assignment))
        , FSession(std::move(session)) {}

    void removeUser(const Handle<IUser>& user) override {
        const TCall call("IGroupMemberAssignment.removeUser");
        auto& ids = *HeldData()->mutable_user_ids();
        ids.erase(std::remove(ids.begin(), ids.end(), NumberOf(user)), ids.end());
    }

    WordBool isUserAssigned(const Handle<IUserID>& user) override {
        const TCall call("IGroupMemberAssignment.isUserAssigned");
        return ToWordBool(Has(NumberOf(user)));
    }

    void addUser(const Handle<IUser>& user) override {
        const TCall call("IGroupMemberAssignment.addUser");
        const std::int32_t id = NumberOf(user);
        if (!Has(id)) HeldData()->add_user_ids(id);
    }

    Handle<IStCollection> Get_AssignedUsers() override {
        const TCall call("IGroupMemberAssignment.Get_AssignedUsers");
        std::vector<Variant> users;
        for (const std::int32_t id : HeldData()->user_ids())
            if (const auto user = MakeUser(FSession, id)) users.emplace_back(user);
        return MakeCollection(std::move(users));
    }

    Handle<IGroup> Get_Group() override {
        const TCall call("IGroupMemberAssignment.Get_Group");
        return MakeGroup(FSession, HeldData()->group_id());
    }

private:
    bool Has(std::int32_t id) const {
        const auto& ids = HeldData()->user_ids();
        return std::find(ids.begin(), ids.end(), id) != ids.end();
    }

    const TSessionHandle FSession;
};

} // namespace

Handle<IUser> MakeUser(const TSessionHandle& session, std::int32_t id) {
    const auto directory = session->Directory();
    const wire::User* user = directory->FindUser(id);
    if (!user) return nullptr;
    return MakeUser(session, std::shared_ptr<const wire::User>(directory, user));
}

Handle<IUser> MakeUser(const TSessionHandle& session, std::shared_ptr<const wire::User> user) {
    if (user->id() == session->UserId())
        return std::make_shared<TUser<ICurrentUser>>(session, std::move(user));
    return std::make_shared<TUser<IUser>>(session, std::move(user));
}

Handle<IGroup> MakeGroup(const TSessionHandle& session, std::int32_t id) {
    const auto directory = session->Directory();
    const wire::Group* group = directory->FindGroup(id);
    if (!group) return nullptr;
    return MakeGroup(session, std::shared_ptr<const wire::Group>(directory, group));
}

Handle<IGroup> MakeGroup(const TSessionHandle& session, std::shared_ptr<const wire::Group> group) {
    return std::make_shared<TGroup>(session, std::move(group));
}

Handle<IDispatch> MakeAssignment(const TSessionHandle& session,
                                 std::shared_ptr<wire::Assignment> assignment) {
    return std::make_shared<TAssignment>(session, std::move(assignment));
}

} // namespace Sdk
