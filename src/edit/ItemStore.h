#pragma once

#include <korodbc/edit/KorOdbcMan.h>

namespace korodbc {

/// Deletes the rows of a table of the manager's database, given by its physical name, whose column holds the key.
int deleteWhere(const KorString& table, const KorString& column, long key);
/// Removes the stored items of an owner and writes those of its record, stopping at the first that fails. `depth`
/// is the copy depth of the owner's edit. Returns 1, or the first result other than 1 of writing an item.
int storeItems(KorOdbcMan::eTableType ownerType, long ownerKey, KorOdbcMan::eCopyDepth depth);

} // namespace korodbc
