#pragma once

#include <korodbc/repository/KorCellData.h>
#include <korodbc/repository/KorColumn.h>
#include <korodbc/repository/KorDSNDefinitions.h>
#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

#include <functional>
#include <memory>
#include <span>

struct RecordDescription;

/// The host's table access service. Every operation that returns int gives 1 on success and another value,
/// mostly 0, on failure; outputs are unchanged on failure. Nothing is thrown. Threads: one. Needs: an open
/// repository; without it every operation fails.
///
/// A data source named without a slot means its current slot when it is the current one (KorDSNManager), else the
/// first add-in slot of `kAddin` and `kCountryAddin` and the base slot of all others. Every source but the country
/// add-ins has one database, whatever slot it is asked for in. Operations with a data source take the physical
/// name of a table. Those without one take its logical name and go to the current data source if it has that
/// table, else to the first one, in the order of eDSN, that does.
///
/// Names of tables and columns are found without regard to the case of A to Z; indexes of columns count from 0 in
/// stored order, and one outside the table fails. Table order is that of the keys where integers identify the
/// rows, else that in which the rows were appended. What was written is seen by every read that follows.
class KorDatabaseAccess {
public:
    // Statements and structure

    /// Executes one SQL statement in the data source. 1 also when it changes no row. The library sends INSERT,
    /// UPDATE, DELETE, CREATE TABLE, DROP TABLE and ALTER TABLE with ADD, DROP COLUMN and RENAME TO. Names stand
    /// bare or in square brackets, texts in single quotes, which are doubled inside.
    static int doSQLStatement(const eDSN& dsn, const KorString& sql);
    /// Executes the statement that formatting the pattern gives, with the quotes inside quoted texts ('%s')
    /// doubled.
    static int doSQLStatement(const eDSN& dsn, const KorString& pattern,
                              std::span<const KorFormatArgument> values);
    /// Fills `columns` with the columns of the table in stored order.
    static int getTableStructure(eDSN dsn, const KorString& table, KorArray<KorColumn>& columns);
    /// Number of columns of the table; 0 when there is no such table.
    static int getNumberOfColumns(eDSN dsn, const KorString& table);
    /// The names of all tables, copies included; they replace what the array held.
    static int getTablesNames(const eDSN& dsn, KorArray<KorString>& names);
    static int doesTableExists(const eDSN& dsn, const KorString& table);
    static int doesColumnExists(const eDSN& dsn, const KorString& table, const KorString& column);
    /// Copies a table within the data source: its columns with their types and key, and its rows. A table that has
    /// the name `to` already is replaced; with `keepExisting` it stays as it is and the copy fails.
    static int copyTable(eDSN dsn, const KorString& from, const KorString& to, bool keepExisting);
    /// The next read of the table sees what other programs have stored in it.
    static int resetCachedTable(eDSN dsn, const KorString& table);

    // Rows and cells

    /// Appends an empty row: no values, or 0 and the empty text where a column must have one. With `keepKey` the
    /// row gets the key in `key`, which must be free; otherwise the service chooses a number, above all that the
    /// table has as long as there is such a key; a table of text keys gets it as a text. With `returnKey` the
    /// row's key is put into `key`, also when the row cannot be stored at last. Keys are whole numbers of 32 bits,
    /// or texts; they stand in the column "Key", else in the first.
    static int appendNewLine(eDSN dsn, const KorString& table, KorCellData& key, bool returnKey, bool keepKey);
    /// Writes the columns of `record` that `description` names, items in a table of their own excepted, into
    /// the row with the key `key`, in one statement. Equals one cell write per column. The row keeps `key`,
    /// whatever key the record holds; numbered columns behind the record's last item and columns that the
    /// description does not name stay as they are. Fails, and writes nothing, when there is no such row, when the
    /// table does not fit (checkTable, for writing), as when it lacks a column that the description names, or when
    /// it has numbered columns for fewer items than the record has.
    static int setRecord(eDSN dsn, const KorString& table, const RecordDescription& description,
                         const KorCellData& key, const void* record);
    /// Writes one cell of the rows whose key column holds `keyValue`, a key given as text; fails when there is
    /// none.
    static int setTableColumnValue(eDSN dsn, const KorString& table, const KorString& keyColumn,
                                   const KorString& keyValue, int columnIndex, const KorCellData& value);
    /// Reads one cell of the first row, in table order, whose key column holds `key`; fails when there is none. An
    /// empty cell gives a value of type kNone.
    static int getTableColumnValue(eDSN dsn, const KorString& table, const KorString& keyColumn,
                                   const KorCellData& key, int columnIndex, KorCellData& out);
    /// The same, looking in the drawing's project data (`kProject`, slot of KorDSNSetDwgSource) first.
    static int getTableColumnValueDwgFirst(eDSN dsn, const KorString& table, const KorString& keyColumn,
                                           const KorCellData& key, int columnIndex, KorCellData& out);
    /// Deletes the rows with that key; fails when there is none.
    static int deleteLine(const KorString& table, const KorCellData& key);
    /// Values of one column of the rows selected by `where`, an SQL condition without the word WHERE (empty: all),
    /// ordered by the column `orderBy` (empty: table order).
    static int getColumnValues(const KorString& table, const KorString& where, const KorString& orderBy,
                               int columnIndex, KorArray<KorCellData>& values);
    /// The same in the given data source.
    static int getColumnValues(eDSN dsn, const KorString& table, const KorString& where, const KorString& orderBy,
                               int columnIndex, KorArray<KorCellData>& values);
    /// Key of the first row whose run name, the text in column 1, is exactly this one, and the way back.
    static int getKeyAtRunname(const KorString& table, const KorString& runName, KorCellData& key);
    static int getRunnameAtKey(const KorString& table, const KorCellData& key, KorString& runName);
    /// The whole table: the rows of the add-in, of the country add-ins in the order of their slots, and of `dsn`,
    /// of each that has it. Columns that only some of them have are empty in the rows of the others. Fails when
    /// none has it.
    static int getTableAllSources(eDSN dsn, const KorString& table, KorPartialTable& out);

    // Conversions, which the platform brings

    /// Each value as text, or as a whole number.
    static int cellDataArr2StringArr(const KorArray<KorCellData>& values, KorArray<KorString>& out);
    static int cellDataArr2LongArr(const KorArray<KorCellData>& values, KorArray<long>& out);
    static int cellDataArr2ColumnData(const KorArray<KorCellData>& values, KorColumnData& out);

    // Several programs, tables from elsewhere

    /// Claims a table for an edit: until it is released, or this program ends, no other program can
    /// claim it, write it or write its copies. 1 when it is claimed, also when it was before; 0 when another
    /// program has it, or when the claim cannot be noted.
    static int claimTable(eDSN dsn, const KorString& table);
    /// Gives a claim back; inside a batch with its end, if the batch is stored. 1 when the table was claimed.
    static int releaseTable(eDSN dsn, const KorString& table);
    /// 1 while this program has claimed the table.
    static int isTableClaimed(eDSN dsn, const KorString& table);
    /// 1 when the table of that record type fits the type, its items included; 0 when it must not be used. To read
    /// it fits when it has every described column, no gap in the numbered ones, and a key of the described kind in
    /// every row, no two the same. To write also: the described columns stand first and in their order, the key is
    /// where appendNewLine puts it, no column is computed, and no other program has claimed the table.
    static int checkTable(eDSN dsn, const RecordDescription& type, bool forWriting);

    // Names, connections, files

    /// Resolves a logical table name. For an alias, `dsn` becomes all bits set and `physical` the name to
    /// resolve next. Returns 0 with `dsn` all bits set and the name itself when no data source holds the
    /// table; the outputs change in any case.
    static int getDSNandTableName(const KorString& logical, KorString& physical, eDSN& dsn);
    /// The physical name of a table; an unknown name is its own physical name.
    static KorString getTableName(const KorString& logical);
    /// The database of a data source, as a text of the host's own, which can be set again later.
    static int getConnectionString(eDSN dsn, KorString& connection);
    static int setConnectionString(eDSN dsn, const KorString& connection);
    /// Points the data source at a database file; a relative path starts at the working directory. That the file
    /// cannot be used may show with the first read only.
    static int setConnection(eDSN dsn, const KorString& file);
    /// Closes a database file to which no data source points any more; everything written is in that one file
    /// afterwards. Inside a batch that happens at its end.
    static int detachDatabase(const KorString& file);
    /// Makes a new detail database: every detail table, without rows. Fails when the file exists already.
    static int createDetailProcessDatabase(const KorString& file);
    /// True when the database engine and the main configuration can be used; with `report` the host may tell its
    /// user when not.
    static bool checkDbEngine(bool report);
    /// Format of the dates and times that the host writes, with the letters of `strftime`.
    static KorString getDateTimeFormat();
};

/// Groups the writes of one operation: they become visible to other programs together, when the outermost
/// batch ends, or not at all when this program ends before. Batches nest. Each database is stored as a whole or
/// not at all; several databases are not stored in one. Threads: one.
class KorDatabaseBatch {
public:
    enum class Kind {
        Whole,  // can be undone by itself
        Joined, // undone only together with the batch around it, which makes it cheaper: for a single write
    };
    explicit KorDatabaseBatch(Kind kind = Kind::Whole);
    /// Ends a batch that is still open, keeping its writes; undoes it when an exception passes.
    ~KorDatabaseBatch();
    KorDatabaseBatch(const KorDatabaseBatch&) = delete;
    KorDatabaseBatch& operator=(const KorDatabaseBatch&) = delete;

    /// Ends the batch, keeping its writes whatever the operation's result. Returns `result`, or 0 when the writes
    /// to a database could not be stored, which are undone then. Of a batch that has ended, returns `result`.
    int end(int result);
    /// Ends the batch and takes back everything that was written in it, ended batches inside it included, in every
    /// database. Returns `result`.
    int undo(int result = 0);

    /// Takes the write lock of a data source, for the open batch and those around it: no other program writes to
    /// it until the outermost ends or this one is undone. 1, or 0 when another program keeps the lock too long; 0
    /// outside a batch.
    static int lock(eDSN dsn);
    /// Has `undo` called when the writes of the open batch to that data source are undone or cannot be stored, so
    /// that what is remembered of them can be taken back; the last one noted is called first. Does nothing outside
    /// a batch.
    static void whenUndone(eDSN dsn, std::function<void()> undo);

private:
    bool m_open = true;
    const int m_exceptions; // under way when the batch began
};

/// Until it is destroyed, reads of a data source see one state of it: other programs' changes up to now, and none
/// that come later. Ends early when this program writes to that data source. Threads: one.
class KorDatabaseReading {
public:
    explicit KorDatabaseReading(eDSN dsn);
    ~KorDatabaseReading();
    KorDatabaseReading(const KorDatabaseReading&) = delete;
    KorDatabaseReading& operator=(const KorDatabaseReading&) = delete;

private:
    const std::shared_ptr<void> m_reading;
};
