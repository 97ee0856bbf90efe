// The HTML engine as a library of its own, so that the add-in loads it when the first
// description is shown and not before.
#include "platform/engine/WebBrowser.h"

extern "C" void QuoraneCreateWebBrowser(TWinControl& parent, const std::string& name,
                                        std::unique_ptr<IWebBrowser>& browser) {
    PrepareEngine();
    browser = std::make_unique<TWebBrowser>(parent, name);
}
