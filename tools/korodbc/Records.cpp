#include "Records.h"

#include <korodbc/records/Registry.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/RecordAccess.h>

#include <algorithm>
#include <optional>

namespace {

bool isNumber(FieldKind kind) { return kind != FieldKind::Text; }

} // namespace

std::string ownerOfItems(const std::string& table)
{
    for (const auto describe : records::all())
        if (describe().items.exists() && sameName(std::string(describe().items.item().table), table))
            return std::string(describe().table);
    return {};
}

std::vector<std::string> tableNames(const Source& source)
{
    const KorDSNRequest request(source.dsn, source.index);
    KorArray<KorString> stored;
    KorDatabaseAccess::getTablesNames(source.dsn, stored);
    return texts(stored);
}

StoredTable findTable(const std::string& wanted, const std::string& sourceName)
{
    const std::vector<Source> sources =
        sourceName.empty() ? allSources() : std::vector<Source>{sourceNamed(sourceName)};
    std::vector<std::string> known;
    std::string unusable;
    const auto find = [&](const std::string& name) -> std::optional<StoredTable> {
        for (const Source& source : sources) {
            if (!canBeUsed(source))
                unusable = "; data source " + source.name + " cannot be used, see: korodbc status";
            else
                for (const std::string& stored : tableNames(source)) {
                    if (sameName(stored, name))
                        return StoredTable{stored, source, records::ofTable(stored)};
                    known.push_back(stored);
                }
        }
        return std::nullopt;
    };
    if (const auto table = find(wanted))
        return *table;
    if (const auto table = find(KorDatabaseAccess::getTableName(KorString::fromUtf8(wanted)).toUtf8()))
        return *table;
    std::sort(known.begin(), known.end());
    known.erase(std::unique(known.begin(), known.end()), known.end());
    throw Failure{kNotFound, "there is no table " + quote(wanted) +
                                 (sourceName.empty() ? "" : " in data source " + sources.front().name) +
                                 nearest(wanted, known) +
                                 (unusable.empty() ? "; list them with: korodbc tables" : unusable)};
}

long numberOfRows(const StoredTable& table)
{
    const KorDSNRequest request(table.source.dsn, table.source.index);
    KorArray<KorCellData> cells;
    return KorDatabaseAccess::getColumnValues(table.source.dsn, KorString::fromUtf8(table.name), {}, {}, 0,
                                              cells) == 1
               ? cells.length()
               : -1;
}

Failure unreadable(const RecordDescription& type)
{
    if (bareReason().empty()) { // asked for where the table belongs
        unsigned dsn = KorDSNManager::getInstance().getCurrentDSN();
        if (!type.homes.contains(static_cast<eDSN>(dsn)))
            for (dsn = 0; dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn)
                if (type.homes.contains(static_cast<eDSN>(dsn)))
                    break;
        KorDatabaseAccess::checkTable(static_cast<eDSN>(dsn), type, false);
    }
    return unreadable(type.table);
}

void requireReadable(const RecordDescription& type)
{
    AnyRecords all(type);
    if (RecordAccess::readTable(type, all.get()) != 1)
        throw unreadable(type);
}

bool readRecord(const RecordDescription& type, const std::string& keyOrName, void* record)
{
    const KorString text = KorString::fromUtf8(keyOrName);
    if (type.hasTextKey() && RecordAccess::readByKey(type, text, record) == 1)
        return true;
    if (const auto key = numberIn<long>(keyOrName);
        key && type.key >= 0 && !type.hasTextKey() && RecordAccess::readByKey(type, *key, record) == 1)
        return true;
    return type.runName >= 0 && RecordAccess::readByRunName(type, text, record) == 1;
}

std::string runNameOf(const RecordDescription& type, int key)
{
    const AnyRecord record(type);
    if (type.runName < 0 ||
        (RecordAccess::readByKey(type, long{key}, record.get()) != 1 &&
         RecordAccess::readByKey(type, long{key}, record.get(), RecordAccess::Sources::All) != 1))
        return {};
    return cellText(*type.runNameColumn(), record.get());
}

std::string keyText(const RecordDescription& type, const void* record)
{
    return type.key < 0 ? std::string() : cellText(type.keyColumn(), record);
}

std::string cellText(const ColumnDescription& column, const void* record)
{
    switch (column.kind) {
    case FieldKind::Integer:
        return std::to_string(column.integer(record));
    case FieldKind::Real:
        return KorCellData(column.real(record)).getStringW().toUtf8();
    case FieldKind::Text:
        break;
    }
    return column.text(record).toUtf8();
}

std::string numberedName(const ColumnDescription& column, long item)
{
    return KorString::format(KorString::fromUtf8(column.name), item).toUtf8();
}

std::vector<Link> linksOf(const RecordDescription& type, const void* record)
{
    std::vector<Link> links;
    const auto add = [&](const ColumnDescription& column, const void* element, const auto& labelOf) {
        if (column.link != LinkKind::None && column.kind == FieldKind::Integer)
            links.push_back({labelOf(column), &column, column.integer(element)});
    };
    const auto ownName = [](const ColumnDescription& column) { return std::string(column.name); };
    for (const ColumnDescription& column : type.columns)
        add(column, record, ownName);
    for (long i = 0; type.numbered.exists() && i < type.numbered.list.length(record); ++i)
        for (const ColumnDescription& column : type.numbered.columns)
            add(column, type.numbered.list.at(record, i),
                [&](const ColumnDescription& numbered) { return numberedName(numbered, i + 1); });
    for (long i = 0; type.items.exists() && i < type.items.list.length(record); ++i)
        for (const ColumnDescription& column : type.items.item().columns)
            add(column, type.items.list.at(record, i), [&](const ColumnDescription& item) {
                return "item " + std::to_string(i + 1) + " " + std::string(item.name);
            });
    return links;
}

Sheet sheetOf(const RecordDescription& type, long items)
{
    Sheet sheet;
    for (const ColumnDescription& column : type.columns)
        sheet.columns.push_back({std::string(column.name), isNumber(column.kind)});
    for (long item = 1; type.numbered.exists() && item <= items; ++item)
        for (const ColumnDescription& column : type.numbered.columns)
            sheet.columns.push_back({numberedName(column, item), isNumber(column.kind)});
    return sheet;
}

std::vector<std::string> rowOf(const RecordDescription& type, const void* record, long items)
{
    std::vector<std::string> row;
    for (const ColumnDescription& column : type.columns)
        row.push_back(cellText(column, record));
    const long own = type.numbered.exists() ? type.numbered.list.length(record) : 0;
    for (long item = 0; type.numbered.exists() && item < items; ++item)
        for (const ColumnDescription& column : type.numbered.columns)
            row.push_back(item < own ? cellText(column, type.numbered.list.at(record, item)) : std::string());
    return row;
}

void addItems(const RecordDescription& type, const void* record, Sheet& sheet)
{
    if (!type.items.exists())
        return;
    const RecordDescription& item = type.items.item();
    if (sheet.columns.empty())
        sheet = sheetOf(item, 0);
    for (long i = 0; i < type.items.list.length(record); ++i)
        sheet.rows.push_back(rowOf(item, type.items.list.at(record, i), 0));
}

Sheet readStored(const StoredTable& table, const std::string& keyOrName, const KorString& where)
{
    const KorString name = KorString::fromUtf8(table.name);
    KorArray<KorColumn> columns;
    if (KorDatabaseAccess::getTableStructure(table.source.dsn, name, columns) != 1)
        throw unreadable(table.name);
    Sheet sheet;
    std::vector<std::vector<std::string>> rows;
    for (int i = 0; i < columns.length(); ++i) {
        const KorItemType::BaseTypes kind = columns[i].getType();
        sheet.columns.push_back(
            {columns[i].getName().toUtf8(), kind == KorItemType::kInt || kind == KorItemType::kDouble});
        KorArray<KorCellData> cells;
        if (KorDatabaseAccess::getColumnValues(table.source.dsn, name, where, {}, i, cells) != 1)
            throw unreadable(table.name);
        rows.resize(static_cast<std::size_t>(cells.length()));
        for (int row = 0; row < cells.length(); ++row)
            rows[static_cast<std::size_t>(row)].push_back(cells[row].getStringW().toUtf8());
    }
    for (std::vector<std::string>& row : rows)
        if (keyOrName.empty() || row[0] == keyOrName || (row.size() > 1 && sameName(row[1], keyOrName)))
            sheet.rows.push_back(std::move(row));
    return sheet;
}
