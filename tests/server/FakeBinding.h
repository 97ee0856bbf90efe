// A requirements server of mocks, put in the place of the SDK for one test.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "contracts/Exceptions.h"
#include "server/Quorane_TLB_Mock.h"
#include "server/tlb/ClassObjects.h"
#include "server/tlb/StatusCodes.h"

// A mock that keeps quiet about calls that a test says nothing of.
template<class Mock> std::shared_ptr<testing::NiceMock<Mock>> MakeMock() {
    return std::make_shared<testing::NiceMock<Mock>>();
}

// A collection over a vector of the test's.
class TListCollection : public Quorane_TLB::IStCollection {
public:
    explicit TListCollection(std::vector<Quorane_TLB::Variant> elements = {})
        : Elements(std::move(elements)) {}

    Quorane_TLB::Handle<Quorane_TLB::IUnknown> Get__NewEnum() override { return {}; }
    Quorane_TLB::Variant Get_Item(const Quorane_TLB::Variant& index) override {
        ++ItemCalls;
        return Elements.at(static_cast<std::size_t>(index.AsInteger()));
    }
    std::int32_t Get_Count() override { return static_cast<std::int32_t>(Elements.size()); }
    void Add(const Quorane_TLB::Variant& element) override { Elements.push_back(element); }
    void Remove(const Quorane_TLB::Variant& index) override {
        Elements.erase(Elements.begin() + index.AsInteger());
    }
    Quorane_TLB::WordBool Get_ReadOnly() override { return Quorane_TLB::WordFalse; }

    std::vector<Quorane_TLB::Variant> Elements;
    int ItemCalls = 0;
};

template<class... Handles> std::shared_ptr<TListCollection> ListOf(const Handles&... objects) {
    return std::make_shared<TListCollection>(
        std::vector<Quorane_TLB::Variant>{Quorane_TLB::Variant(objects)...});
}

// Gives the test's objects out as the SDK's classes while it lives.
class TFakeClasses {
public:
    TFakeClasses() {
        Quorane_TLB::SetClassObjectProvider(
            [this](const Quorane_TLB::Guid& classId, const std::string& machine) {
                Machines.push_back(machine);
                const auto found = FObjects.find(classId);
                return found == FObjects.end() ? nullptr : found->second;
            });
    }
    ~TFakeClasses() { Quorane_TLB::SetClassObjectProvider({}); }
    TFakeClasses(const TFakeClasses&) = delete;
    TFakeClasses& operator=(const TFakeClasses&) = delete;

    void Register(const Quorane_TLB::Guid& classId, Quorane_TLB::Handle<Quorane_TLB::IDispatch> object) {
        FObjects[classId] = std::move(object);
    }

    std::vector<std::string> Machines;

private:
    std::map<Quorane_TLB::Guid, Quorane_TLB::Handle<Quorane_TLB::IDispatch>> FObjects;
};

// What a server's refusal looks like when it arrives.
inline EOleSysError ServerFailure(const std::string& text) {
    return EOleSysError(text, Quorane_TLB::StatusException);
}
