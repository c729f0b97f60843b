#pragma once

#include <korodbc/records/RecordDescription.h>
#include <korodbc/repository/KorColumn.h>

#include <map>
#include <set>
#include <utility>
#include <vector>

/// A host of one program that keeps its tables in maps: no statements, no files, no add-ins.
namespace maphost {

using Row = std::vector<KorCellData>;

struct Table {
    KorString name;
    KorArray<KorColumn> columns;
    std::vector<Row> rows; // in table order

    int column(const KorString& called) const; // -1 without
    int keyColumn() const { return column(L"Key") < 0 ? 0 : column(L"Key"); }
    bool has(int column) const { return column >= 0 && column < columns.length(); }
    /// The first row whose column holds the value; nullptr without.
    Row* find(int column, const KorCellData& value);
};

using Place = std::pair<eDSN, KorString>; // data source and name in one case

struct Store {
    std::map<Place, Table> tables;
    std::set<Place> claims;
};
Store& store();
/// Grows with every write, so that what is made of records is known to be old.
long& writes();

Place placeOf(eDSN dsn, const KorString& name);
/// nullptr when the data source has no such table.
Table* findTable(eDSN dsn, const KorString& name);
/// Makes the table of a record type, empty.
void makeTable(eDSN dsn, const RecordDescription& type);

/// The columns of item `item`, counted from 1, are called so.
KorString numberedName(const ColumnDescription& column, int item);

} // namespace maphost
