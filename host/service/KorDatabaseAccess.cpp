#include "database/Query.h"
#include "repository/DetailDatabase.h"
#include "service/Service.h"
#include "service/TableFit.h"

#include <korodbc/records/RecordDescription.h>
#include <korodbc/records/Registry.h>
#include <korodbc/repository/KorDatabaseAccess.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <utility>

using namespace korodbc::host;

namespace {

/// The table, nullptr when the data source does not have it.
Table* findTable(eDSN dsn, const KorString& name)
{
    Database* database = service().database(dsn);
    if (database == nullptr)
        return nullptr;
    database->validate();
    return database->table(name);
}

/// The table that an operation needs.
Table* tableIn(eDSN dsn, const KorString& name)
{
    Table* table = findTable(dsn, name);
    if (table == nullptr && service().database(dsn) != nullptr)
        service().setError("there is no table " + name.toUtf8() + " in data source " +
                               KorDSNDefinitions::m_DataSourceNames[dsn].toUtf8(),
                           FailureKind::Layout);
    return table;
}

/// The table without what waits to be written: what a read may see.
Table* readable(eDSN dsn, const KorString& name)
{
    Table* table = tableIn(dsn, name);
    return table != nullptr && table->database().flush() ? table : nullptr;
}

/// Runs a write in a transaction of its own or of the open batch.
template <class Write>
int written(Table* table, Write write, KorDatabaseBatch::Kind kind = KorDatabaseBatch::Kind::Joined)
{
    if (table == nullptr)
        return 0;
    KorDatabaseBatch batch(kind);
    Database& database = table->database();
    if (database.beginWrite() && !database.isRefused(table->name()) && write())
        return batch.end(1);
    service().setError(database.failure());
    return batch.undo(0);
}

/// Runs a statement of the library's.
template <class Execute>
int executed(eDSN dsn, Execute execute)
{
    Database* database = service().database(dsn);
    if (database == nullptr)
        return 0;
    KorDatabaseBatch batch(KorDatabaseBatch::Kind::Joined);
    const int result = execute(*database);
    if (result != 1)
        service().setError(database->failure());
    return batch.end(result);
}

/// True for a value that a column of keys can hold: in a column of whole numbers one of 32 bits.
bool isKey(Table& table, int column, const Value& value)
{
    const KorItemType::BaseTypes type = table.columns()[static_cast<std::size_t>(column)].type;
    const auto* number = std::get_if<std::int64_t>(&value);
    const bool whole = type == KorItemType::kInt || type == KorItemType::kBool;
    return number != nullptr ? fitsKey(*number) : value.index() != 0 && !whole;
}

/// A key given as text, as the key column stores it.
Value keyValue(Table& table, int column, const KorString& text)
{
    const KorItemType::BaseTypes type = table.columns()[static_cast<std::size_t>(column)].type;
    if (type != KorItemType::kInt && type != KorItemType::kBool)
        return text;
    const std::string narrow = text.toUtf8();
    std::int64_t key = 0;
    const auto end = std::from_chars(narrow.data(), narrow.data() + narrow.size(), key);
    return end.ec == std::errc() && end.ptr == narrow.data() + narrow.size() ? Value(key) : Value(text);
}

Value keyValue(Table& table, int column, const KorCellData& key)
{
    return key.getType() == KorItemType::kString ? keyValue(table, column, key.getStringW()) : valueOf(key);
}

/// The data source and table of a logical name.
Table* resolved(const KorString& logical)
{
    const KorString physical = KorDatabaseAccess::getTableName(logical);
    const eDSN dsn = service().dataSourceOf(physical);
    return dsn == KorDSNDefinitions::kUnresolved ? nullptr : readable(dsn, physical);
}

std::string columnName(Table& table, int column)
{
    return bracketed(table.columns()[static_cast<std::size_t>(column)].name);
}

bool hasColumn(Table& table, int column)
{
    return column >= 0 && column < static_cast<int>(table.columns().size());
}

/// First cell of the rows whose column `by` equals `value`.
int cellWhere(Table* table, int by, const Value& value, int wanted, KorCellData& out)
{
    if (table == nullptr || !hasColumn(*table, by) || !hasColumn(*table, wanted))
        return 0;
    Statement* select =
        table->database().prepare("SELECT " + columnName(*table, wanted) + " FROM " + table->bracketedName() +
                                  " WHERE " + columnName(*table, by) + " = ?" + table->rowOrder() + " LIMIT 1");
    if (select == nullptr)
        return 0;
    const StatementRun run(*select);
    select->bind(1, value);
    if (select->step() != Step::Row)
        return 0;
    if (select->cell(0).type == Statement::CellType::Integer && !fitsKey(select->integer(0))) {
        service().setError("table " + shown(table->name()) + ": the column " +
                           shown(table->columnNames()[static_cast<std::size_t>(wanted)]) + " holds " +
                           shown(select->bytes(0)) + ", which is no whole number of 32 bits");
        return 0;
    }
    out = cellOf(*select, 0);
    return 1;
}

int columnValues(Table* table, const KorString& where, const KorString& orderBy, int column,
                 KorArray<KorCellData>& values)
{
    if (table == nullptr || !hasColumn(*table, column))
        return 0;
    Database& database = table->database();
    const std::string columnOfTable = "SELECT " + columnName(*table, column) + " FROM " + table->bracketedName();
    const std::string text = columnOfTable + '\0' + where.toUtf8() + '\0' + orderBy.toUtf8();
    const QueryResults::State state = database.state();
    if (const KorArray<KorCellData>* known = database.queryResults().find(text, state)) {
        values = *known;
        return 1;
    }
    const Query query(database, columnOfTable, where, orderBy, table->rowOrder());
    Statement* select = query.statement();
    if (select == nullptr) {
        service().setError(query.error());
        return 0;
    }
    KorArray<KorCellData> read;
    Step step;
    while ((step = select->step()) == Step::Row)
        read.append(cellOf(*select, 0));
    if (step != Step::Done) {
        database.noteFailure();
        service().setError(database.failure());
        return 0;
    }
    if (query.isOfTableAlone())
        database.queryResults().keep(text, state, read);
    values = std::move(read);
    return 1;
}

/// Adds the columns of a table that the merged one does not have yet, empty in the rows so far. Returns the
/// table's place of each merged column, -1 where it has none.
std::vector<int> mergeColumns(Table& table, long rows, KorPartialTable& merged)
{
    std::vector<int> places;
    for (const KorColumn& column : merged.getColumns())
        places.push_back(table.columnIndex(column.getName().toUtf8()));
    for (std::size_t i = 0; i < table.columns().size(); ++i) {
        if (std::find(places.begin(), places.end(), static_cast<int>(i)) != places.end())
            continue;
        const TableColumn& column = table.columns()[i];
        merged.getColumns().append(KorColumn(KorString::fromUtf8(column.name), column.type));
        KorColumnData values;
        for (long row = 0; row < rows; ++row)
            values.append(KorString());
        merged.getData().append(values);
        places.push_back(static_cast<int>(i));
    }
    return places;
}

/// Has a project table of the user give out no key of a shipped record, which the new one would hide.
void noteShippedKeys(eDSN dsn, Table& table)
{
    const RecordDescription* type = dsn == KorDSNDefinitions::kAddin ? records::ofTable(table.name()) : nullptr;
    Table* shipped = type != nullptr && records::isProjectTable(*type)
                         ? findTable(KorDSNDefinitions::kConfiguration, KorString::fromUtf8(table.name()))
                         : nullptr;
    if (shipped != nullptr)
        table.keyTaken(shipped->freeKey() - 1);
}

/// A file that the caller names, as the working directory has it.
std::string absolute(const KorString& file)
{
    std::error_code code;
    return std::filesystem::absolute(file.toUtf8(), code).lexically_normal().string();
}

bool copy(Database& database, Table& from, const KorString& to)
{
    std::string columns;
    std::map<int, std::string> key; // the primary key by place
    for (const TableColumn& column : from.columns())
        if (column.inPrimaryKey > 0)
            key[column.inPrimaryKey] = bracketed(column.name);
    for (const TableColumn& column : from.columns())
        columns += (columns.empty() ? "" : ", ") + bracketed(column.name) + " " + column.declaration +
                   (column.inPrimaryKey > 0 && key.size() == 1 ? " PRIMARY KEY" : "");
    for (auto part = key.begin(); key.size() > 1 && part != key.end(); ++part)
        columns += (part == key.begin() ? ", PRIMARY KEY (" : ", ") + part->second;
    columns += key.size() > 1 ? ")" : "";
    const std::string source = from.bracketedName(), target = bracketed(to.toUtf8());
    const bool copied =
        database.run("CREATE TABLE " + target + " (" + columns + ")") &&
        database.run("INSERT INTO " + target + " SELECT * FROM " + source); // unordered: rows go over undecoded
    database.tablesChanged({to.toUtf8()});
    return copied;
}

} // namespace

int KorDatabaseAccess::doSQLStatement(const eDSN& dsn, const KorString& sql)
{
    return executed(dsn, [&](Database& database) { return database.execute(sql); });
}

int KorDatabaseAccess::doSQLStatement(const eDSN& dsn, const KorString& pattern,
                                      std::span<const KorFormatArgument> values)
{
    return executed(dsn, [&](Database& database) { return database.execute(pattern.view(), values); });
}

int KorDatabaseAccess::getTableStructure(eDSN dsn, const KorString& name, KorArray<KorColumn>& columns)
{
    Table* table = tableIn(dsn, name);
    if (table == nullptr || table->columns().empty())
        return 0;
    columns.removeAll();
    for (const TableColumn& column : table->columns()) {
        KorColumn described(KorString::fromUtf8(column.name), column.type);
        described.setKey(column.inPrimaryKey > 0);
        columns.append(described);
    }
    return 1;
}

int KorDatabaseAccess::getNumberOfColumns(eDSN dsn, const KorString& name)
{
    Table* table = tableIn(dsn, name);
    return table == nullptr ? 0 : static_cast<int>(table->columns().size());
}

int KorDatabaseAccess::getTablesNames(const eDSN& dsn, KorArray<KorString>& names)
{
    Database* database = service().database(dsn);
    if (database == nullptr)
        return 0;
    database->validate();
    if (!database->canListTables()) {
        service().setError("data source " + KorDSNDefinitions::m_DataSourceNames[dsn].toUtf8() + ": " +
                               database->path() + ": " + database->lastError(),
                           database->failure().kind);
        return 0;
    }
    names.removeAll();
    for (const std::string& name : database->tableNames())
        names.append(KorString::fromUtf8(name));
    return 1;
}

int KorDatabaseAccess::doesTableExists(const eDSN& dsn, const KorString& table)
{
    return findTable(dsn, table) != nullptr ? 1 : 0;
}

int KorDatabaseAccess::doesColumnExists(const eDSN& dsn, const KorString& name, const KorString& column)
{
    Table* table = findTable(dsn, name);
    return table != nullptr && table->columnIndex(column.toUtf8()) >= 0 ? 1 : 0;
}

int KorDatabaseAccess::copyTable(eDSN dsn, const KorString& from, const KorString& to, bool keepExisting)
{
    Table* table = tableIn(dsn, from);
    return written(
        table,
        [&] {
            Database& database = table->database();
            if (!database.flush() || table->columns().empty() || database.isRefused(to.toUtf8()))
                return false;
            if (database.table(to) != nullptr) {
                if (keepExisting || !database.run("DROP TABLE " + bracketed(to.toUtf8())))
                    return false;
                database.tablesChanged({to.toUtf8()});
            }
            return copy(database, *table, to);
        },
        KorDatabaseBatch::Kind::Whole);
}

int KorDatabaseAccess::resetCachedTable(eDSN dsn, const KorString& table)
{
    Database* database = service().database(dsn);
    if (database == nullptr)
        return 0;
    database->checkBeforeNextRead();
    (void)table; // own changes are noted row by row; only those of other processes are left to look for
    return 1;
}

int KorDatabaseAccess::appendNewLine(eDSN dsn, const KorString& name, KorCellData& key, bool returnKey,
                                     bool keepKey)
{
    Table* table = tableIn(dsn, name);
    return written(table, [&] {
        Database& database = table->database();
        const int column = table->keyColumn();
        if (!database.flush() || column < 0)
            return false;
        Value newKey;
        if (keepKey) {
            newKey = keyValue(*table, column, key);
            if (!isKey(*table, column, newKey)) {
                database.setError("table " + shown(table->name()) + ": " + shown(key.getStringW().toUtf8()) +
                                  " is no key");
                return false;
            }
            if (table->hasKey(newKey, column))
                return false;
        } else {
            noteReferredKeys(*table);
            noteShippedKeys(dsn, *table);
            const std::int64_t free = table->freeKey();
            if (free <= 0) {
                database.setError("table " + shown(table->name()) + ": no key is free");
                return false;
            }
            const bool isText = table->columns()[static_cast<std::size_t>(column)].type == KorItemType::kString;
            newKey = isText ? Value(KorString::format(L"%d", static_cast<int>(free))) : Value(free);
            table->keyTaken(free);
        }
        // a table that may refuse a row for more than a missing value is asked now
        if (!table->mayWait() && !table->insertCells(newKey, {}))
            return false;
        if (const auto* number = std::get_if<std::int64_t>(&newKey))
            table->keyTaken(*number);
        if (returnKey) {
            if (const auto* number = std::get_if<std::int64_t>(&newKey))
                key.setData(static_cast<int>(*number));
            else if (const auto* text = std::get_if<KorString>(&newKey))
                key.setData(*text);
        }
        if (table->mayWait())
            database.pending() = Database::PendingRow{table, std::move(newKey), true, {}, Database::batchDepth};
        return true;
    });
}

int KorDatabaseAccess::setRecord(eDSN dsn, const KorString& name, const RecordDescription& type,
                                 const KorCellData& keyCell, const void* record)
{
    Table* table = tableIn(dsn, name);
    return written(table, [&] {
        Database& database = table->database();
        const int column = table->keyColumn();
        if (column < 0)
            return false;
        const Value key = keyValue(*table, column, keyCell);
        auto& pending = database.pending();
        if (pending && pending->isNew && pending->table == table && pending->cells.empty() &&
            pending->key == key) {
            pending.reset();
            return table->insertRecord(type, key, record);
        }
        return database.flush() && table->updateRecord(type, key, record);
    });
}

int KorDatabaseAccess::setTableColumnValue(eDSN dsn, const KorString& name, const KorString& keyColumn,
                                           const KorString& keyText, int columnIndex, const KorCellData& value)
{
    Table* table = tableIn(dsn, name);
    return written(table, [&] {
        Database& database = table->database();
        const int by = table->columnIndex(keyColumn.toUtf8());
        if (by < 0 || !hasColumn(*table, columnIndex))
            return false;
        const Value key = keyValue(*table, by, keyText);
        auto& pending = database.pending();
        const bool isKey = by == table->keyColumn();
        const TableColumn& column = table->columns()[static_cast<std::size_t>(columnIndex)];
        if (column.notNull && value.getType() == KorItemType::kNone) {
            database.setError("table " + shown(table->name()) + ": the column " + shown(column.name) +
                              " must not be empty");
            return false;
        }
        if (!isKey || columnIndex == by || !table->mayWait())
            return database.flush() && table->updateCells(key, by, {{columnIndex, valueOf(value)}});
        if (!pending || pending->table != table || pending->key != key) {
            if (!database.flush())
                return false;
            if (!table->hasKey(key, by)) {
                database.setError("table " + shown(table->name()) + ": there is no row of key " +
                                  shown(keyText.toUtf8()));
                return false;
            }
            pending = Database::PendingRow{table, key, false, {}, Database::batchDepth};
        }
        pending->cells[columnIndex] = valueOf(value);
        return true;
    });
}

int KorDatabaseAccess::getTableColumnValue(eDSN dsn, const KorString& name, const KorString& keyColumn,
                                           const KorCellData& key, int columnIndex, KorCellData& out)
{
    Table* table = readable(dsn, name);
    const int by = table == nullptr ? -1 : table->columnIndex(keyColumn.toUtf8());
    return by < 0 ? 0 : cellWhere(table, by, keyValue(*table, by, key), columnIndex, out);
}

int KorDatabaseAccess::getTableColumnValueDwgFirst(eDSN dsn, const KorString& table, const KorString& keyColumn,
                                                   const KorCellData& key, int columnIndex, KorCellData& out)
{
    const KorDSNRequest drawing(KorDSNDefinitions::kProject, KorDSNSetDwgSource::GeteIndexForDwg());
    return getTableColumnValue(KorDSNDefinitions::kProject, table, keyColumn, key, columnIndex, out) == 1
               ? 1
               : getTableColumnValue(dsn, table, keyColumn, key, columnIndex, out);
}

int KorDatabaseAccess::deleteLine(const KorString& name, const KorCellData& key)
{
    Table* table = resolved(name);
    return written(table, [&] {
        const int column = table->keyColumn();
        return column >= 0 && table->deleteRow(keyValue(*table, column, key), column);
    });
}

int KorDatabaseAccess::getColumnValues(const KorString& table, const KorString& where, const KorString& orderBy,
                                       int columnIndex, KorArray<KorCellData>& values)
{
    return columnValues(resolved(table), where, orderBy, columnIndex, values);
}

int KorDatabaseAccess::getColumnValues(eDSN dsn, const KorString& table, const KorString& where,
                                       const KorString& orderBy, int columnIndex, KorArray<KorCellData>& values)
{
    return columnValues(readable(dsn, table), where, orderBy, columnIndex, values);
}

int KorDatabaseAccess::getKeyAtRunname(const KorString& name, const KorString& runName, KorCellData& key)
{
    Table* table = resolved(name);
    return table == nullptr ? 0 : cellWhere(table, 1, runName, table->keyColumn(), key);
}

int KorDatabaseAccess::getRunnameAtKey(const KorString& name, const KorCellData& key, KorString& runName)
{
    Table* table = resolved(name);
    KorCellData cell;
    const int by = table == nullptr ? -1 : table->keyColumn();
    if (by < 0 || cellWhere(table, by, keyValue(*table, by, key), 1, cell) != 1)
        return 0;
    runName = cell.getStringW();
    return 1;
}

int KorDatabaseAccess::getTableAllSources(eDSN dsn, const KorString& name, KorPartialTable& out)
{
    const std::vector<Table*> tables = service().tablesOfAllSources(name, dsn);
    if (tables.empty())
        return 0;
    KorPartialTable merged;
    long rows = 0; // so far
    for (Table* table : tables) {
        const std::vector<int> places = mergeColumns(*table, rows, merged);
        Statement* select =
            table->database().prepare("SELECT * FROM " + table->bracketedName() + table->rowOrder());
        if (select == nullptr) {
            service().setError(table->database().failure());
            return 0;
        }
        const StatementRun run(*select);
        Step step;
        for (; (step = select->step()) == Step::Row; ++rows)
            for (std::size_t i = 0; i < places.size(); ++i)
                merged.getData()
                    .getAt(static_cast<long>(i))
                    .append(places[i] < 0 ? KorString() : cellOf(*select, places[i]).getStringW());
        if (step != Step::Done) {
            table->database().noteFailure();
            service().setError(table->database().failure());
            return 0;
        }
    }
    out = merged;
    return 1;
}

int KorDatabaseAccess::getDSNandTableName(const KorString& logical, KorString& physical, eDSN& dsn)
{
    KorString target;
    if (service().alias(logical, target)) {
        physical = target;
        dsn = KorDSNDefinitions::kUnresolved;
        return 1;
    }
    const eDSN found = service().dataSourceOf(logical);
    physical = logical;
    dsn = found;
    return found == KorDSNDefinitions::kUnresolved ? 0 : 1;
}

KorString KorDatabaseAccess::getTableName(const KorString& logical)
{
    KorString name = logical;
    for (int depth = 0; depth < 8 && service().alias(name, name); ++depth) {
    }
    return name;
}

int KorDatabaseAccess::getConnectionString(eDSN dsn, KorString& connection)
{
    const std::string text = service().connectionString(dsn);
    if (text.empty())
        return 0;
    connection = KorString::fromUtf8(text);
    return 1;
}

int KorDatabaseAccess::setConnectionString(eDSN dsn, const KorString& connection)
{
    return service().setConnectionString(dsn, connection.toUtf8()) ? 1 : 0;
}

int KorDatabaseAccess::setConnection(eDSN dsn, const KorString& file)
{
    return service().setConnectionString(dsn, std::string(fileEngine().scheme) + absolute(file)) ? 1 : 0;
}

int KorDatabaseAccess::detachDatabase(const KorString& file) { return service().detach(absolute(file)) ? 1 : 0; }

int KorDatabaseAccess::createDetailProcessDatabase(const KorString& file)
{
    HostError error;
    if (createDetailDatabase(absolute(file), error))
        return 1;
    service().setError(error);
    return 0;
}

bool KorDatabaseAccess::checkDbEngine(bool)
{
    return fileEngine().isUsable() &&
           service().database(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase) != nullptr;
}

KorString KorDatabaseAccess::getDateTimeFormat() { return KorString(L"%Y-%m-%d %H:%M:%S"); }

int KorDatabaseAccess::claimTable(eDSN dsn, const KorString& table)
{
    Database* database = service().database(dsn);
    if (database == nullptr)
        return 0;
    const std::string name = table.toUtf8();
    Claims& claims = database->claims();
    if (claims.holds(name)) {
        if (claims.isLeaving(name)) {
            claims.setLeaving(name, false);
            service().whenUndone(database, [&claims, name] { claims.setLeaving(name, true); });
        }
        return 1;
    }
    HostError reason;
    if (!claims.take(name, reason)) {
        service().setError("table " + name + " " + reason.text, reason.kind);
        return 0;
    }
    service().whenUndone(database, [&claims, name] { claims.giveBack(name); });
    return 1;
}

int KorDatabaseAccess::releaseTable(eDSN dsn, const KorString& table)
{
    Database* database = service().database(dsn);
    const std::string name = table.toUtf8();
    if (database == nullptr || !database->claims().holds(name))
        return 0;
    Claims& claims = database->claims();
    claims.setLeaving(name, true);
    service().whenUndone(database, [&claims, name] { claims.setLeaving(name, false); });
    service().whenStored(database, [&claims, name] {
        if (claims.isLeaving(name))
            claims.giveBack(name);
    });
    return 1;
}

int KorDatabaseAccess::isTableClaimed(eDSN dsn, const KorString& table)
{
    Database* database = service().database(dsn);
    return database != nullptr && database->claims().holds(table.toUtf8()) ? 1 : 0;
}

int KorDatabaseAccess::checkTable(eDSN dsn, const RecordDescription& type, bool forWriting)
{
    Table* table = tableIn(dsn, service().physicalName(type));
    if (table == nullptr)
        return 0;
    Database& database = table->database();
    const std::string misfit = misfitOf(database, type, forWriting ? Use::Write : Use::Read);
    if (misfit.empty() && (!forWriting || !database.isRefused(table->name())))
        return 1;
    service().setError(misfit.empty() ? database.failure() : HostError{FailureKind::Layout, misfit});
    return 0;
}

int KorDatabaseBatch::lock(eDSN dsn)
{
    Database* database = service().database(dsn);
    if (database == nullptr || !service().inBatch())
        return 0;
    if (database->beginWrite())
        return 1;
    service().setError(database->failure());
    return 0;
}

void KorDatabaseBatch::whenUndone(eDSN dsn, std::function<void()> undo)
{
    if (service().inBatch())
        service().whenUndone(service().database(dsn), std::move(undo));
}

KorDatabaseBatch::KorDatabaseBatch(Kind kind)
    : m_open(kind == Kind::Whole || !service().inBatch()), m_exceptions(std::uncaught_exceptions())
{
    if (m_open)
        service().beginBatch();
}

int KorDatabaseBatch::end(int result)
{
    return !std::exchange(m_open, false) || service().endBatch(true) ? result : 0;
}

int KorDatabaseBatch::undo(int result)
{
    if (std::exchange(m_open, false))
        service().endBatch(false);
    return result;
}

KorDatabaseReading::KorDatabaseReading(eDSN dsn) : m_reading(service().beginReading(service().database(dsn))) {}

KorDatabaseReading::~KorDatabaseReading() = default;
