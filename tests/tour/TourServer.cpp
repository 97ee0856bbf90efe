#include "tour/TourServer.h"

#include <functional>
#include <stdexcept>

using namespace Quorane_TLB;

namespace {

// The first element that the test picks; empty when there is none.
template<class T>
Handle<T> FindIn(const Handle<IStCollection>& items, const std::function<bool(T&)>& wanted) {
    for (std::int32_t index = 0; index < items->Get_Count(); ++index) {
        auto item = Cast<T>(items->Get_Item(Variant(index)).AsDispatch());
        if (wanted(*item)) return item;
    }
    return {};
}

} // namespace

TTourServer::TTourServer(const std::string& user, const std::string& password) {
    const auto server = CoQuoraneServerFactory::Create()->Create1(u"local");
    FSession = Cast<ISession>(
        CallByName(server, "login", {Variant(Wide(user)), Variant(Wide(password))}).AsDispatch());
}

TTourServer::~TTourServer() {
    try {
        FSession->logout();
    } catch (const std::exception&) {
        // The server ends what nobody renews.
    }
}

Handle<IProject> TTourServer::Project(const std::string& name) {
    const auto project = FindIn<IProject>(FSession->Get_Projects(),
                                          [&](IProject& item) { return Utf8(item.Get_Name()) == name; });
    if (!project) throw std::runtime_error("the server has no project " + name);
    return project;
}

Handle<IBaseline> TTourServer::Baseline(const std::string& project, const std::string& name) {
    const auto baseline = FindIn<IBaseline>(Project(project)->Get_Baselines(),
                                            [&](IBaseline& item) { return Utf8(item.Get_Name()) == name; });
    if (!baseline) throw std::runtime_error("the server has no baseline " + name);
    return baseline;
}

Handle<ITreeNode> TTourServer::Node(const Handle<IBaseline>& baseline, const std::vector<std::string>& path) {
    Handle<ITreeNode> node = baseline->Get_RequirementTree()->Get_Root();
    for (const std::string& name : path) {
        node = FindIn<ITreeNode>(node->Get_Children(),
                                 [&](ITreeNode& item) { return Utf8(item.Get_Name()) == name; });
        if (!node) throw std::runtime_error("the server's tree has no node " + name);
    }
    return node;
}

Handle<IRequirement> TTourServer::Latest(const Handle<ITreeNode>& node) {
    return FSession->getLatestRequirement(node->Get_ID()->Get_IDNumber());
}

std::vector<std::string> TTourServer::ChildNames(const Handle<ITreeNode>& node) {
    std::vector<std::string> names;
    const auto children = node->Get_Children();
    for (std::int32_t index = 0; index < children->Get_Count(); ++index)
        names.push_back(Utf8(Cast<ITreeNode>(children->Get_Item(Variant(index)).AsDispatch())->Get_Name()));
    return names;
}

void TTourServer::Forget(const Handle<IBaseline>& baseline) {
    baseline->Get_RequirementTree()->Get_Manager()->Get_Cache()->clear();
}
