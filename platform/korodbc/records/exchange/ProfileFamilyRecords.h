#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A family of sections as other applications have them. Table "ProfileFamily".
struct StructProfileFamily {
    int key = -1;
    KorString runName;
    KorString description;
};
struct StructProfileFamilyMarshal : RecordMarshal<StructProfileFamily> {};

/// A table of sections that belongs to such a family. Table "ProfileFamilyTables".
struct StructProfileFamilyTable {
    int key = -1;
    int family = -1;
    KorString tableName; // of the sections
    int sortOrder = 0;
};
struct StructProfileFamilyTableMarshal : RecordMarshal<StructProfileFamilyTable> {
    /// The section tables of a family by its run name, in their order. 0 when it has none.
    static int getTablesOfFamily(const KorString& family, KorArray<KorString>& tables);
    /// Run names of the families that one of these section tables belongs to, each once and in their order. 0 when
    /// there is none.
    static int getFamiliesOfTables(const KorArray<KorString>& tables, KorArray<KorString>& families);
};
