#include "server/UQuoraneStHelpers.h"

#include <utility>

using namespace Quorane_TLB;

TQuoraneObjectEnumerator::TQuoraneObjectEnumerator(Handle<IStCollection> collection)
    : FCollection(std::move(collection)) {}

bool TQuoraneObjectEnumerator::MoveNext() {
    if (FIndex >= Require(FCollection)->Get_Count() - 1) return false;
    ++FIndex;
    return true;
}

Handle<IDispatch> TQuoraneObjectEnumerator::GetCurrent() const {
    return Require(Require(FCollection)->Get_Item(Variant(FIndex)).AsDispatch());
}

TEnumerableStCollection::TEnumerableStCollection(Handle<IStCollection> collection)
    : FCollection(std::move(collection)) {}

std::unique_ptr<TQuoraneObjectEnumerator> TEnumerableStCollection::GetEnumerator() {
    return std::make_unique<TQuoraneObjectEnumerator>(FCollection);
}

Handle<IStCollection> TEnumerableStCollection::GetCollection() const {
    return FCollection;
}

void TEnumerableStCollection::SetCollection(Handle<IStCollection> collection) {
    FCollection = std::move(collection);
}

Handle<IEnumerableStCollection> EnumerableStCollection(Handle<IStCollection> collection) {
    return std::make_shared<TEnumerableStCollection>(std::move(collection));
}
