#pragma once

#include "repository/KorCellData.h"
#include "repository/KorColumn.h"
#include "repository/KorDSNDefinitions.h"
#include "roots/KorArray.h"
#include "roots/KorString.h"

#include <functional>
#include <span>

struct RecordDescription;

/// The host's table access service. Every operation that returns int gives 1 on success and another value,
/// mostly 0, on failure; outputs are unchanged on failure. Nothing is thrown.
class KorDatabaseAccess {
public:
    // Statements and structure

    /// Executes one SQL statement in the data source.
    static int doSQLStatement(const eDSN& dsn, const KorString& sql);
    /// Executes the statement that formatting the pattern gives, with the quotes inside quoted texts ('%s')
    /// doubled.
    static int doSQLStatement(const eDSN& dsn, const KorString& pattern,
                              std::span<const KorFormatArgument> values);
    /// Fills `columns` with the columns of the table in stored order.
    static int getTableStructure(eDSN dsn, const KorString& table, KorArray<KorColumn>& columns);
    /// Number of columns of the table; 0 when there is no such table.
    static int getNumberOfColumns(eDSN dsn, const KorString& table);
    static int getTablesNames(const eDSN& dsn, KorArray<KorString>& names);
    static int doesTableExists(const eDSN& dsn, const KorString& table);
    static int doesColumnExists(const eDSN& dsn, const KorString& table, const KorString& column);
    /// Copies a table, columns and rows, to a table that does not exist yet; with `replace` an existing one
    /// is replaced.
    static int copyTable(eDSN dsn, const KorString& from, const KorString& to, bool keepExisting);
    static int resetCachedTable(eDSN dsn, const KorString& table);

    // Rows and cells

    /// Appends an empty row. With `keepKey` the row gets the key in `key`, which must be free; otherwise the
    /// service chooses one. With `returnKey` the row's key is put into `key`.
    static int appendNewLine(eDSN dsn, const KorString& table, KorCellData& key, bool returnKey, bool keepKey);
    /// Writes the columns of `record` that `description` names, items in a table of their own excepted, into
    /// the row with the key `key`, in one statement. Equals one cell write per column in the order of the
    /// description.
    static int setRecord(eDSN dsn, const KorString& table, const RecordDescription& description,
                         const KorCellData& key, const void* record);
    /// Writes one cell of the row whose key column holds `keyValue`.
    static int setTableColumnValue(eDSN dsn, const KorString& table, const KorString& keyColumn,
                                   const KorString& keyValue, int columnIndex, const KorCellData& value);
    static int getTableColumnValue(eDSN dsn, const KorString& table, const KorString& keyColumn,
                                   const KorCellData& key, int columnIndex, KorCellData& out);
    /// The same, looking in the drawing's own copy of the table first.
    static int getTableColumnValueDwgFirst(eDSN dsn, const KorString& table, const KorString& keyColumn,
                                           const KorCellData& key, int columnIndex, KorCellData& out);
    static int deleteLine(const KorString& table, const KorCellData& key);
    /// Values of one column of the rows selected by `where` (empty: all), ordered by `orderBy` (empty: table
    /// order).
    static int getColumnValues(const KorString& table, const KorString& where, const KorString& orderBy,
                               int columnIndex, KorArray<KorCellData>& values);
    /// The same in the given data source.
    static int getColumnValues(eDSN dsn, const KorString& table, const KorString& where, const KorString& orderBy,
                               int columnIndex, KorArray<KorCellData>& values);
    static int getKeyAtRunname(const KorString& table, const KorString& runName, KorCellData& key);
    static int getRunnameAtKey(const KorString& table, const KorCellData& key, KorString& runName);
    /// The whole table with the rows of the base and of every add-in.
    static int getTableAllSources(eDSN dsn, const KorString& table, KorPartialTable& out);

    static int cellDataArr2StringArr(const KorArray<KorCellData>& values, KorArray<KorString>& out);
    static int cellDataArr2LongArr(const KorArray<KorCellData>& values, KorArray<long>& out);
    static int cellDataArr2ColumnData(const KorArray<KorCellData>& values, KorColumnData& out);

    // Names, connections, files

    /// Resolves a logical table name. For an alias, `dsn` becomes all bits set and `physical` the name to
    /// resolve next. Returns 0 with `dsn` all bits set and the name itself when no data source holds the
    /// table.
    static int getDSNandTableName(const KorString& logical, KorString& physical, eDSN& dsn);
    /// The physical name of a table; an unknown name is its own physical name.
    static KorString getTableName(const KorString& logical);
    static int getConnectionString(eDSN dsn, KorString& connection);
    static int setConnectionString(eDSN dsn, const KorString& connection);
    /// Points the data source at a database file.
    static int setConnection(eDSN dsn, const KorString& file);
    /// Lets go of a database file: everything written is in that one file afterwards.
    static int detachDatabase(const KorString& file);
    /// Makes a new, empty detail database. Fails when the file exists already.
    static int createDetailProcessDatabase(const KorString& file);
    /// True when the database engine is usable.
    static bool checkDbEngine(bool report);
    static KorString getDateTimeFormat();
};

/// Groups the writes of one operation: they become visible to other processes together, when the outermost
/// batch ends, or not at all when the process dies before. Batches nest. Writes are kept whatever the
/// operation's result.
class KorDatabaseBatch {
public:
    KorDatabaseBatch();
    ~KorDatabaseBatch();
    KorDatabaseBatch(const KorDatabaseBatch&) = delete;
    KorDatabaseBatch& operator=(const KorDatabaseBatch&) = delete;

    /// Ends the batch and returns `result`, or 0 when the writes could not be stored (they are undone then).
    int end(int result);
    /// Has `undo` called when the writes of the open batch cannot be stored, so that what is remembered of them
    /// can be taken back. Does nothing outside a batch.
    static void whenUndone(std::function<void()> undo);

private:
    bool m_open = true;
};
