// Takes a table of requirements into a project, all of it in one transaction. The column
// of ids becomes a text attribute too; by it a later import finds what is there.
#pragma once

#include "backend/exchange/ImportTable.h"
#include "backend/service/BulkWriter.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Exchange {

struct ImportOptions {
    TableOptions Table;
    std::string ProjectName;                       // made when there is none of that name
    std::string TypeName = "Imported Requirement"; // the same
    std::string TypeTag = "REQ";                   // of a type that is made
    Backend::ObjectId AuthorId = 0;                // who is named in the history
    bool Update = false;                           // records whose id is known change what is there
    bool SkipBad = false;                          // else the first bad record ends the import
    bool DryRun = false;                           // everything but the writing
};

struct ImportReport {
    int Records = 0;  // in the table, without its header
    int Taken = 0;    // as new requirements
    int Changed = 0;  // new versions of what was there
    int AsBefore = 0; // there already, and the same
    int Missing = 0;  // there already, but not in the table
    int Headings = 0; // new requirements to nest others under
    std::vector<Refusal> Refusals;
    bool NewProject = false, NewType = false;
    bool Written = false; // false: the database is as it was before
};

// The writer is committed when all went well and it is no dry run; else the caller drops
// it, and nothing was written. Raises TableError, EncodingError, Backend::StoreError, and
// Backend::RuleViolation for what concerns no single record. The handler is called with
// the number of requirements written and to be written.
ImportReport ImportCsv(Backend::BulkWriter& writer, std::string_view bytes, const ImportOptions& options,
                       Backend::Instant now,
                       const std::function<void(std::int64_t written, std::int64_t of)>& progress = {});

} // namespace Exchange
