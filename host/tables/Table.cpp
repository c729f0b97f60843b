#include "tables/Table.h"

#include "tables/RecordCache.h"

#include <algorithm>
#include <limits>

namespace korodbc::host {

std::string bracketed(std::string_view name)
{
    if (name.find(']') == std::string_view::npos)
        return "[" + std::string(name) + "]";
    std::string text = "\"";
    for (const char c : name)
        text.append(c == '"' ? 2 : 1, c);
    return text += '"';
}

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

KorItemType::BaseTypes typeOfDeclaration(std::string_view declaration)
{
    const std::string type = lowerCase(declaration);
    const auto has = [&](std::string_view part) { return type.find(part) != std::string::npos; };
    if (has("bool"))
        return KorItemType::kBool;
    if (has("int"))
        return KorItemType::kInt;
    if (has("real") || has("floa") || has("doub"))
        return KorItemType::kDouble;
    if (has("date") || has("time"))
        return KorItemType::kTime;
    return KorItemType::kString;
}

Value valueOf(const KorCellData& cell)
{
    switch (cell.getType()) {
    case KorItemType::kBool:
    case KorItemType::kInt:
        return std::int64_t{cell.getLong()};
    case KorItemType::kDouble:
        return cell.getDouble();
    case KorItemType::kString:
    case KorItemType::kTime:
        return cell.getStringW();
    case KorItemType::kNone:
        break;
    }
    return std::monostate{};
}

KorCellData cellOf(Statement& statement, int column)
{
    switch (sqlite3_column_type(statement.handle(), column)) {
    case SQLITE_INTEGER:
        return KorCellData(static_cast<long>(statement.integer(column)));
    case SQLITE_FLOAT:
        return KorCellData(statement.real(column));
    case SQLITE_NULL:
        return KorCellData();
    default:
        return KorCellData(statement.text(column));
    }
}

Table::Table(Connection& connection, std::string name)
    : m_connection(connection), m_name(std::move(name)), m_bracketedName(bracketed(m_name))
{
}

Table::~Table() = default;

const std::vector<TableColumn>& Table::columns()
{
    if (m_columns.empty()) {
        if (Statement* info =
                m_connection.prepare("SELECT name, type, pk FROM pragma_table_xinfo(?) WHERE hidden <> 1")) {
            const StatementRun run(*info);
            info->bind(1, KorString::fromUtf8(m_name));
            while (info->step() == SQLITE_ROW) {
                std::string declaration(info->bytes(1));
                const KorItemType::BaseTypes type = typeOfDeclaration(declaration);
                m_columns.push_back(
                    {std::string(info->bytes(0)), std::move(declaration), type, info->integer(2) != 0});
            }
        }
    }
    return m_columns;
}

const std::vector<std::string>& Table::columnNames()
{
    if (m_columnNames.empty())
        for (const TableColumn& column : columns())
            m_columnNames.push_back(column.name);
    return m_columnNames;
}

void Table::learnColumnNames(const Statement& select)
{
    if (!m_columnNames.empty())
        return;
    const int count = sqlite3_column_count(select.handle());
    m_columnNames.reserve(static_cast<std::size_t>(count));
    for (int column = 1; column < count; ++column)
        m_columnNames.emplace_back(sqlite3_column_name(select.handle(), column));
}

int Table::columnIndex(std::string_view name, int likely)
{
    const auto& names = columnNames();
    const auto is = [&](std::size_t i) {
        return names[i].size() == name.size() &&
               sqlite3_strnicmp(names[i].c_str(), name.data(), static_cast<int>(name.size())) == 0;
    };
    if (static_cast<std::size_t>(likely) < names.size() && is(static_cast<std::size_t>(likely)))
        return likely;
    for (std::size_t i = 0; i < names.size(); ++i)
        if (is(i))
            return static_cast<int>(i);
    return -1;
}

int Table::keyColumn()
{
    const int named = columnIndex("Key");
    return named >= 0 ? named : columnNames().empty() ? -1 : 0;
}

const Layout& Table::layout(const RecordDescription& type)
{
    const auto known = m_layouts.find(&type);
    if (known != m_layouts.end())
        return known->second;
    Layout layout;
    layout.columns.reserve(type.columns.size());
    layout.writeOrder.reserve(type.columns.size());
    std::vector<int> late;
    const auto differs = [&](const std::string& what) {
        layout.differences += (layout.differences.empty() ? "table " + m_name + ": " : ", ") + what;
    };
    for (std::size_t i = 0; i < type.columns.size(); ++i) {
        const ColumnDescription& column = type.columns[i];
        const int index = columnIndex(column.name, static_cast<int>(i));
        layout.columns.push_back(index);
        if (index < 0)
            differs("no column " + std::string(column.name));
        if (static_cast<int>(i) == type.key)
            continue;
        if (column.writtenAfter >= 0)
            late.push_back(static_cast<int>(i));
        else
            layout.writeOrder.push_back(static_cast<int>(i));
    }
    for (const int column : late) {
        const int after = type.columns[static_cast<std::size_t>(column)].writtenAfter;
        const auto place = std::find(layout.writeOrder.begin(), layout.writeOrder.end(), after);
        layout.writeOrder.insert(place == layout.writeOrder.end() ? place : place + 1, column);
    }
    layout.firstNumbered = static_cast<int>(type.columns.size());
    if (type.numbered.exists())
        layout.numberedItems = std::max(0, static_cast<int>(columnNames().size()) - layout.firstNumbered) /
                               static_cast<int>(type.numbered.columns.size());
    return m_layouts.emplace(&type, std::move(layout)).first->second;
}

std::int64_t Table::freeKey()
{
    if (m_largestKey < 0) {
        const int column = keyColumn();
        if (column < 0)
            return 0;
        const std::string name = bracketed(columnNames()[static_cast<std::size_t>(column)]);
        Statement* select =
            m_connection.prepare("SELECT max(CAST(" + name + " AS INTEGER)) FROM " + m_bracketedName);
        if (select == nullptr)
            return 0;
        const StatementRun run(*select);
        if (select->step() != SQLITE_ROW)
            return 0;
        m_largestKey = std::max<std::int64_t>(0, select->integer(0));
    }
    return m_largestKey < std::numeric_limits<std::int32_t>::max() ? m_largestKey + 1 : 0;
}

void Table::keyTaken(std::int64_t key)
{
    if (m_largestKey >= 0)
        m_largestKey = std::max(m_largestKey, key);
}

std::int64_t Table::rowOfKey(const Value& key, int column)
{
    const std::string name = bracketed(columnNames()[static_cast<std::size_t>(column)]);
    Statement* select = m_connection.prepare("SELECT rowid FROM " + m_bracketedName + " WHERE " + name + " = ?");
    if (select == nullptr)
        return -1;
    const StatementRun run(*select);
    select->bind(1, key);
    return select->step() == SQLITE_ROW ? select->integer(0) : -1;
}

std::string Table::storeText(const RecordDescription& type, const Layout& layout, long items, bool insert)
{
    std::vector<std::string> names;
    for (const int field : layout.writeOrder)
        if (layout.columns[static_cast<std::size_t>(field)] >= 0)
            names.push_back(bracketed(
                columnNames()[static_cast<std::size_t>(layout.columns[static_cast<std::size_t>(field)])]));
    const long numbered = items * static_cast<long>(type.numbered.columns.size());
    for (long i = 0; i < numbered; ++i)
        names.push_back(bracketed(columnNames()[static_cast<std::size_t>(layout.firstNumbered + i)]));
    const std::string key = bracketed(columnNames()[static_cast<std::size_t>(keyColumn())]);
    std::string text =
        insert ? "INSERT INTO " + m_bracketedName + " (" + key : "UPDATE " + m_bracketedName + " SET ";
    std::string marks = "?";
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (insert)
            text += ", " + names[i];
        else
            text += (i == 0 ? "" : ", ") + names[i] + " = ?";
        marks += ", ?";
    }
    return insert ? text + ") VALUES (" + marks + ")" : text + " WHERE " + key + " = ?";
}

void Table::bindRecord(Statement& statement, const RecordDescription& type, const Layout& layout, long items,
                       const void* record, int position)
{
    const auto bind = [&](const ColumnDescription& column, const void* element) {
        switch (column.kind) {
        case FieldKind::Integer:
            statement.bind(position++, std::int64_t{column.integer(element)});
            break;
        case FieldKind::Real:
            statement.bind(position++, column.real(element));
            break;
        case FieldKind::Text:
            statement.bind(position++, column.text(element));
            break;
        }
    };
    for (const int field : layout.writeOrder)
        if (layout.columns[static_cast<std::size_t>(field)] >= 0)
            bind(type.columns[static_cast<std::size_t>(field)], record);
    for (long item = 0; item < items; ++item)
        for (const ColumnDescription& column : type.numbered.columns)
            bind(column, type.numbered.list.at(record, item));
}

bool Table::insertRecord(const RecordDescription& type, const Value& key, const void* record)
{
    const Layout& layout = this->layout(type);
    const long wanted = type.numbered.exists() ? type.numbered.list.length(record) : 0;
    const long items = std::min<long>(wanted, layout.numberedItems);
    Statement*& statement = m_stores[{&type, items * 2 + 1}];
    if (statement == nullptr)
        statement = m_connection.prepare(storeText(type, layout, items, true));
    if (statement == nullptr)
        return false;
    const Connection::OwnWrite own(m_connection);
    statement->bind(1, key);
    bindRecord(*statement, type, layout, items, record, 2);
    if (!m_connection.finish(*statement))
        return false;
    const std::int64_t row = sqlite3_last_insert_rowid(m_connection.handle());
    if (const auto* number = std::get_if<std::int64_t>(&key))
        keyTaken(*number);
    const long counted = type.itemCount < 0 ? wanted : type.at(type.itemCount)->integer(record);
    const bool asStored = items == wanted && (!type.numbered.exists() || counted == wanted) &&
                          (type.key < 0 || type.hasTextKey() || key == Value(std::int64_t{type.keyOf(record)}));
    for (auto& [cached, cache] : m_caches) {
        if (cached == &type && asStored)
            cache->appended(row, record);
        else
            cache->rowChanged(row);
    }
    return items == wanted && layout.differences.empty();
}

bool Table::updateRecord(const RecordDescription& type, const Value& key, const void* record)
{
    const Layout& layout = this->layout(type);
    const long wanted = type.numbered.exists() ? type.numbered.list.length(record) : 0;
    const long items = std::min<long>(wanted, layout.numberedItems);
    Statement*& statement = m_stores[{&type, items * 2}];
    if (statement == nullptr)
        statement = m_connection.prepare(storeText(type, layout, items, false));
    if (statement == nullptr)
        return false;
    bindRecord(*statement, type, layout, items, record, 1);
    statement->bind(sqlite3_bind_parameter_count(statement->handle()), key);
    return m_connection.finish(*statement) && sqlite3_changes(m_connection.handle()) > 0 && items == wanted &&
           layout.differences.empty();
}

bool Table::insertCells(const Value& key, const std::map<int, Value>& cells)
{
    std::string names = bracketed(columnNames()[static_cast<std::size_t>(keyColumn())]), marks = "?";
    for (const auto& [column, value] : cells) {
        names += ", " + bracketed(columnNames()[static_cast<std::size_t>(column)]);
        marks += ", ?";
    }
    Statement* insert =
        m_connection.prepare("INSERT INTO " + m_bracketedName + " (" + names + ") VALUES (" + marks + ")");
    if (insert == nullptr)
        return false;
    int position = 1;
    insert->bind(position++, key);
    for (const auto& [column, value] : cells)
        insert->bind(position++, value);
    if (!m_connection.finish(*insert))
        return false;
    if (const auto* number = std::get_if<std::int64_t>(&key))
        keyTaken(*number);
    return true;
}

bool Table::updateCells(const Value& key, int keyColumnIndex, const std::map<int, Value>& cells)
{
    std::string text = "UPDATE " + m_bracketedName + " SET ";
    for (const auto& [column, value] : cells)
        text += (column == cells.begin()->first ? "" : ", ") +
                bracketed(columnNames()[static_cast<std::size_t>(column)]) + " = ?";
    text += " WHERE " + bracketed(columnNames()[static_cast<std::size_t>(keyColumnIndex)]) + " = ?";
    Statement* update = m_connection.prepare(text);
    if (update == nullptr)
        return false;
    int position = 1;
    for (const auto& [column, value] : cells)
        update->bind(position++, value);
    update->bind(position, key);
    return m_connection.finish(*update) && sqlite3_changes(m_connection.handle()) > 0;
}

RecordCache& Table::recordCache(const RecordDescription& type)
{
    auto& cache = m_caches[&type];
    if (!cache)
        cache = std::make_unique<RecordCache>(*this, type);
    return *cache;
}

RecordCache* Table::records(const RecordDescription& type)
{
    RecordCache& cache = recordCache(type);
    return cache.refresh() ? &cache : nullptr;
}

void Table::rowChanged(std::int64_t row)
{
    // called while a statement runs: nothing may be asked of the database here
    m_largestKey = -1;
    for (auto& [type, cache] : m_caches)
        cache->rowChanged(row);
}

void Table::allChanged()
{
    m_largestKey = -1;
    for (auto& [type, cache] : m_caches)
        cache->allChanged();
}

void Table::forgetStatements() { m_stores.clear(); }

void Table::schemaChanged()
{
    m_columns.clear();
    m_columnNames.clear();
    m_layouts.clear();
    forgetStatements();
    allChanged();
}

} // namespace korodbc::host
