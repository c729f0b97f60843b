#include "tables/RecordCache.h"

#include "tables/Table.h"

#include <algorithm>

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

void readNumber(const Statement& statement, int at, int& field, bool nullMatters)
{
    if (const std::int64_t value = statement.integer(at); value != 0 || !nullMatters || !statement.isNull(at))
        field = static_cast<int>(value);
}

void readNumber(const Statement& statement, int at, double& field, bool nullMatters)
{
    if (const double value = statement.real(at); value != 0 || !nullMatters || !statement.isNull(at))
        field = value;
}
} // namespace

RecordCache::RecordCache(Table& table, const RecordDescription& type)
    : m_table(table), m_type(type), m_records(type), m_blank(type), m_lastTexts(type.columns.size())
{
    const auto* start = static_cast<const std::byte*>(m_blank.get());
    m_fields.reserve(type.columns.size());
    for (const ColumnDescription& column : type.columns) {
        const bool isZero = column.kind == FieldKind::Integer ? column.integer(m_blank.get()) == 0
                            : column.kind == FieldKind::Real  ? column.real(m_blank.get()) == 0
                                                              : true;
        m_fields.push_back({static_cast<const std::byte*>(column.field(m_blank.get())) - start, !isZero});
    }
}

bool RecordCache::refresh()
{
    if (m_allChanged)
        return readAll();
    return m_changedRows.empty() || readChanged();
}

void RecordCache::allChanged()
{
    m_allChanged = true;
    m_namesKnown = false;
    m_sparseLimit = -1;
    m_sparseReads = 0;
}

void RecordCache::rowChanged(std::int64_t row)
{
    m_namesKnown = false;
    if (m_allChanged)
        return;
    if (m_changedRows.size() >= mostChangedRows)
        allChanged();
    else if (m_changedRows.empty() || m_changedRows.back() != row)
        m_changedRows.push_back(row);
}

void RecordCache::decode(Statement& statement, const Layout& layout, void* record)
{
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const int at = layout.columns[i] + 1;
        if (at <= 0)
            continue;
        void* field = static_cast<std::byte*>(record) + m_fields[i].offset;
        switch (m_type.columns[i].kind) {
        // NULL reads as 0 and keeps the record's default
        case FieldKind::Integer:
            readNumber(statement, at, *static_cast<int*>(field), m_fields[i].nullMatters);
            break;
        case FieldKind::Real:
            readNumber(statement, at, *static_cast<double*>(field), m_fields[i].nullMatters);
            break;
        case FieldKind::Text: {
            LastText& last = m_lastTexts[i];
            if (const std::string_view bytes = statement.bytes(at); last.bytes != bytes) {
                last.bytes = bytes;
                last.text = KorString::fromUtf8(bytes);
            }
            *static_cast<KorString*>(field) = last.text;
            break;
        }
        }
    }
    if (m_type.numbered.exists())
        decodeNumbered(statement, layout, record);
}

void RecordCache::decodeNumbered(Statement& statement, const Layout& layout, void* record)
{
    const NumberedGroup& group = m_type.numbered;
    long items = layout.numberedItems;
    if (m_type.itemCount >= 0)
        items = std::clamp<long>(m_type.at(m_type.itemCount)->integer(record), 0, items);
    group.list.resize(record, items);
    int at = layout.firstNumbered + 1;
    for (long item = 0; item < items; ++item) {
        void* element = group.list.at(record, item);
        for (const ColumnDescription& column : group.columns) {
            switch (column.kind) {
            case FieldKind::Integer:
                readNumber(statement, at, column.integer(element), true);
                break;
            case FieldKind::Real:
                readNumber(statement, at, column.real(element), true);
                break;
            case FieldKind::Text:
                column.text(element) = statement.text(at);
                break;
            }
            ++at;
        }
    }
}

bool RecordCache::readAll()
{
    Statement* select =
        m_table.connection().prepare("SELECT rowid, * FROM " + m_table.bracketedName() + " ORDER BY rowid");
    if (select == nullptr)
        return false;
    const StatementRun run(*select);
    const ListOperations& list = m_type.operations->list;
    m_rows.clear();
    dropIndexes();
    list.assign(m_records.get(), AnyRecords(m_type).get()); // new storage: all elements are fresh
    int code = select->step();
    m_table.learnColumnNames(*select);
    const Layout& layout = m_table.layout(m_type);
    long made = 0, step = firstStep;
    for (; code == SQLITE_ROW; code = select->step()) {
        const std::int64_t row = select->integer(0);
        if (length() == made) {
            if (made >= manyRows && made < manyRows + lastStep)
                makeRoom(row);
            list.resize(m_records.get(), made += step);
            step = std::min(2 * step, lastStep);
        }
        decode(*select, layout, list.at(m_records.get(), length()));
        m_rows.push_back(row);
    }
    list.resize(m_records.get(), length());
    if (code != SQLITE_DONE) {
        m_table.connection().noteFailure(code);
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
        Statement* select = m_table.connection().prepare(sql);
        if (select == nullptr)
            return std::int64_t{0};
        const StatementRun run(*select);
        return select->step() == SQLITE_ROW ? select->integer(0) : 0;
    };
    const std::int64_t last = value("SELECT max(rowid) FROM " + m_table.bracketedName());
    // a stored row takes a byte a column and four more at least
    const std::int64_t most = value("PRAGMA page_count") * value("PRAGMA page_size") /
                              static_cast<std::int64_t>(m_table.columnNames().size() + 4);
    const std::int64_t rows = length() + 1 + std::min(std::max<std::int64_t>(last - row, 0), most);
    m_rows.reserve(static_cast<std::size_t>(rows));
    m_type.operations->list.reserve(m_records.get(), static_cast<long>(rows) + lastStep);
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
        Statement* select = m_table.connection().prepare("SELECT max(rowid) FROM " + m_table.bracketedName());
        if (select == nullptr)
            return false;
        const StatementRun run(*select);
        const std::int64_t rows = select->step() == SQLITE_ROW ? select->integer(0) : 0;
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
    return m_table.connection().prepare("SELECT rowid, * FROM " + m_table.bracketedName() + " WHERE " + name +
                                        " = ?" + order);
}

bool RecordCache::readKey(long key, void* record)
{
    Statement* select = selectWhere(m_type.key, " ORDER BY rowid LIMIT 1");
    if (select == nullptr)
        return false;
    const StatementRun run(*select);
    select->bind(1, std::int64_t{key});
    if (select->step() != SQLITE_ROW)
        return false;
    m_type.operations->assign(record, m_blank.get());
    decode(*select, m_table.layout(m_type), record);
    return true;
}

bool RecordCache::readOwner(long owner, void* list)
{
    const std::string order = columnName(m_type.itemOrder);
    Statement* select = selectWhere(m_type.itemOwner, order.empty() ? " ORDER BY rowid"
                                                                    : (" ORDER BY " + order + ", rowid").c_str());
    if (select == nullptr)
        return false;
    const StatementRun run(*select);
    select->bind(1, std::int64_t{owner});
    const ListOperations& operations = m_type.operations->list;
    int code;
    while ((code = select->step()) == SQLITE_ROW)
        decode(*select, m_table.layout(m_type), operations.at(list, operations.append(list, m_blank.get())));
    if (code != SQLITE_DONE)
        m_table.connection().noteFailure(code);
    return code == SQLITE_DONE;
}

bool RecordCache::readNames()
{
    m_names.clear();
    Statement* select =
        m_table.connection().prepare("SELECT " + columnName(m_type.runName) + " FROM " + m_table.bracketedName());
    if (select == nullptr)
        return false;
    const StatementRun run(*select);
    int code;
    while ((code = select->step()) == SQLITE_ROW)
        m_names.insert(select->text(0));
    if (code != SQLITE_DONE)
        m_table.connection().noteFailure(code);
    return m_namesKnown = code == SQLITE_DONE;
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
    Statement* select =
        m_table.connection().prepare("SELECT rowid, * FROM " + m_table.bracketedName() + " WHERE rowid = ?");
    if (select == nullptr)
        return false;
    const ListOperations& list = m_type.operations->list;
    std::sort(m_changedRows.begin(), m_changedRows.end());
    m_changedRows.erase(std::unique(m_changedRows.begin(), m_changedRows.end()), m_changedRows.end());
    dropIndexes();
    for (const std::int64_t row : m_changedRows) {
        const StatementRun run(*select);
        select->bind(1, row);
        const int code = select->step();
        const auto place = std::lower_bound(m_rows.begin(), m_rows.end(), row);
        const long position = place - m_rows.begin();
        const bool known = place != m_rows.end() && *place == row;
        if (code == SQLITE_DONE) {
            if (known) {
                list.erase(m_records.get(), position);
                m_rows.erase(place);
            }
        } else if (code != SQLITE_ROW || (!known && place != m_rows.end())) {
            // unreadable, or a new row among the old ones: take the whole table
            m_allChanged = true;
            return code == SQLITE_ROW && readAll();
        } else {
            if (known) {
                m_type.operations->assign(list.at(m_records.get(), position), m_blank.get());
            } else {
                list.append(m_records.get(), m_blank.get());
                m_rows.push_back(row);
            }
            decode(*select, layout, list.at(m_records.get(), position));
        }
    }
    m_changedRows.clear();
    return true;
}

void RecordCache::dropIndexes()
{
    m_keysBuilt = m_namesBuilt = m_textKeysBuilt = m_ownersBuilt = false;
    m_byKey.clear();
    m_byName.clear();
    m_byTextKey.clear();
    m_byOwner.clear();
}

long RecordCache::findKey(long key)
{
    if (m_type.key < 0 || m_type.hasTextKey())
        return -1;
    if (!m_keysBuilt) {
        m_byKey.reserve(m_rows.size());
        for (long i = 0; i < length(); ++i)
            m_byKey.emplace(m_type.keyColumn().integer(at(i)), i);
        m_keysBuilt = true;
    }
    const auto found = m_byKey.find(key);
    return found == m_byKey.end() ? -1 : found->second;
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
    const long position = m_type.operations->list.append(m_records.get(), record);
    void* stored = m_type.operations->list.at(m_records.get(), position);
    if (m_type.items.exists())
        m_type.items.list.resize(stored, 0);
    m_rows.push_back(row);
    if (m_keysBuilt)
        m_byKey.emplace(m_type.keyOf(stored), position);
    if (m_namesBuilt && m_type.runName >= 0)
        m_byName.emplace(m_type.runNameColumn()->text(stored), position);
    if (m_textKeysBuilt && m_type.hasTextKey())
        m_byTextKey.emplace(m_type.keyColumn().text(stored), position);
    m_ownersBuilt = false;
    m_byOwner.clear();
}

} // namespace korodbc::host
