#pragma once

#include "Output.h"
#include "Session.h"

#include <korodbc/records/AnyRecord.h>
#include <korodbc/repository/KorCellData.h>
#include <korodbc/repository/KorColumn.h>

#include <string>
#include <vector>

/// A table where it is stored.
struct StoredTable {
    std::string name;
    Source source;
    const RecordDescription* type = nullptr; // nullptr: no record type describes it
};

/// Finds a table by its name or alias in one source, or, with an empty name of the source, in the first that
/// has it.
StoredTable findTable(const std::string& name, const std::string& source);
/// The table whose rows the rows of that one are items of; empty when they are no items.
std::string ownerOfItems(const std::string& table);
std::vector<std::string> tableNames(const Source& source);
/// Number of rows; -1 when the table cannot be read.
long numberOfRows(const StoredTable& table);

/// "table X cannot be read: why; what to do", about the table of the type in the requested source.
Failure unreadable(const RecordDescription& type);
/// Throws when the table of the type cannot be read in the requested source.
void requireReadable(const RecordDescription& type);
/// Reads a record by its key or run name; false when there is none. The table's source has to be requested.
bool readRecord(const RecordDescription& type, const std::string& keyOrName, void* record);
/// Run name of the record with that key, empty when it has none.
std::string runNameOf(const RecordDescription& type, int key);
std::string keyText(const RecordDescription& type, const void* record);
std::string cellText(const ColumnDescription& column, const void* record);
/// A numbered column's name, "Request3".
std::string numberedName(const ColumnDescription& column, long item);

/// A column of a record, or of one of its items, that names a row of another table.
struct Link {
    std::string label; // "Request3", "item 2 AnnotationStrategy"
    const ColumnDescription* column;
    int target; // key

    bool namesNone() const { return column->isNone(target); }
};
std::vector<Link> linksOf(const RecordDescription& type, const void* record);

/// The columns of a record type, those of `items` numbered items included.
Sheet sheetOf(const RecordDescription& type, long items);
std::vector<std::string> rowOf(const RecordDescription& type, const void* record, long items);
/// The items of a record, as rows.
void addItems(const RecordDescription& type, const void* record, Sheet& sheet);
/// All rows of a table, or those whose key or run name is given; `where` is the text of an SQL condition.
Sheet readStored(const StoredTable& table, const std::string& keyOrName, const KorString& where = {});
