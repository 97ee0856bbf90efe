// Tools around the SDK's lists: the walk over a collection, the containers by which
// a list entry or a tree node carries a server object, and the text of a value.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "contracts/Object.h"
#include "server/Quorane_TLB.h"

// One walk over a collection, in index order. It asks the collection for its count
// at every step, so a list that grows is walked to its new end, and keeps no element.
class TQuoraneObjectEnumerator {
public:
    explicit TQuoraneObjectEnumerator(Quorane_TLB::Handle<Quorane_TLB::IStCollection> collection);

    // Steps to the first element, then to the next; false, without a step, behind the
    // last one. Raises what the SDK raises.
    bool MoveNext();

    // The element under the walk, never empty, for the caller to query. Raises
    // EConvertError when the collection holds plain values.
    Quorane_TLB::Handle<Quorane_TLB::IDispatch> GetCurrent() const;

private:
    std::int32_t FIndex = -1;
    Quorane_TLB::Handle<Quorane_TLB::IStCollection> FCollection;
};

// A collection that can be walked.
class IEnumerableStCollection : public Quorane_TLB::IUnknown {
public:
    static constexpr Quorane_TLB::Guid IID{
        0x1343A8EB, 0x7109, 0x4EF5, {0xA3, 0x22, 0x6B, 0xA1, 0x6B, 0xD6, 0x70, 0x3F}};

    // A new walk; it holds the collection itself and may outlive this object.
    virtual std::unique_ptr<TQuoraneObjectEnumerator> GetEnumerator() = 0;
    virtual Quorane_TLB::Handle<Quorane_TLB::IStCollection> GetCollection() const = 0;
    virtual void SetCollection(Quorane_TLB::Handle<Quorane_TLB::IStCollection> collection) = 0;
};

class TEnumerableStCollection : public IEnumerableStCollection {
public:
    explicit TEnumerableStCollection(Quorane_TLB::Handle<Quorane_TLB::IStCollection> collection);

    std::unique_ptr<TQuoraneObjectEnumerator> GetEnumerator() override;
    Quorane_TLB::Handle<Quorane_TLB::IStCollection> GetCollection() const override;
    void SetCollection(Quorane_TLB::Handle<Quorane_TLB::IStCollection> collection) override;

private:
    Quorane_TLB::Handle<Quorane_TLB::IStCollection> FCollection;
};

// The way into every walk over a server list:
//     auto projects = EnumerableStCollection(list)->GetEnumerator();
//     while (projects->MoveNext()) Use(Cast<IProject>(projects->GetCurrent()));
Quorane_TLB::Handle<IEnumerableStCollection>
EnumerableStCollection(Quorane_TLB::Handle<Quorane_TLB::IStCollection> collection);

// The containers. Each is owned by the entry in whose data slot it lies, keeps its
// server objects alive as long as the entry stands, and goes with the next refill.

class TProjectContainer : public TObject {
public:
    explicit TProjectContainer(Quorane_TLB::Handle<Quorane_TLB::IProject> project);
    ~TProjectContainer() override;

    Quorane_TLB::Handle<Quorane_TLB::IProject> Project;
};

class TBaseLineContainer : public TObject {
public:
    explicit TBaseLineContainer(Quorane_TLB::Handle<Quorane_TLB::IBaseline> baseline);
    ~TBaseLineContainer() override;

    Quorane_TLB::Handle<Quorane_TLB::IBaseline> Baseline;
};

class TCustomTabContainer : public TObject {
public:
    explicit TCustomTabContainer(Quorane_TLB::Handle<Quorane_TLB::ICustomTab> customTab);
    ~TCustomTabContainer() override;

    Quorane_TLB::Handle<Quorane_TLB::ICustomTab> CustomTab;
};

class TRequirementTreeNodeContainer : public TObject {
public:
    TRequirementTreeNodeContainer(Quorane_TLB::Handle<Quorane_TLB::IRequirementTreeNode> node,
                                  Quorane_TLB::Handle<Quorane_TLB::IBaseline> baseline);
    ~TRequirementTreeNodeContainer() override;

    // Asks the session at every call: the newest version in the current baseline, the
    // frozen one in any other. Raises Exception "Not a requirement node!" on the node
    // of a requirement type, and what the session raises.
    Quorane_TLB::Handle<Quorane_TLB::IRequirement> GetRequirement() const;

    // Puts the container on the node that a new reading of the tree gave.
    void RefreshRequirement(Quorane_TLB::Handle<Quorane_TLB::IRequirementTreeNode> node);

    Quorane_TLB::Handle<Quorane_TLB::IRequirementTreeNode> Node;
    Quorane_TLB::Handle<Quorane_TLB::IBaseline> Baseline;
};

class TUserContainer : public TObject {
public:
    explicit TUserContainer(Quorane_TLB::Handle<Quorane_TLB::IUser> user);
    ~TUserContainer() override;

    Quorane_TLB::Handle<Quorane_TLB::IUser> User;
};

class TGroupMemberAssignmentContainer : public TObject {
public:
    explicit TGroupMemberAssignmentContainer(
        Quorane_TLB::Handle<Quorane_TLB::IGroupMemberAssignment> assignment);
    ~TGroupMemberAssignmentContainer() override;

    Quorane_TLB::Handle<Quorane_TLB::IGroupMemberAssignment> Assignment;
};

class THistoryRevisionContainer : public TObject {
public:
    explicit THistoryRevisionContainer(Quorane_TLB::Handle<Quorane_TLB::IHistoryRevision> revision);
    ~THistoryRevisionContainer() override;

    Quorane_TLB::Handle<Quorane_TLB::IHistoryRevision> Revision;
};

class TDocRefContainer : public TObject {
public:
    TDocRefContainer(Quorane_TLB::Handle<Quorane_TLB::IDocumentReference> reference, std::string text,
                     std::int32_t position);
    ~TDocRefContainer() override;

    Quorane_TLB::Handle<Quorane_TLB::IDocumentReference> Reference;
    std::string Text;           // what is shown for the selected reference
    std::int32_t Position = -1; // of the reference in its list, from 0
};

class TTraceContainer : public TObject {
public:
    TTraceContainer(Quorane_TLB::Handle<Quorane_TLB::ITrace> trace,
                    Quorane_TLB::Handle<Quorane_TLB::IIntegrationObject> integrationObject);
    ~TTraceContainer() override;

    Quorane_TLB::Handle<Quorane_TLB::ITrace> Trace;
    Quorane_TLB::Handle<Quorane_TLB::IIntegrationObject> IntegrationObject;
};

class TAttributeValueContainer : public TObject {
public:
    explicit TAttributeValueContainer(Quorane_TLB::Handle<Quorane_TLB::IAttributeValue> value);
    ~TAttributeValueContainer() override;

    Quorane_TLB::Handle<Quorane_TLB::IAttributeValue> Value;
};

// Turns what the server gives as a value into a line of text. Nothing is caught.
class TQuoraneHelpers {
public:
    // The first kind that the value answers to decides; an unknown kind gives empty
    // text. A duration shows no unit, since it answers as an integer before.
    static std::string UDAToString(const Quorane_TLB::Handle<Quorane_TLB::IAttributeValue>& value);

    // Null and foreign objects give empty text, an object of the server its name.
    // Raises EConvertError for plain kinds other than text and integer.
    static std::string VariantToStr(const Quorane_TLB::Variant& value);
};
