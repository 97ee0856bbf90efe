#include "contracts/Exceptions.h"
#include "platform/sdk/Failures.h"
#include "platform/sdk/HtmlTags.h"
#include "platform/sdk/ImageCache.h"
#include "platform/sdk/objects/Make.h"

namespace Sdk {

namespace {

class TImageManager final : public TManager<IImageManager> {
public:
    explicit TImageManager(const TSessionHandle& session)
        : TManager(session, ECache::None) {}

    // Fetches the images of the description that are not on this machine yet; gives
    // how many there are. Without the server the text shows with those that are here, and
    // the next call tells of the loss.
    std::int32_t cacheImages(const std::u16string& html) override {
        const TCall call("IImageManager.cacheImages");
        const auto hashes = AttributesOf(Utf8(html), "img", "src_original");
        try {
            for (const std::string& hash : hashes)
                FSession->Images().Fetch(FSession->Connection(), hash);
        } catch (const EOleSysError& failure) {
            if (failure.ErrorCode() != CodeServerUnavailable) throw;
        }
        return static_cast<std::int32_t>(hashes.size());
    }
};

} // namespace

Handle<IImageManager> MakeImageManager(const TSessionHandle& session) {
    return std::make_shared<TImageManager>(session);
}

} // namespace Sdk
