// What the server holds, as a second client sees it: a session of its own.
#pragma once

#include <string>
#include <vector>

#include "server/Quorane_TLB.h"

class TTourServer {
public:
    TTourServer(const std::string& user, const std::string& password);
    ~TTourServer();
    TTourServer(const TTourServer&) = delete;
    TTourServer& operator=(const TTourServer&) = delete;

    // Both raise std::runtime_error naming what was not found.
    Quorane_TLB::Handle<Quorane_TLB::IProject> Project(const std::string& name);
    Quorane_TLB::Handle<Quorane_TLB::IBaseline> Baseline(const std::string& project, const std::string& name);
    // By the names of the requirement type and of the requirements below it.
    Quorane_TLB::Handle<Quorane_TLB::ITreeNode>
    Node(const Quorane_TLB::Handle<Quorane_TLB::IBaseline>& baseline, const std::vector<std::string>& path);
    Quorane_TLB::Handle<Quorane_TLB::IRequirement>
    Latest(const Quorane_TLB::Handle<Quorane_TLB::ITreeNode>& node);
    std::vector<std::string> ChildNames(const Quorane_TLB::Handle<Quorane_TLB::ITreeNode>& node);
    // Forgets what was read.
    void Forget(const Quorane_TLB::Handle<Quorane_TLB::IBaseline>& baseline);

private:
    Quorane_TLB::Handle<Quorane_TLB::ISession> FSession;
};
