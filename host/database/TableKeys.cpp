#include "database/RecordCache.h"
#include "database/Table.h"

#include <algorithm>

namespace korodbc::host {

int Table::keyColumn()
{
    const int named = columnIndex("Key");
    return named >= 0 ? named : columnNames().empty() ? -1 : 0;
}

bool Table::isPrimaryKey(int column)
{
    return columns()[static_cast<std::size_t>(column)].inPrimaryKey == 1 &&
           std::none_of(columns().begin(), columns().end(),
                        [](const TableColumn& other) { return other.inPrimaryKey > 1; });
}

bool Table::isRowId(int column)
{
    return isPrimaryKey(column) && !rowId().empty() &&
           lowerCase(columns()[static_cast<std::size_t>(column)].declaration) == "integer";
}

bool Table::readsEveryKey(const RecordDescription& type)
{
    return type.key < 0 ||
           (!type.hasTextKey() && isRowId(layout(type).columns[static_cast<std::size_t>(type.key)]));
}

/// A row whose key no record can have.
std::string Table::keyMisfit(const RecordDescription& type)
{
    const int column = type.key < 0 ? -1 : layout(type).columns[static_cast<std::size_t>(type.key)];
    if (column < 0)
        return {};
    const std::string& name = columnNames()[static_cast<std::size_t>(column)];
    const std::string key = bracketed(name), from = " FROM " + m_bracketedName;
    const std::string range = " NOT BETWEEN " + std::to_string(smallestKey) + " AND " + std::to_string(largestKey);
    std::string found;
    const auto holds = [&](const std::string& question, const char* what) {
        Statement* select = found.empty() ? m_database.prepare(question) : nullptr;
        if (select == nullptr)
            return;
        const StatementRun run(*select);
        if (select->step() == Step::Row)
            found = "table " + shown(m_name) + ": the column " + shown(name) +
                    (select->isNull(0) ? " is empty in a row" : " holds " + shown(select->bytes(0)) + what);
    };
    constexpr const char* noKey = ", which is no whole number of 32 bits";
    if (isRowId(column)) {
        for (const std::string end : {"min(", "max("})
            holds("SELECT k FROM (SELECT " + end + key + ") AS k" + from + ") WHERE k" + range, noKey);
        return found;
    }
    holds("SELECT " + key + from + " WHERE " + key + " IS NULL" +
              (type.hasTextKey() ? "" : " OR typeof(" + key + ") <> 'integer' OR " + key + range) + " LIMIT 1",
          noKey);
    if (!isPrimaryKey(column))
        holds("SELECT " + key + from + " GROUP BY " + key + " HAVING count(*) > 1 LIMIT 1", " in several rows");
    return found;
}

std::int64_t Table::freeKey()
{
    const int column = keyColumn();
    if (column < 0)
        return 0;
    const std::string name = bracketed(columnNames()[static_cast<std::size_t>(column)]);
    const std::string key = isRowId(column) ? name : "CAST(" + name + " AS INTEGER)";
    if (m_keysChanged) {
        Statement* select = m_database.prepare("SELECT max(" + key + ") FROM " + m_bracketedName);
        if (select == nullptr)
            return 0;
        const StatementRun run(*select);
        if (select->step() != Step::Row)
            return 0;
        keyTaken(std::min(select->integer(0), largestKey));
        m_keysChanged = false;
    }
    return m_largestKey < largestKey ? m_largestKey + 1 : freeKeyInAGap(key);
}

std::int64_t Table::freeKeyInAGap(const std::string& key)
{
    // 1: is that key taken, 2: the largest key whose successor is free
    Statement* taken = m_database.prepare("SELECT 1 FROM " + m_bracketedName + " WHERE " + key + " = ?");
    Statement* below =
        m_database.prepare("SELECT " + key + " FROM " + m_bracketedName + " WHERE " + key +
                           " BETWEEN 1 AND ? AND " + key + " + 1 NOT IN (SELECT " + key + " FROM " +
                           m_bracketedName + " WHERE " + key + " IS NOT NULL) ORDER BY 1 " + "DESC LIMIT 1");
    if (taken == nullptr || below == nullptr)
        return 0;
    const auto isFree = [&](std::int64_t number) {
        const StatementRun run(*taken);
        taken->bind(1, number);
        return taken->step() == Step::Done;
    };
    if (m_gapKey > 0 && m_gapKey < largestKey - 1 && isFree(m_gapKey + 1))
        return m_gapKey + 1;
    const StatementRun run(*below);
    below->bind(1, largestKey - 1);
    if (below->step() == Step::Row)
        return below->integer(0) + 1;
    return isFree(1) ? 1 : 0;
}

void Table::keyTaken(std::int64_t key)
{
    if (!fitsKey(key))
        return;
    if (key < largestKey)
        m_gapKey = std::max(m_gapKey, key);
    m_largestKey = std::max(m_largestKey, key);
}

void Table::keysUndone()
{
    m_largestKey = m_gapKey = 0;
    m_keysChanged = true;
    m_knowsReferred = false;
}

bool Table::hasKey(const Value& key, int column)
{
    const std::string name = bracketed(columnNames()[static_cast<std::size_t>(column)]);
    Statement* select = m_database.prepare("SELECT 1 FROM " + m_bracketedName + " WHERE " + name + " = ?");
    if (select == nullptr)
        return false;
    const StatementRun run(*select);
    select->bind(1, key);
    return select->step() == Step::Row;
}

} // namespace korodbc::host
