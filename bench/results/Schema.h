#pragma once

#include "bench/results/Database.h"

namespace kxbench::results {

/// The schema that this program knows: tables, and the views `results`, `records`, `faults`, `summary`,
/// `pareto` for other programs. docs/results.md describes both.
inline constexpr int SchemaVersion = 1;

/// Makes the database's schema the one that this program knows: makes it in an empty database, and brings an
/// older one up to date, whole or not at all, whoever else does the same at the time. Changes nothing, and
/// needs no right to, where it is so already. Throws DatabaseError; SchemaTooNew for one of a newer program.
void MigrateSchema(Database& database);

}  // namespace kxbench::results
