#pragma once

#include "database/Database.h"

#include <korodbc/records/RecordDescription.h>

#include <string>

namespace korodbc::host {

/// The statement that makes the table of a record type, numbered columns included.
std::string createStatement(const RecordDescription& type);
/// Makes the tables that a data source has, empty. On failure returns false, with the reason in `error`.
bool createTables(Database& database, eDSN source, HostError& error);
/// Makes a new file with the tables of a detail database. The file appears complete or not at all; an existing one
/// makes the call fail.
bool createDetailDatabase(const std::string& file, HostError& error);

} // namespace korodbc::host
