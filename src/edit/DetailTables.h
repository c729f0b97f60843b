#pragma once

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/records/RecordDescription.h>

namespace korodbc {

/// What the manager knows of a detail table type.
struct DetailTable {
    const wchar_t* name;
    const RecordDescription& (*description)();
    void* currentRecord; // nullptr: the type has none
    bool hasKeyAccess;   // getRecordKey gives the current record's key
};

inline bool isTableType(int type) { return type >= 0 && type < KorOdbcMan::kTableTypes; }
/// Of a valid type.
const DetailTable& detailTable(int type);
/// Type of the table that a record description is of; -1 when it is no detail table.
int tableTypeOf(const RecordDescription& description);
/// Definition of an item column, with "%i" for the item's number; empty when the type has no such column.
const wchar_t* itemColumnTemplate(int type, int column);
inline constexpr int itemColumnTemplates = 5;

} // namespace korodbc
