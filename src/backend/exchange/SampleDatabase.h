// Builds the database with the sample projects from their texts. The same texts give
// the same objects, numbers and dates each time.
#pragma once

#include "backend/service/BulkWriter.h"

#include <cstdint>
#include <string>

namespace Exchange {

struct SampleOptions {
    std::string DatabasePath;
    std::string SamplesFolder;
    // Where the source files lie that requirements are traced to; empty: the folder's
    // own "source". A copy of it there is what a user may change.
    std::string SourceFolder;
    Backend::BulkWriter::Hashing Hashing = Backend::BulkWriter::Hashing::Secure;
};

// Writes everything that stands in the folder (its people.txt, then each folder with
// a project.txt, in the order of their names) into a new database. Source files are
// traced under their absolute paths. Raises OutlineError, FileError,
// Backend::RuleViolation or Backend::StoreError; the caller then has to remove what
// was begun.
void BuildSampleDatabase(const SampleOptions& options);

} // namespace Exchange
