#include "database/RecordCache.h"

#include "database/Table.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace korodbc::host {

namespace {
// Beyond this many single rows, reading the table anew is cheaper.
constexpr std::size_t mostChangedRows = 256;
// A table up to this size is always read as a whole; of a larger one, that share of its rows is read singly
// before.
constexpr std::int64_t smallTable = 256;
constexpr std::int64_t sparseShare = 16;
// A read makes its records in steps, doubled from the first to the last; a table that is longer than that is asked
// how long it is.
constexpr long firstStep = 8, lastStep = 64, manyRows = 1024;

bool readReal(double value, double& field)
{
    field = value;
    return true;
}

bool readReal(double value, int& field)
{
    if (!(value >= static_cast<double>(smallestKey) && value <= static_cast<double>(largestKey)) ||
        value != std::trunc(value))
        return false;
    field = static_cast<int>(value);
    return true;
}

/// A number that is given as text; false when it is none. Nothing but blanks is no value.
template <class Number>
bool readText(std::string_view text, Number& field)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return true;
    text = text.substr(first, text.find_last_not_of(' ') + 1 - first);
    double value = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end.ec != std::errc() || end.ptr != text.data() + text.size())
        return false;
    return readReal(value, field);
}

/// What is no number in its cell; NULL leaves the field at its default.
template <class Number>
bool readOther(const Statement::Cell& cell, Number& field, bool required)
{
    if (cell.type == Statement::CellType::Null)
        return !required;
    return cell.type == Statement::CellType::Real ? readReal(cell.real, field) : readText(cell.text, field);
}

bool readNumber(const Statement& statement, int at, int& field, bool required)
{
    const Statement::Cell& cell = statement.cell(at);
    if (cell.type != Statement::CellType::Integer)
        return readOther(cell, field, required);
    field = static_cast<int>(cell.integer);
    return field == cell.integer;
}

bool readNumber(const Statement& statement, int at, double& field, bool required)
{
    const Statement::Cell& cell = statement.cell(at);
    if (cell.type != Statement::CellType::Real && cell.type != Statement::CellType::Integer)
        return readOther(cell, field, required);
    field = cell.type == Statement::CellType::Real ? cell.real : static_cast<double>(cell.integer);
    return true;
}
} // namespace

RecordCache::RecordCache(Table& table, const RecordDescription& type)
    : m_table(table), m_type(type), m_records(type), m_lastTexts(type.columns.size())
{
}

bool RecordCache::refresh()
{
    if (m_allChanged)
        return readAll();
    if (m_changedRows.empty())
        return true;
    m_allChanged = m_table.rowId().empty() || m_table.replacesRows();
    return m_allChanged ? readAll() : readChanged();
}

void RecordCache::allChanged()
{
    m_allChanged = true;
    m_misfit.clear();
    m_namesKnown = false;
    m_sparseLimit = -1;
    m_sparseReads = 0;
}

void RecordCache::rowChanged(std::int64_t row)
{
    m_namesKnown = false;
    m_misfit.clear();
    if (m_allChanged)
        return;
    if (m_changedRows.size() >= mostChangedRows)
        allChanged();
    else if (m_changedRows.empty() || m_changedRows.back() != row)
        m_changedRows.push_back(row);
}

bool RecordCache::decode(Statement& statement, const Layout& layout, void* record)
{
    for (std::size_t i = 0; i < m_type.columns.size(); ++i) {
        const int at = layout.columns[i] + 1;
        if (at <= 0)
            continue;
        const ColumnDescription& column = m_type.columns[i];
        // a key or the key of an owner cannot be empty
        const bool required = column.role == ColumnRole::Key || column.role == ColumnRole::ItemOwner;
        bool fits = true;
        switch (column.kind) {
        case FieldKind::Integer:
            fits = readNumber(statement, at, column.integer(record), required);
            break;
        case FieldKind::Real:
            fits = readNumber(statement, at, column.real(record), required);
            break;
        case FieldKind::Text: {
            LastText& last = m_lastTexts[i];
            const std::string_view bytes = statement.bytes(at);
            if (last.bytes != bytes) {
                last.bytes = bytes;
                last.text = KorString::fromUtf8(bytes);
            }
            column.text(record) = last.text;
            fits = !required || !statement.isNull(at);
            break;
        }
        }
        if (!fits)
            return noteMisfit(statement, layout, at - 1, column.kind);
    }
    return !m_type.numbered.exists() || decodeNumbered(statement, layout, record);
}

bool RecordCache::decodeNumbered(Statement& statement, const Layout& layout, void* record)
{
    const NumberedGroup& group = m_type.numbered;
    long items = layout.numberedItems;
    if (m_type.itemCount >= 0) {
        const long counted = m_type.at(m_type.itemCount)->integer(record);
        // a row may count items that nothing is left of, but none may stand in columns that nobody looks at
        if (counted > items && layout.itemsCut)
            return noteMisfit(statement, layout,
                              "there are numbered columns for " + std::to_string(items) + " of " +
                                  std::to_string(counted) + " items");
        items = std::clamp<long>(counted, 0, items);
    }
    group.list.resize(record, items);
    const int* next = layout.numbered.data();
    for (long item = 0; item < items; ++item) {
        void* element = group.list.at(record, item);
        for (const ColumnDescription& column : group.columns) {
            const int at = *next++ + 1;
            bool fits = true;
            switch (column.kind) {
            case FieldKind::Integer:
                fits = readNumber(statement, at, column.integer(element), false);
                break;
            case FieldKind::Real:
                fits = readNumber(statement, at, column.real(element), false);
                break;
            case FieldKind::Text:
                column.text(element) = statement.text(at);
                break;
            }
            if (!fits)
                return noteMisfit(statement, layout, at - 1, column.kind);
        }
    }
    return true;
}

bool RecordCache::noteMisfit(Statement& statement, const Layout& layout, const std::string& what)
{
    const int id = m_type.key >= 0 ? m_type.key : m_type.itemOwner;
    const int at = id < 0 ? -1 : layout.columns[static_cast<std::size_t>(id)];
    m_misfit = "table " + shown(m_table.name()) + ": in the row " +
               (at < 0 || statement.isNull(at + 1) ? "" : "of key " + shown(statement.bytes(at + 1)) + " ") + what;
    m_table.database().setError(m_misfit, FailureKind::Layout);
    Database::noteReadGap(m_misfit);
    return false;
}

bool RecordCache::noteMisfit(Statement& statement, const Layout& layout, int column, FieldKind kind)
{
    const std::string name = shown(m_table.columnNames()[static_cast<std::size_t>(column)]);
    if (statement.isNull(column + 1))
        return noteMisfit(statement, layout, "the column " + name + " is empty");
    return noteMisfit(
        statement, layout,
        "the column " + name + " holds " + shown(statement.bytes(column + 1)) +
            (kind == FieldKind::Real ? ", which is no number" : ", which is no whole number of 32 bits"));
}

/// False, with the connection's error set, when records cannot be told from the table's columns.
bool RecordCache::lookable()
{
    const Layout& layout = m_table.layout(m_type);
    if (!layout.misfit(Use::Read).empty())
        Database::noteReadGap(layout.misfit(Use::Read));
    const std::string& misfit = layout.misfit(Use::Look);
    if (!misfit.empty())
        m_table.database().setError(misfit, FailureKind::Layout);
    return misfit.empty();
}

bool RecordCache::readAll()
{
    Statement* select = m_table.database().prepare(m_table.selectRows() + m_table.rowOrder());
    if (select == nullptr)
        return false;
    const StatementRun run(*select);
    const ListOperations list = m_type.list();
    m_rows.clear();
    dropIndexes();
    list.assign(m_records.get(), AnyRecords(m_type).get()); // new storage: all elements are fresh
    Step step = select->step();
    m_table.learnColumnNames(*select);
    if (!lookable())
        return false;
    const Layout& layout = m_table.layout(m_type);
    long made = 0, more = firstStep;
    for (; step == Step::Row; step = select->step()) {
        const std::int64_t row = select->integer(0);
        if (length() == made) {
            if (made >= manyRows && made < manyRows + lastStep && !m_table.rowId().empty())
                makeRoom(row);
            list.resize(m_records.get(), made += more);
            more = std::min(2 * more, lastStep);
        }
        if (!decode(*select, layout, list.at(m_records.get(), length()))) {
            m_rows.clear();
            list.resize(m_records.get(), 0);
            m_allChanged = true;
            return false;
        }
        m_rows.push_back(row);
    }
    list.resize(m_records.get(), length());
    if (step != Step::Done) {
        m_table.database().noteFailure();
        m_allChanged = true;
        return false;
    }
    m_allChanged = false;
    m_changedRows.clear();
    m_namesKnown = false;
    m_names.clear();
    return true;
}

/// Room for the rows that follow `row`, as far as row ids and the size of the file tell their number.
void RecordCache::makeRoom(std::int64_t row)
{
    const auto value = [&](const std::string& sql) {
        Statement* select = m_table.database().prepare(sql);
        if (select == nullptr)
            return std::int64_t{0};
        const StatementRun run(*select);
        return select->step() == Step::Row ? select->integer(0) : 0;
    };
    const std::int64_t last = value("SELECT max(" + m_table.rowId() + ") FROM " + m_table.bracketedName());
    // a stored row takes a byte a column and four more at least
    const std::int64_t most =
        m_table.database().engine().size() / static_cast<std::int64_t>(m_table.columnNames().size() + 4);
    const std::int64_t rows = length() + 1 + std::min(std::max<std::int64_t>(last - row, 0), most);
    m_rows.reserve(static_cast<std::size_t>(rows));
    m_type.list().reserve(m_records.get(), static_cast<long>(rows) + lastStep);
}

std::string RecordCache::columnName(int column)
{
    const int index = column < 0 ? -1 : m_table.layout(m_type).columns[static_cast<std::size_t>(column)];
    return index < 0 ? std::string() : bracketed(m_table.columnNames()[static_cast<std::size_t>(index)]);
}

bool RecordCache::isSparse()
{
    if (!m_allChanged)
        return false;
    if (m_sparseLimit < 0) {
        if (m_table.rowId().empty()) {
            m_sparseLimit = 0;
            return false;
        }
        Statement* select =
            m_table.database().prepare("SELECT max(" + m_table.rowId() + ") FROM " + m_table.bracketedName());
        if (select == nullptr)
            return false;
        const StatementRun run(*select);
        const std::int64_t rows = select->step() == Step::Row ? select->integer(0) : 0;
        m_sparseLimit = rows <= smallTable ? 0 : rows / sparseShare;
    }
    return m_sparseReads < m_sparseLimit;
}

Statement* RecordCache::selectWhere(int column, const char* order)
{
    const std::string name = columnName(column);
    if (name.empty())
        return nullptr;
    ++m_sparseReads;
    return m_table.database().prepare(m_table.selectRows() + " WHERE " + name + " = ?" + order);
}

bool RecordCache::readKey(long key, void* record)
{
    Statement* select = lookable() ? selectWhere(m_type.key, (m_table.rowOrder() + " LIMIT 1").c_str()) : nullptr;
    if (select == nullptr)
        return false;
    const StatementRun run(*select);
    select->bind(1, std::int64_t{key});
    if (select->step() != Step::Row)
        return false;
    m_type.elements->assign(record, m_type.elements->fresh);
    return decode(*select, m_table.layout(m_type), record);
}

bool RecordCache::readOwner(long owner, void* list)
{
    const std::string order = columnName(m_type.itemOrder);
    // single rows are read of tables with row ids alone
    Statement* select = selectWhere(
        m_type.itemOwner, (" ORDER BY " + (order.empty() ? "" : order + ", ") + m_table.rowId()).c_str());
    if (select == nullptr || !lookable())
        return false;
    const StatementRun run(*select);
    select->bind(1, std::int64_t{owner});
    const ListOperations operations = m_type.list();
    Step step;
    while ((step = select->step()) == Step::Row)
        if (!decode(*select, m_table.layout(m_type),
                    operations.at(list, operations.append(list, m_type.elements->fresh))))
            return false;
    if (step != Step::Done)
        m_table.database().noteFailure();
    return step == Step::Done;
}

bool RecordCache::readNames()
{
    m_names.clear();
    Statement* select =
        m_table.database().prepare("SELECT " + columnName(m_type.runName) + " FROM " + m_table.bracketedName());
    if (select == nullptr)
        return false;
    const StatementRun run(*select);
    Step step;
    while ((step = select->step()) == Step::Row)
        m_names.insert(select->text(0));
    if (step != Step::Done)
        m_table.database().noteFailure();
    return m_namesKnown = step == Step::Done;
}

int RecordCache::hasRunName(const KorString& runName)
{
    if (columnName(m_type.runName).empty())
        return -1;
    if (m_allChanged && (m_namesKnown || isSparse()))
        return m_namesKnown || readNames() ? (m_names.contains(runName) ? 1 : 0) : -1;
    return refresh() ? (findRunName(runName) >= 0 ? 1 : 0) : -1;
}

bool RecordCache::readChanged()
{
    const Layout& layout = m_table.layout(m_type);
    Statement* select = m_table.database().prepare(m_table.selectRows() + " WHERE " + m_table.rowId() + " = ?");
    if (select == nullptr)
        return false;
    const ListOperations list = m_type.list();
    std::sort(m_changedRows.begin(), m_changedRows.end());
    m_changedRows.erase(std::unique(m_changedRows.begin(), m_changedRows.end()), m_changedRows.end());
    const Keys keys = m_keys;
    const bool areNew = m_rows.empty() || m_changedRows.front() > m_rows.back();
    if (!areNew)
        dropIndexes();
    bool keysStay = keys == Keys::Rows;
    for (const std::int64_t row : m_changedRows) {
        const StatementRun run(*select);
        select->bind(1, row);
        const Step step = select->step();
        const auto place = std::lower_bound(m_rows.begin(), m_rows.end(), row);
        const long position = place - m_rows.begin();
        const bool known = place != m_rows.end() && *place == row;
        if (step == Step::Done) {
            if (known) {
                list.erase(m_records.get(), position);
                m_rows.erase(place);
            }
        } else if (step != Step::Row || (!known && place != m_rows.end())) {
            // unreadable, or a new row among the old ones: take the whole table
            m_allChanged = true;
            return step == Step::Row && readAll();
        } else {
            if (known) {
                m_type.elements->assign(list.at(m_records.get(), position), m_type.elements->fresh);
            } else {
                list.append(m_records.get(), m_type.elements->fresh);
                m_rows.push_back(row);
            }
            if (!decode(*select, layout, list.at(m_records.get(), position))) {
                m_allChanged = true;
                return false;
            }
            if (areNew)
                indexLast();
            else
                keysStay = keysStay && hasRowAsKey(position);
        }
    }
    if (!areNew && keysStay)
        m_keys = Keys::Rows;
    m_changedRows.clear();
    return true;
}

void RecordCache::dropIndexes()
{
    m_keys = Keys::Unknown;
    m_namesBuilt = m_textKeysBuilt = m_ownersBuilt = false;
    m_byKey.clear();
    m_byName.clear();
    m_byTextKey.clear();
    m_byOwner.clear();
    m_derived.clear();
}

long RecordCache::findKey(long key)
{
    if (m_type.key < 0 || m_type.hasTextKey())
        return -1;
    if (m_keys == Keys::Unknown) {
        long same = 0;
        while (same < length() && hasRowAsKey(same))
            ++same;
        m_keys = same == length() ? Keys::Rows : Keys::Index;
        if (m_keys == Keys::Index)
            m_byKey.reserve(m_rows.size());
        for (long i = 0; m_keys == Keys::Index && i < length(); ++i)
            m_byKey.emplace(m_type.keyOf(at(i)), i);
    }
    if (m_keys == Keys::Index) {
        const auto found = m_byKey.find(key);
        return found == m_byKey.end() ? -1 : found->second;
    }
    if (m_rows.empty() || key < m_rows.front() || key > m_rows.back())
        return -1;
    // where the row is if none is missing before it; else before that place
    const auto dense = static_cast<std::size_t>(key - m_rows.front());
    if (dense < m_rows.size() && m_rows[dense] == key)
        return static_cast<long>(dense);
    const auto end = m_rows.begin() + static_cast<std::ptrdiff_t>(std::min(dense, m_rows.size()));
    const auto place = std::lower_bound(m_rows.begin(), end, key);
    return place != end && *place == key ? place - m_rows.begin() : -1;
}

long RecordCache::findText(std::unordered_map<KorString, long>& index, bool& built, int column,
                           const KorString& text)
{
    const ColumnDescription* field = m_type.at(column);
    if (field == nullptr || field->kind != FieldKind::Text)
        return -1;
    if (!built) {
        index.reserve(m_rows.size());
        for (long i = 0; i < length(); ++i)
            index.emplace(field->text(at(i)), i);
        built = true;
    }
    const auto found = index.find(text);
    return found == index.end() ? -1 : found->second;
}

long RecordCache::findKey(const KorString& key)
{
    return m_type.hasTextKey() ? findText(m_byTextKey, m_textKeysBuilt, m_type.key, key) : -1;
}

long RecordCache::findRunName(const KorString& runName)
{
    return findText(m_byName, m_namesBuilt, m_type.runName, runName);
}

const std::vector<long>& RecordCache::ofOwner(long owner)
{
    static const std::vector<long> none;
    if (m_type.itemOwner < 0)
        return none;
    if (!m_ownersBuilt) {
        const ColumnDescription& column = *m_type.at(m_type.itemOwner);
        const ColumnDescription* order = m_type.at(m_type.itemOrder);
        for (long i = 0; i < length(); ++i)
            m_byOwner[column.integer(at(i))].push_back(i);
        if (order != nullptr)
            for (auto& [key, positions] : m_byOwner)
                std::stable_sort(positions.begin(), positions.end(),
                                 [&](long a, long b) { return order->integer(at(a)) < order->integer(at(b)); });
        m_ownersBuilt = true;
    }
    const auto found = m_byOwner.find(owner);
    return found == m_byOwner.end() ? none : found->second;
}

void RecordCache::appended(std::int64_t row, const void* record)
{
    if (m_namesKnown && m_type.runName >= 0)
        m_names.insert(m_type.runNameColumn()->text(record));
    if (m_allChanged)
        return;
    if (!m_changedRows.empty() || (!m_rows.empty() && m_rows.back() >= row)) {
        rowChanged(row);
        return;
    }
    const long position = m_type.list().append(m_records.get(), record);
    void* stored = m_type.list().at(m_records.get(), position);
    if (m_type.items.exists())
        m_type.items.list.resize(stored, 0);
    m_rows.push_back(row);
    indexLast();
}

void RecordCache::indexLast()
{
    const long position = length() - 1;
    const void* record = at(position);
    if (m_keys == Keys::Rows && !hasRowAsKey(position))
        m_keys = Keys::Unknown;
    else if (m_keys == Keys::Index)
        m_byKey.emplace(m_type.keyOf(record), position);
    if (m_namesBuilt && m_type.runName >= 0)
        m_byName.emplace(m_type.runNameColumn()->text(record), position);
    if (m_textKeysBuilt && m_type.hasTextKey())
        m_byTextKey.emplace(m_type.keyColumn().text(record), position);
    m_ownersBuilt = false;
    m_byOwner.clear();
    m_derived.clear();
}

} // namespace korodbc::host
