// The steps that bring a database from one release's tables to the next's. Each is
// a numbered file in migrations/; the number of the last one applied stands in the
// database.
#pragma once

#include "backend/store/Database.h"

#include <span>

namespace Backend {

struct Migration {
    int Number; // 1, 2, ... without a gap
    const char* Statements;
};

// All steps that this release knows, in order.
std::span<const Migration> Migrations();

// Applies the steps that the database lacks, each in a transaction of its own.
// Raises StoreError, NewerRelease for a database with more steps than are given; a
// failing step leaves the database as the step before it did.
void Migrate(Database& database, std::span<const Migration> steps = Migrations());

} // namespace Backend
