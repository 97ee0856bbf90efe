// Commands that stand apart: the search by number and the outside estimating tool.
#include "contracts/Exceptions.h"
#include "contracts/SystemServices.h"
#include "panel/QuoraneDockForm.h"
#include "panel/UFindByIdForm.h"
#include "server/UQuoraneSession.h"
#include "server/UResourceStrings.h"

namespace {

// Without a trailing separator; empty for a bare file name.
std::string DirectoryOf(const std::string& path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string::npos ? std::string() : path.substr(0, separator);
}

} // namespace

void TfrmQuoraneMain::btnSearchByIdClick() {
    GuardServerCalls([] { ExecuteSearchById(); });
}

void TfrmQuoraneMain::actTallyworksExecute() {
    try {
        SystemServices().StartProcess(TQuoraneSession::TallyworksExecutable(),
                                      DirectoryOf(TQuoraneSession::TallyworksExecutable()));
    } catch (const std::exception&) {
        throw Exception(STallyworksMissing);
    }
}
