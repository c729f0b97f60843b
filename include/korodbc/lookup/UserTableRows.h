#pragma once

#include <korodbc/repository/KorCellData.h>
#include <korodbc/roots/KorString.h>

namespace korodbc {

/// Kind of the key of a user table.
enum UserKeyKind { kTextKey = 0, kIntKey = 1, kNoKey = -1 };

/// Appends an empty row to a user table. The key is in `textKey` or `intKey`, as `kind` says; it becomes the
/// row's with `keepKey`, and otherwise the database chooses one. On success the row's key is put where the
/// new `kind` says. A key of any other kind raises an assertion, sets kNoKey and gives 0. On failure the keys
/// are unchanged.
int appendUserTableRow(const KorString& table, int& kind, KorString& textKey, int& intKey, bool keepKey);
/// Writes a cell of the row whose first column holds the key. 0 when the table has no columns.
int setUserTableCell(const KorString& table, const KorString& key, int column, const KorCellData& value);

} // namespace korodbc
