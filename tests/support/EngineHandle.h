#pragma once

#include "database/Database.h"
#include "engine/sqlite/SqliteEngine.h"

/// The engine's own handle of an open database, for looks and copies beside the host.
inline sqlite3* handleOf(korodbc::host::Database& database)
{
    return static_cast<korodbc::host::SqliteEngine&>(database.engine()).handle();
}
