// The one place that reads what a failed server call says.
#include "contracts/Exceptions.h"
#include "frames/ScopedFlag.h"
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Application.h"
#include "server/UResourceStrings.h"

namespace {

bool Contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

} // namespace

void TfrmQuoraneMain::HandleSDKException(const std::exception& failure) {
    const std::string text = failure.what();
    // The recovery itself has failed: the outer call ends by this report.
    if (FHandlingSDKException) throw Exception(text);
    const TScopedFlag handling(FHandlingSDKException);
    if (!Contains(text, "RemoteServerException")) throw Exception(text);
    if (Contains(text, "Quorane.SERVER_ERROR")) {
        Application().MessageBox(SConnectionLost, SMessageCaption, TMessageIcon::Warning);
        RefreshAll();
        return;
    }
    // Known complaints without the server's stack trace around them.
    for (const char* sentence : {SMarkupNotWellFormed, SImageWithoutOriginal})
        if (Contains(text, sentence)) throw Exception(sentence);
    throw Exception(text);
}
