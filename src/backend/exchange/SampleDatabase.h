// Builds the database with the sample projects from their texts. The same texts give
// the same objects, numbers and dates each time.
#pragma once

#include "backend/service/BulkWriter.h"

#include <cstdint>
#include <string>

namespace Exchange {

// Writes everything that stands in the folder (its people.txt, then each folder with
// a project.txt, in the order of their names) into a new database. Source files are
// traced under their absolute paths in the folder's "source". Raises OutlineError,
// FileError, Backend::RuleViolation or Backend::StoreError; the caller then has to
// remove what was begun.
void BuildSampleDatabase(const std::string& databasePath, const std::string& samplesFolder,
                         Backend::BulkWriter::Hashing hashing = Backend::BulkWriter::Hashing::Secure);

} // namespace Exchange
