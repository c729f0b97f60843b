#pragma once

#include <korodbc/repository/KorDSNDefinitions.h>
#include <korodbc/roots/KorString.h>

namespace korodbc {

/// Deletes the rows of a table, given by its physical name, that the condition selects; all without a
/// condition.
int deleteRows(eDSN dsn, const KorString& table, const KorString& condition = {});

} // namespace korodbc
