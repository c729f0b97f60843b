#pragma once

#include <korodbc/repository/KorDSNDefinitions.h>
#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

/// A reference from one row of a detail database to another.
struct KorDetailReference {
    KorString table; // that holds the reference
    KorString column;
    int key = -1;   // of the referring row; of an item, the key of the row that it belongs to
    KorString name; // of that row
    int item = -1;  // position of the item, -1 when the row itself refers
    KorString target;
    int targetKey = -1;
    KorString targetText; // the key, of a table with texts for keys
};

/// The references between the tables of a detail database, or between project tables, as they are stored.
/// Threads: one. Needs: an open repository.
class KorDetailReferences {
public:
    /// The references that name a row which does not exist, appended to `references`; 0 when a table could not be
    /// read. What is looked up in a fixed catalogue may stand in any data source. A table that the database does
    /// not have refers to nothing.
    static int getDangling(eDSN dsn, eIndex index, KorArray<KorDetailReference>& references);
    /// The references to one row, appended to `references`; 0 when a table could not be read.
    static int getReferrers(eDSN dsn, eIndex index, const KorString& table, int key,
                            KorArray<KorDetailReference>& references);
    /// The same for a table with texts for keys.
    static int getReferrers(eDSN dsn, eIndex index, const KorString& table, const KorString& key,
                            KorArray<KorDetailReference>& references);
    /// Number of the references that name a row; -1 when a table could not be read.
    static int count(eDSN dsn, eIndex index);
};
