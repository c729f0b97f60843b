#include "database/RecordCache.h"
#include "database/Table.h"

#include <algorithm>

namespace korodbc::host {

namespace {

/// What stands for no value in a column that must have one.
const char* zeroOf(const TableColumn& column)
{
    const bool isText = column.type == KorItemType::kString || column.type == KorItemType::kTime;
    return isText ? ", ''" : ", 0";
}

} // namespace

std::string Table::storeText(const RecordDescription& type, const Layout& layout, long items, bool insert)
{
    std::vector<std::string> names;
    for (const int field : layout.writeOrder)
        if (layout.columns[static_cast<std::size_t>(field)] >= 0)
            names.push_back(bracketed(
                columnNames()[static_cast<std::size_t>(layout.columns[static_cast<std::size_t>(field)])]));
    const std::size_t numbered = static_cast<std::size_t>(items) * type.numbered.columns.size();
    for (std::size_t i = 0; i < numbered; ++i)
        names.push_back(bracketed(columnNames()[static_cast<std::size_t>(layout.numbered[i])]));
    const std::string key = bracketed(columnNames()[static_cast<std::size_t>(keyColumn())]);
    std::string text =
        insert ? "INSERT INTO " + m_bracketedName + " (" + key : "UPDATE " + m_bracketedName + " SET ";
    std::string marks = "?";
    for (const TableColumn& column : columns()) {
        const std::string name = bracketed(column.name);
        if (!insert || !column.required() || name == key ||
            std::find(names.begin(), names.end(), name) != names.end())
            continue;
        text += ", " + name;
        marks += zeroOf(column);
    }
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
    const long items = type.numbered.exists() ? type.numbered.list.length(record) : 0;
    if (refused(type, layout, items))
        return false;
    Statement*& statement = m_stores[{&type, items * 2 + 1}];
    if (statement == nullptr)
        statement = m_database.prepare(storeText(type, layout, items, true));
    if (statement == nullptr)
        return false;
    const Database::OwnWrite own(m_database);
    statement->bind(1, key);
    bindRecord(*statement, type, layout, items, record, 2);
    if (!m_database.finish(*statement))
        return false;
    if (const auto* number = std::get_if<std::int64_t>(&key))
        keyTaken(*number);
    const long counted = type.itemCount < 0 ? items : type.at(type.itemCount)->integer(record);
    const bool asStored = (!type.numbered.exists() || counted == items) &&
                          (type.key < 0 || type.hasTextKey() || key == Value(std::int64_t{type.keyOf(record)}));
    const std::vector<Touched::Rows>& rows = statement->touched().rows;
    if (rows.empty() || rows.back().ids.empty() || rowId().empty()) {
        allChanged();
        return true;
    }
    const std::int64_t row = rows.back().ids.back();
    for (auto& [cached, cache] : m_caches) {
        if (cached == &type && asStored)
            cache->appended(row, record);
        else
            cache->rowChanged(row);
    }
    return wrote(true);
}

bool Table::updateRecord(const RecordDescription& type, const Value& key, const void* record)
{
    const Layout& layout = this->layout(type);
    const long items = type.numbered.exists() ? type.numbered.list.length(record) : 0;
    if (refused(type, layout, items))
        return false;
    Statement*& statement = m_stores[{&type, items * 2}];
    if (statement == nullptr)
        statement = m_database.prepare(storeText(type, layout, items, false));
    if (statement == nullptr)
        return false;
    bindRecord(*statement, type, layout, items, record, 1);
    statement->bind(statement->parameters(), key);
    return wrote(m_database.finish(*statement) && statement->touched().count > 0);
}

bool Table::insertCells(const Value& key, const std::map<int, Value>& cells)
{
    const int keyIndex = keyColumn();
    std::string names = bracketed(columnNames()[static_cast<std::size_t>(keyIndex)]), marks = "?";
    for (const auto& [column, value] : cells) {
        names += ", " + bracketed(columnNames()[static_cast<std::size_t>(column)]);
        marks += ", ?";
    }
    for (int i = 0; i < static_cast<int>(columns().size()); ++i) {
        const TableColumn& column = columns()[static_cast<std::size_t>(i)];
        if (!column.required() || i == keyIndex || cells.contains(i))
            continue;
        names += ", " + bracketed(column.name);
        marks += zeroOf(column);
    }
    Statement* insert =
        m_database.prepare("INSERT INTO " + m_bracketedName + " (" + names + ") VALUES (" + marks + ")");
    if (insert == nullptr)
        return false;
    int position = 1;
    insert->bind(position++, key);
    for (const auto& [column, value] : cells)
        insert->bind(position++, value);
    if (!wrote(m_database.finish(*insert)))
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
    Statement* update = m_database.prepare(text);
    if (update == nullptr)
        return false;
    int position = 1;
    for (const auto& [column, value] : cells)
        update->bind(position++, value);
    update->bind(position, key);
    return wrote(m_database.finish(*update) && update->touched().count > 0);
}

bool Table::deleteRow(const Value& key, int keyColumnIndex)
{
    Statement* erase =
        m_database.prepare("DELETE FROM " + m_bracketedName + " WHERE " +
                           bracketed(columnNames()[static_cast<std::size_t>(keyColumnIndex)]) + " = ?");
    if (erase == nullptr)
        return false;
    erase->bind(1, key);
    return wrote(m_database.finish(*erase) && erase->touched().count > 0);
}

bool Table::wrote(bool stored)
{
    if (rowId().empty() || (m_rules && m_rules->replacesRows))
        allChanged();
    return stored;
}

/// True, with the connection's error set, when a record with so many items does not go into the table.
bool Table::refused(const RecordDescription& type, const Layout& layout, long items)
{
    const bool judged = layout.declarationsJudged && layout.rowsJudged && layout.rowMisfit.empty();
    std::string why = judged ? layout.misfit(Use::Write) : misfit(type, Use::Write);
    if (why.empty() && items > layout.numberedItems && type.numbered.exists())
        why = "table " + shown(m_name) + ": the record has " + std::to_string(items) +
              " items, the numbered columns hold " + std::to_string(layout.numberedItems);
    if (why.empty())
        return false;
    m_database.setError(why, FailureKind::Layout);
    return true;
}

} // namespace korodbc::host
