#include "platform/sdk/objects/Objects.h"

namespace Sdk {

namespace {

class TCacheObject final : public IQuoraneObjectCache {
public:
    TCacheObject(TSessionHandle session, ECache cache)
        : FSession(std::move(session))
        , FCache(cache) {}

    void clear() override {
        const TCall call("IQuoraneObjectCache.clear");
        FSession->Clear(FCache);
    }

private:
    const TSessionHandle FSession;
    const ECache FCache;
};

} // namespace

void RaiseForeignObject() {
    RaiseFailure("IllegalArgumentException: An object of this client is expected, not an empty handle or a "
                 "foreign object.");
}

Handle<IQuoraneObjectCache> MakeCache(const TSessionHandle& session, ECache cache) {
    return std::make_shared<TCacheObject>(session, cache);
}

Handle<IQuoraneObjectManager> MakeManager(const TSessionHandle& session, ECache cache) {
    switch (cache) {
    case ECache::Discussions:
        return std::make_shared<TManager<IQuoraneObjectManager>>(session, cache);
    case ECache::Glossaries:
        return std::make_shared<TManager<IGlossaryTermManager>>(session, cache);
    default:
        return std::make_shared<TManager<ILockableQuoraneObjectManager>>(session, cache);
    }
}

} // namespace Sdk
