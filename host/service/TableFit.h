#pragma once

#include "database/Database.h"
#include "database/Table.h"

#include <string>

namespace korodbc::host {

/// Why the table of a record type, that of its items included, must not be used so, in one line; empty when it
/// fits. For Use::Report the items' table counts for itself; here only that it is there.
std::string misfitOf(Database& database, const RecordDescription& type, Use use);

/// The table that the items of a type's records are in; nullptr, with the connection's error set, when there is
/// none or the owners of its rows cannot be told.
Table* itemTableOf(Database& database, const RecordDescription& type);

/// Has the table give out no key that a row of the database refers to, whether the row that had it is still there
/// or not.
void noteReferredKeys(Table& table);

} // namespace korodbc::host
