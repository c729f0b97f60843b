#pragma once

#include "records/RecordDescription.h"
#include "sqlite/Statement.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace korodbc::host {

class Table;
struct Layout;

/// The rows of a table as records of one type, in table order, with the indexes that look-ups have asked for. Knows
/// which rows changed since they were read, and reads only those again.
class RecordCache {
public:
    RecordCache(Table& table, const RecordDescription& type);
    ~RecordCache();
    RecordCache(const RecordCache&) = delete;
    RecordCache& operator=(const RecordCache&) = delete;

    /// Brings the records up to date; false when the table cannot be read.
    bool refresh();

    const RecordDescription& type() const { return m_type; }
    Table& table() const { return m_table; }
    /// A KorArray of the type.
    const void* list() const { return m_list; }
    long length() const { return static_cast<long>(m_rows.size()); }
    const void* at(long position) const { return m_type.operations->list.at(m_list, position); }

    /// Position of the first record with that key, run name or text key; -1 without one.
    long findKey(long key);
    long findKey(const KorString& key);
    long findRunName(const KorString& runName);
    /// Positions of the items of an owner, in item order.
    const std::vector<long>& ofOwner(long owner);

    void rowChanged(std::int64_t row);
    void allChanged() { m_allChanged = true; }
    /// A record was stored as a new row behind all others.
    void appended(std::int64_t row, const void* record);

private:
    bool readAll();
    bool readChanged();
    void decode(Statement& statement, const Layout& layout, void* record);
    void dropIndexes();
    long findText(std::unordered_map<KorString, long>& index, bool& built, int column, const KorString& text);

    Table& m_table;
    const RecordDescription& m_type;
    void* m_list;
    void* m_blank; // a fresh record
    std::vector<std::int64_t> m_rows; // row ids, ascending
    std::vector<KorString> m_lastTexts; // last text read per column: equal neighbours share one buffer
    bool m_allChanged = true;
    std::vector<std::int64_t> m_changedRows;

    bool m_keysBuilt = false, m_namesBuilt = false, m_textKeysBuilt = false, m_ownersBuilt = false;
    std::unordered_map<long, long> m_byKey;
    std::unordered_map<KorString, long> m_byName, m_byTextKey;
    std::unordered_map<long, std::vector<long>> m_byOwner;
};

} // namespace korodbc::host
