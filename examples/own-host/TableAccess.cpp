// The table access service over maps.

#include "MapHost.h"

#include <korodbc/records/RecordDescription.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDSNManager.h>

#include <algorithm>
#include <exception>

using namespace maphost;

namespace {

struct OpenBatch {
    Store before;
    std::vector<std::function<void()>> undo;
};
std::vector<OpenBatch> batches;

/// The table that a name without data source means.
Table* resolved(const KorString& name)
{
    KorString physical;
    eDSN dsn = KorDSNDefinitions::kUnresolved;
    return KorDatabaseAccess::getDSNandTableName(name, physical, dsn) == 1 ? findTable(dsn, physical) : nullptr;
}

KorCellData cellOf(const ColumnDescription& column, const void* element)
{
    switch (column.kind) {
    case FieldKind::Integer:
        return column.integer(element);
    case FieldKind::Real:
        return column.real(element);
    case FieldKind::Text:
        break;
    }
    return column.text(element);
}

/// Puts a new row where table order has it.
void insert(Table& table, const KorCellData& key)
{
    const int column = table.keyColumn();
    Row row(static_cast<std::size_t>(table.columns.length()));
    row[static_cast<std::size_t>(column)] = key;
    auto at = table.rows.end();
    if (table.columns[column].getType() == KorItemType::kInt)
        at = std::find_if(table.rows.begin(), table.rows.end(), [&](const Row& other) {
            return other[static_cast<std::size_t>(column)].getLong() > key.getLong();
        });
    table.rows.insert(at, row);
    ++writes();
}

int cell(Table* table, int by, const KorCellData& value, int wanted, KorCellData& out)
{
    const Row* row = table != nullptr && table->has(wanted) ? table->find(by, value) : nullptr;
    if (row == nullptr)
        return 0;
    out = (*row)[static_cast<std::size_t>(wanted)];
    return 1;
}

} // namespace

namespace maphost {

int Table::column(const KorString& called) const
{
    for (int i = 0; i < columns.length(); ++i)
        if (columns[i].getName().compareNoCase(called) == 0)
            return i;
    return -1;
}

Row* Table::find(int column, const KorCellData& value)
{
    if (!has(column))
        return nullptr;
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) {
        const KorCellData& cell = row[static_cast<std::size_t>(column)];
        return cell.getType() != KorItemType::kNone && cell.getStringW() == value.getStringW();
    });
    return found == rows.end() ? nullptr : &*found;
}

Store& store()
{
    static Store store;
    return store;
}

long& writes()
{
    static long count = 0;
    return count;
}

Place placeOf(eDSN dsn, const KorString& name) { return {dsn, name.foldedCase()}; }

Table* findTable(eDSN dsn, const KorString& name)
{
    const auto found = store().tables.find(placeOf(dsn, name));
    return found == store().tables.end() ? nullptr : &found->second;
}

KorString numberedName(const ColumnDescription& column, int item)
{
    return KorString::format(KorString::fromUtf8(column.name), item);
}

void makeTable(eDSN dsn, const RecordDescription& type)
{
    constexpr KorItemType::BaseTypes types[] = {KorItemType::kInt, KorItemType::kDouble, KorItemType::kString};
    const auto typeOf = [&](const ColumnDescription& column) { return types[static_cast<int>(column.kind)]; };
    Table table;
    table.name = KorString::fromUtf8(type.table);
    for (const ColumnDescription& column : type.columns) {
        table.columns.append(KorColumn(KorString::fromUtf8(column.name), typeOf(column)));
        table.columns[table.columns.length() - 1].setKey(column.role == ColumnRole::Key);
    }
    for (int item = 1; item <= type.numbered.initialItems; ++item)
        for (const ColumnDescription& column : type.numbered.columns)
            table.columns.append(KorColumn(numberedName(column, item), typeOf(column)));
    store().tables[placeOf(dsn, table.name)] = table;
    ++writes();
}

} // namespace maphost

int KorDatabaseAccess::doSQLStatement(const eDSN&, const KorString&) { return 0; }

int KorDatabaseAccess::doSQLStatement(const eDSN&, const KorString&, std::span<const KorFormatArgument>)
{
    return 0;
}

int KorDatabaseAccess::getTableStructure(eDSN dsn, const KorString& name, KorArray<KorColumn>& columns)
{
    const Table* table = findTable(dsn, name);
    if (table == nullptr)
        return 0;
    columns = table->columns;
    return 1;
}

int KorDatabaseAccess::getNumberOfColumns(eDSN dsn, const KorString& name)
{
    const Table* table = findTable(dsn, name);
    return table == nullptr ? 0 : table->columns.length();
}

int KorDatabaseAccess::getTablesNames(const eDSN& dsn, KorArray<KorString>& names)
{
    names.removeAll();
    for (const auto& [place, table] : store().tables)
        if (place.first == dsn)
            names.append(table.name);
    return 1;
}

int KorDatabaseAccess::doesTableExists(const eDSN& dsn, const KorString& table)
{
    return findTable(dsn, table) != nullptr ? 1 : 0;
}

int KorDatabaseAccess::doesColumnExists(const eDSN& dsn, const KorString& name, const KorString& column)
{
    const Table* table = findTable(dsn, name);
    return table != nullptr && table->column(column) >= 0 ? 1 : 0;
}

int KorDatabaseAccess::copyTable(eDSN dsn, const KorString& from, const KorString& to, bool keepExisting)
{
    const Table* table = findTable(dsn, from);
    if (table == nullptr || (keepExisting && findTable(dsn, to) != nullptr))
        return 0;
    Table copy = *table;
    copy.name = to;
    store().tables[placeOf(dsn, to)] = std::move(copy);
    ++writes();
    return 1;
}

int KorDatabaseAccess::resetCachedTable(eDSN, const KorString&) { return 1; }

int KorDatabaseAccess::appendNewLine(eDSN dsn, const KorString& name, KorCellData& key, bool returnKey,
                                     bool keepKey)
{
    Table* table = findTable(dsn, name);
    if (table == nullptr)
        return 0;
    const int column = table->keyColumn();
    KorCellData newKey = key;
    if (!keepKey) {
        int largest = 0;
        for (const Row& row : table->rows)
            largest = std::max(largest, row[static_cast<std::size_t>(column)].getInt());
        newKey = KorCellData(largest + 1);
        if (table->columns[column].getType() == KorItemType::kString)
            newKey = KorCellData(newKey.getStringW());
    } else if (table->find(column, key) != nullptr) {
        return 0;
    }
    insert(*table, newKey);
    if (returnKey)
        key = newKey;
    return 1;
}

int KorDatabaseAccess::setRecord(eDSN dsn, const KorString& name, const RecordDescription& type,
                                 const KorCellData& key, const void* record)
{
    Table* table = findTable(dsn, name);
    Row* row = table == nullptr ? nullptr : table->find(table->keyColumn(), key);
    if (row == nullptr)
        return 0;
    Row changed = *row;
    const auto set = [&](const KorString& called, const KorCellData& value) {
        const int at = table->column(called);
        if (at >= 0 && at != table->keyColumn())
            changed[static_cast<std::size_t>(at)] = value;
        return at >= 0;
    };
    for (const ColumnDescription& column : type.columns)
        if (!set(KorString::fromUtf8(column.name), cellOf(column, record)))
            return 0;
    const int items = type.numbered.exists() ? static_cast<int>(type.numbered.list.length(record)) : 0;
    for (int item = 0; item < items; ++item)
        for (const ColumnDescription& column : type.numbered.columns)
            if (!set(numberedName(column, item + 1), cellOf(column, type.numbered.list.at(record, item))))
                return 0;
    *row = std::move(changed);
    ++writes();
    return 1;
}

int KorDatabaseAccess::setTableColumnValue(eDSN dsn, const KorString& name, const KorString& keyColumn,
                                           const KorString& keyValue, int columnIndex, const KorCellData& value)
{
    Table* table = findTable(dsn, name);
    const int by = table == nullptr || !table->has(columnIndex) ? -1 : table->column(keyColumn);
    if (by < 0 || table->find(by, KorCellData(keyValue)) == nullptr)
        return 0;
    std::vector<Row*> found; // before any of them changes
    for (Row& row : table->rows)
        if (row[static_cast<std::size_t>(by)].getStringW() == keyValue)
            found.push_back(&row);
    for (Row* row : found)
        (*row)[static_cast<std::size_t>(columnIndex)] = value;
    ++writes();
    return 1;
}

int KorDatabaseAccess::getTableColumnValue(eDSN dsn, const KorString& name, const KorString& keyColumn,
                                           const KorCellData& key, int columnIndex, KorCellData& out)
{
    Table* table = findTable(dsn, name);
    return table == nullptr ? 0 : cell(table, table->column(keyColumn), key, columnIndex, out);
}

int KorDatabaseAccess::deleteLine(const KorString& name, const KorCellData& key)
{
    Table* table = resolved(name);
    if (table == nullptr || table->find(table->keyColumn(), key) == nullptr)
        return 0;
    std::erase_if(table->rows, [&](const Row& row) {
        return row[static_cast<std::size_t>(table->keyColumn())].getStringW() == key.getStringW();
    });
    ++writes();
    return 1;
}

int KorDatabaseAccess::getColumnValues(eDSN dsn, const KorString& name, const KorString& where,
                                       const KorString& orderBy, int column, KorArray<KorCellData>& values)
{
    const Table* table = findTable(dsn, name);
    if (table == nullptr || !table->has(column) || !where.isEmpty() || !orderBy.isEmpty())
        return 0;
    values.removeAll();
    for (const Row& row : table->rows)
        values.append(row[static_cast<std::size_t>(column)]);
    return 1;
}

int KorDatabaseAccess::getColumnValues(const KorString& name, const KorString& where, const KorString& orderBy,
                                       int column, KorArray<KorCellData>& values)
{
    KorString physical;
    eDSN dsn = KorDSNDefinitions::kUnresolved;
    return getDSNandTableName(name, physical, dsn) == 1
               ? getColumnValues(dsn, physical, where, orderBy, column, values)
               : 0;
}

int KorDatabaseAccess::getKeyAtRunname(const KorString& name, const KorString& runName, KorCellData& key)
{
    Table* table = resolved(name);
    return table == nullptr ? 0 : cell(table, 1, KorCellData(runName), table->keyColumn(), key);
}

int KorDatabaseAccess::getRunnameAtKey(const KorString& name, const KorCellData& key, KorString& runName)
{
    Table* table = resolved(name);
    KorCellData found;
    if (table == nullptr || cell(table, table->keyColumn(), key, 1, found) != 1)
        return 0;
    runName = found.getStringW();
    return 1;
}

int KorDatabaseAccess::getTableAllSources(eDSN, const KorString&, KorPartialTable&) { return 0; }

int KorDatabaseAccess::claimTable(eDSN dsn, const KorString& table)
{
    store().claims.insert(placeOf(dsn, table));
    return 1;
}

int KorDatabaseAccess::releaseTable(eDSN dsn, const KorString& table)
{
    return static_cast<int>(store().claims.erase(placeOf(dsn, table)));
}

int KorDatabaseAccess::isTableClaimed(eDSN dsn, const KorString& table)
{
    return store().claims.contains(placeOf(dsn, table)) ? 1 : 0;
}

int KorDatabaseAccess::checkTable(eDSN dsn, const RecordDescription& type, bool)
{
    const Table* table = findTable(dsn, KorString::fromUtf8(type.table));
    const auto has = [&](const ColumnDescription& column) {
        return table->column(KorString::fromUtf8(column.name)) >= 0;
    };
    return table != nullptr && std::all_of(type.columns.begin(), type.columns.end(), has) ? 1 : 0;
}

int KorDatabaseAccess::getDSNandTableName(const KorString& logical, KorString& physical, eDSN& dsn)
{
    physical = logical;
    dsn = KorDSNManager::getInstance().getCurrentDSN();
    for (unsigned next = 0; findTable(dsn, logical) == nullptr; ++next) {
        if (next == KorDSNDefinitions::kNumberOfDataSources) {
            dsn = KorDSNDefinitions::kUnresolved;
            return 0;
        }
        dsn = static_cast<eDSN>(next);
    }
    return 1;
}

KorString KorDatabaseAccess::getTableName(const KorString& logical) { return logical; }
int KorDatabaseAccess::getConnectionString(eDSN, KorString&) { return 0; }
int KorDatabaseAccess::setConnectionString(eDSN, const KorString&) { return 0; }
int KorDatabaseAccess::setConnection(eDSN, const KorString&) { return 0; }
int KorDatabaseAccess::detachDatabase(const KorString&) { return 0; }
int KorDatabaseAccess::createDetailProcessDatabase(const KorString&) { return 0; }
bool KorDatabaseAccess::checkDbEngine(bool) { return true; }

KorDatabaseBatch::KorDatabaseBatch(Kind kind)
    : m_open(kind == Kind::Whole || batches.empty()), m_exceptions(std::uncaught_exceptions())
{
    if (m_open)
        batches.push_back({store(), {}});
}

int KorDatabaseBatch::end(int result)
{
    if (!std::exchange(m_open, false))
        return result;
    const std::vector<std::function<void()>> undo = std::move(batches.back().undo);
    batches.pop_back();
    if (!batches.empty())
        batches.back().undo.insert(batches.back().undo.end(), undo.begin(), undo.end());
    return result;
}

int KorDatabaseBatch::undo(int result)
{
    if (!std::exchange(m_open, false))
        return result;
    const OpenBatch batch = std::move(batches.back());
    batches.pop_back();
    store() = batch.before;
    ++writes();
    for (auto act = batch.undo.rbegin(); act != batch.undo.rend(); ++act)
        (*act)();
    return result;
}

int KorDatabaseBatch::lock(eDSN) { return batches.empty() ? 0 : 1; }

void KorDatabaseBatch::whenUndone(eDSN, std::function<void()> undo)
{
    if (!batches.empty())
        batches.back().undo.push_back(std::move(undo));
}

KorDatabaseReading::KorDatabaseReading(eDSN) {}
KorDatabaseReading::~KorDatabaseReading() = default;
