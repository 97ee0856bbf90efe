// Commands that stand apart: the search by number and the outside estimating tool.
#include <filesystem>

#include "contracts/Exceptions.h"
#include "contracts/SystemServices.h"
#include "panel/QuoraneDockForm.h"
#include "panel/UFindByIdForm.h"
#include "server/UQuoraneSession.h"
#include "server/UResourceStrings.h"

void TfrmQuoraneMain::btnSearchByIdClick() {
    GuardServerCalls([] { ExecuteSearchById(); });
}

void TfrmQuoraneMain::actTallyworksExecute() {
    try {
        const std::filesystem::path directory =
            std::filesystem::path(TQuoraneSession::TallyworksExecutable()).parent_path();
        SystemServices().StartProcess(TQuoraneSession::TallyworksExecutable(), directory.string());
    } catch (const std::exception&) {
        throw Exception(STallyworksMissing);
    }
}
