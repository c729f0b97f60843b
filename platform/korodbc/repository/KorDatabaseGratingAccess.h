#pragma once

#include <korodbc/records/configuration/GratingRecords.h>

/// The host's access to grating tables, which are named logically. Results: 1 read, 0 not; outputs are unchanged
/// on failure. Nothing is thrown. Threads: one. Needs: an open repository.
class KorDatabaseGratingAccess {
public:
    /// The gratings of a class; `table` is the table that the class names.
    static int getGratingStandardItemsTable(const KorString& table, KorArray<StructGratingStandardItem>& items);
    static int getGratingVariableItemsTable(const KorString& table, KorArray<StructGratingVariableItem>& items);
    /// Run names of the given keys of such a table, in table order; keys that no row has are left out.
    static int getGratingItemsNameListByKeys(const KorString& table, const KorArray<long>& keys,
                                             KorArray<KorString>& names);

    // Rows of a component table, chosen by a SELECT statement that names all its columns in any order. Rows
    // come in the order of the statement; a statement that finds none gives an empty array.

    static int getBearingBarSpacingSubTable(const KorString& query, KorArray<StructBearingBarSpacing>& rows);
    static int getCrossBarSpacingSubTable(const KorString& query, KorArray<StructCrossBarSpacing>& rows);
    static int getBearingBarThicknessSubTable(const KorString& query, KorArray<StructBearingBarThickness>& rows);
    static int getBearingBarWidthSubTable(const KorString& query, KorArray<StructBearingBarWidth>& rows);
    static int getCrossBarSubTable(const KorString& query, KorArray<StructCrossBar>& rows);
};
