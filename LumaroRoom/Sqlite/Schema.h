// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Sqlite/Database.h"

#include <cstdint>

namespace lumaro::Schema {

/// The number of the tables that this program reads and writes.
std::int64_t version();

/// That the database is ours and not newer than this program; the version it has, 0 for one with nothing in it.
[[nodiscard]] StoreResult<std::int64_t> check(Database& database);

/// Brings the tables to `version()`, step by step; each step is done whole or not at all.
[[nodiscard]] StoreResult<void> migrate(Database& database);

} // namespace lumaro::Schema
