// Writes many objects into a requirements database in one transaction: the sample
// projects, an import, a big project for a benchmark. It keeps the rules that a
// client's saves are held to (lengths, bounds, list positions, well-formed
// descriptions, valid UTF-8), but takes no locks and asks for no rights: who calls
// it owns the file.
//
// Every operation raises RuleViolation, with a sentence naming the object, when
// what it is given breaks a rule; nothing was written by that call then, and the
// writer can go on. It raises StoreError when the file fails; the transaction
// is lost then, and the writer must be thrown away.
#pragma once

#include "backend/rules/Changes.h"
#include "backend/rules/Refusal.h"
#include "backend/store/Database.h"
#include "backend/store/Model.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Backend {

struct NewUser {
    std::string UserName;
    std::string Name; // empty: as the user name
    std::string Password;
    bool Disabled = false;
    bool MustChangePassword = false;
    bool Administrator = false;
};

struct NewProject {
    std::string Name;
    std::string Description;
    std::string BaselineName = "Current";
    std::vector<ObjectId> Groups = {}; // whose members can be made responsible
};

// Attributes' ids are given by the writer; those in the argument are not looked at.
struct NewRequirementType {
    std::string Name;
    std::string Tag;
    std::string Description;
    std::vector<std::string> StatusEntries = {"Draft", "Review", "Accepted", "Rejected"};
    std::vector<std::string> PriorityEntries = {"Low", "Medium", "High"};
};

struct NewMessage {
    ObjectId RequirementId = 0;
    ObjectId ParentId = 0; // the message that it answers
    std::string Subject;
    std::string Body;
    ObjectId AuthorId = 0;
    Instant Date = 0;
};

class BulkWriter {
public:
    // Opens the database of that path, makes it when there is none, and begins the
    // transaction. Raises StoreError. QuickHashes makes password hashes that cost
    // next to nothing; tests alone want that.
    enum class Hashing { Secure, QuickForTests };
    explicit BulkWriter(const std::string& path, Hashing hashing = Hashing::Secure);
    // Drops everything that was not committed.
    ~BulkWriter();

    // Refuses to let the file grow beyond so many pages, as a full disk does.
    void LimitPages(int pages);

    // Called after every so many requirements with the number written so far. An
    // exception from it leaves the writing operation.
    void OnProgress(std::int64_t every, std::function<void(std::int64_t written)> handler);

    ObjectId AddUser(const NewUser& user);
    ObjectId AddGroup(const std::string& name, const std::vector<ObjectId>& members);
    ObjectId AddProject(const NewProject& project);
    // To a user or a group.
    void Grant(ObjectId projectId, ObjectId userOrGroupId, Role role);

    ObjectId AddRequirementType(ObjectId projectId, const NewRequirementType& type);
    // Icon: empty, or 768 bytes, 16 x 16 pixels of red, green, blue.
    ObjectId AddCustomTab(ObjectId typeId, const std::string& name, const std::string& icon);
    // On a custom tab. The default value is part of the attribute.
    ObjectId AddAttribute(ObjectId tabId, const Attribute& attribute);

    // Version 1.0, with one history revision without changes.
    ObjectId AddRequirement(const NewRequirement& requirement, const Revision& revision);
    // The next version, with one history change for each attribute that really
    // changes; traces of the requirement become suspect. Gives false, and writes
    // nothing, when nothing changes.
    bool AddRevision(ObjectId requirementId, const RequirementChange& change, const Revision& revision);

    ObjectId AddMessage(const NewMessage& message);
    void MarkRead(ObjectId userId, ObjectId messageId);
    void SetInterest(ObjectId userId, ObjectId requirementId, bool interested);

    ObjectId AddIntegration(const Integration& integration);
    ObjectId AddTrace(ObjectId fromRequirementId, ObjectId toRequirementId, bool suspect);
    // To or from an object of an integration, which is made when it is new. Away:
    // the trace starts at the requirement.
    ObjectId AddExternalTrace(ObjectId requirementId, bool away, const ExternalObject& object, bool suspect);

    // Terms' ids are given by the writer.
    ObjectId AddGlossary(ObjectId projectId, const Glossary& glossary);

    // Gives the SHA-256 in hexadecimal digits, by which a description names the
    // image: <img src_original="HASH" src="HASH" />.
    std::string AddImage(std::string_view bytes);

    // A frozen copy of the current baseline as it is now.
    ObjectId FreezeBaseline(ObjectId projectId, const std::string& name, const std::string& description,
                            Instant date);
    // It stays listed, typed as deleted.
    void DeleteBaseline(ObjectId baselineId);

    // 0 when there is none.
    ObjectId FindUser(const std::string& userName);
    // The one that was added first.
    ObjectId FindAdministrator();
    ObjectId FindGroup(const std::string& name);
    ObjectId FindProject(const std::string& name);
    ObjectId FindRequirementType(ObjectId projectId, const std::string& name);
    // The attributes of a type's custom tabs by name.
    std::map<std::string, ObjectId> Attributes(ObjectId typeId);

    // Requirements as they are now, by their own value of a text attribute.
    std::vector<std::pair<std::string, ObjectId>> FindByText(ObjectId projectId, ObjectId attributeId);
    // The display name of the user who is editing the requirement at that time; empty
    // when nobody is. Revisions are written over a lock, so who shares the database
    // with clients asks first.
    std::string LockedBy(ObjectId requirementId, Instant now);

    // Makes everything lasting; the writer can be used no more. Raises StoreError,
    // and then nothing was written.
    void Commit();

private:
    struct State;
    std::unique_ptr<State> FState;
};

} // namespace Backend
