// The one object through which the panel talks to the requirements server: it logs
// on and off, keeps the logon data in memory for a fresh logon, and looks things up.
//
// Used from the user-interface thread alone; a server operation blocks it. Every
// operation raises EOleSysError when the SDK or the server refuses, unless told.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "server/UGlossaryIndex.h"
#include "server/UQuoraneStHelpers.h"

class TQuoraneSession {
public:
    // Not logged in. Takes a temporary file name for the description on show.
    TQuoraneSession();
    // Logs out and deletes the description file; nothing escapes.
    ~TQuoraneSession();
    TQuoraneSession(const TQuoraneSession&) = delete;
    TQuoraneSession& operator=(const TQuoraneSession&) = delete;

    // Raises Exception with a sentence for the user when the server refuses the logon,
    // and what the SDK raises when the server object can't be made. The logon data and
    // the logged-in state are then as before; GetQuoraneServer gives the new server.
    void Login(const std::string& host, const std::string& user, const std::string& password);
    // Ends in the logged-out state even when the server is gone; raises nothing. Keeps
    // the logon data.
    void Logout();
    void Relogin();
    // A fresh session, and so a fresh view of the server. Every object of the old
    // session is stale afterwards. Not logged in after a failure.
    void RefreshSession();
    bool IsLoggedIn() const { return FLoggedIn; }
    // Logs on again when a logged-in object has lost its handle. Empty before the first
    // logon and after Logout.
    Quorane_TLB::Handle<Quorane_TLB::ISession> GetQuoraneSession();
    // The server of the latest Login, which Logout leaves in place. May be empty.
    const Quorane_TLB::Handle<Quorane_TLB::IQuoraneServer>& GetQuoraneServer() const { return FServer; }
    // Dotted, major number first; empty when not logged in.
    const std::string& ServerVersion() const { return FServerVersion; }
    const std::string& DescriptionFileName() const { return FDescriptionFileName; }

    // Two lines on SDK and Java, parted by CR LF. Needs no session object; the call
    // fails when the SDK can't be used, and so probes for it.
    static std::string EnvironmentDescription();

    // The lookups raise EOleSysError when not logged in; none keeps a result.

    // The version that the identity names.
    Quorane_TLB::Handle<Quorane_TLB::IRequirement>
    FindRequirement(const Quorane_TLB::Handle<Quorane_TLB::IRequirementID>& id);
    Quorane_TLB::Handle<Quorane_TLB::IRequirement> FindLatestRequirement(std::int32_t id);
    // Raises EConvertError when the identity names something else.
    Quorane_TLB::Handle<Quorane_TLB::IRequirementType>
    FindRequirementType(const Quorane_TLB::Handle<Quorane_TLB::IQuoraneObjectID>& id);
    Quorane_TLB::Handle<IEnumerableStCollection> GetProjects();
    Quorane_TLB::Handle<IEnumerableStCollection> GetUserList();
    Quorane_TLB::Handle<IEnumerableStCollection> GetGroupList();
    Quorane_TLB::Handle<IEnumerableStCollection>
    GetProjectRequirementTypes(const Quorane_TLB::Handle<Quorane_TLB::IProject>& project);
    Quorane_TLB::Handle<Quorane_TLB::IIntegrationManager> IntegrationManager();
    Quorane_TLB::Handle<Quorane_TLB::ITraceManager> TraceManager();

    // Makes this add-in known to the server, once for all its users. A server that
    // refuses the new integration is no failure.
    void EnsureIntegrationAdded();

    // Both make the requirement on the server, where it exists when they return; they
    // save nothing else. node is the parent: a requirement's node takes requirement as
    // the parent, a type's node puts the new one on the type's top level.
    Quorane_TLB::Handle<Quorane_TLB::IRequirement>
    CreateRequirementAsChild(const Quorane_TLB::Handle<Quorane_TLB::IRequirementTreeNode>& node,
                             const Quorane_TLB::Handle<Quorane_TLB::IProject>& project,
                             const Quorane_TLB::Handle<Quorane_TLB::IRequirement>& requirement,
                             const std::string& name);
    // position counts from 0 among the children of node.
    Quorane_TLB::Handle<Quorane_TLB::IRequirement>
    CreateRequirementAboveOrBelow(const Quorane_TLB::Handle<Quorane_TLB::IRequirementTreeNode>& node,
                                  const Quorane_TLB::Handle<Quorane_TLB::IProject>& project,
                                  const Quorane_TLB::Handle<Quorane_TLB::IRequirement>& requirement,
                                  const std::string& name, std::int32_t position);

    // Writes the HTML in UTF-8, with a byte-order mark, into the session's temporary
    // file in place of what was there, has the images that it names fetched, and gives
    // the file's path. Raises Exception when the file can't be written.
    std::string PrepareRequirementDescriptionFile(const std::u16string& description);

    // Puts each occurrence of each of the project's glossary terms into the colour of
    // its glossary, by plain replacement: words and mark-up are not told apart. A
    // failure leaves html as it was.
    void HighlightGlossaryTerms(std::u16string& html,
                                const Quorane_TLB::Handle<Quorane_TLB::IProject>& project);

    // The term of exactly that name, and its glossary; the last glossary that holds it
    // wins. An unknown word empties term and leaves glossary as it was. No round trip
    // and no walk over the terms while the SDK knows the project's glossaries.
    void GetGlossaryTerm(const Quorane_TLB::Handle<Quorane_TLB::IProject>& project,
                         const std::u16string& word, Quorane_TLB::Handle<Quorane_TLB::IGlossary>& glossary,
                         Quorane_TLB::Handle<Quorane_TLB::IGlossaryTerm>& term);

    // The path of the outside estimating tool, which may not exist; a bare file name
    // when the desktop client of the server is not installed.
    static std::string TallyworksExecutable();

private:
    Quorane_TLB::Handle<Quorane_TLB::ISession> Session();
    bool HasIntegration();
    void AddIntegration(const Quorane_TLB::Handle<Quorane_TLB::IStCollection>& icon);

    Quorane_TLB::Handle<Quorane_TLB::ISession> FSession;
    TGlossaryIndex FGlossaryTerms;
    Quorane_TLB::Handle<Quorane_TLB::IQuoraneServer> FServer;
    std::string FDescriptionFileName;
    std::string FHost;
    std::string FUser;
    std::string FPassword;
    std::string FServerVersion;
    bool FLoggedIn = false;
};

// Empty before the first logon dialog, whose FormCreate alone sets it, and after
// FinalizeQuoraneSession.
extern std::unique_ptr<TQuoraneSession> QuoraneSession;

// The object in QuoraneSession. Raises EOleSysError when there is none.
TQuoraneSession& CurrentSession();

// Logs out and destroys the session object. The add-in calls it when it is unloaded,
// behind the panel's destruction.
void FinalizeQuoraneSession();
