#pragma once

#include "engine/Engine.h"

#include <korodbc/records/AnyRecord.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <typeindex>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace korodbc::host {

class Table;
struct Layout;

/// The rows of a table as records of one type, in table order, with the indexes that look-ups have asked for.
/// Knows which rows changed since they were read, and reads only those again.
class RecordCache {
public:
    RecordCache(Table& table, const RecordDescription& type);
    RecordCache(const RecordCache&) = delete;
    RecordCache& operator=(const RecordCache&) = delete;

    /// Brings the records up to date; false when the table cannot be read.
    bool refresh();

    // Reading row by row: while few rows of a large table were asked for, it is not worth reading as a whole.

    /// True while the records are not read and looking single rows up is cheaper.
    bool isSparse();
    /// Reads one row into `record`; false when there is none.
    bool readKey(long key, void* record);
    /// Appends the items of an owner to `list` in item order; false when they cannot be read.
    bool readOwner(long owner, void* list);
    /// 1 when a record has exactly this run name, 0 when none has, -1 when the table cannot be read. Of a large
    /// table, only the names are kept.
    int hasRunName(const KorString& runName);

    /// True when the records are up to date and there is none.
    bool isKnownEmpty() const { return !m_allChanged && m_changedRows.empty() && m_rows.empty(); }
    /// The row that kept the records from being read, in one line; empty when there is none.
    const std::string& misfit() const { return m_misfit; }
    const RecordDescription& type() const { return m_type; }
    Table& table() const { return m_table; }
    /// A KorArray of the type.
    const void* list() const { return m_records.get(); }
    long length() const { return static_cast<long>(m_rows.size()); }
    const void* at(long position) const { return m_records.at(position); }

    /// Position of the first record with that key, run name or text key; -1 without one.
    long findKey(long key);
    long findKey(const KorString& key);
    long findRunName(const KorString& runName);
    /// Positions of the items of an owner, in item order.
    const std::vector<long>& ofOwner(long owner);

    /// What somebody made of the records as they stand, kept until one of them changes; empty at first.
    std::shared_ptr<const void>& derived(const std::type_info& kind) { return m_derived[kind]; }

    void rowChanged(std::int64_t row);
    void allChanged();
    /// A record was stored as a new row behind all others.
    void appended(std::int64_t row, const void* record);

private:
    bool readAll();
    void makeRoom(std::int64_t row);
    bool readNames();
    Statement* selectWhere(int column, const char* order);
    std::string columnName(int column);
    bool readChanged();
    bool lookable();
    /// Puts a row into a record; false, with the reason noted, when a cell does not fit its field.
    bool decode(Statement& statement, const Layout& layout, void* record);
    bool decodeNumbered(Statement& statement, const Layout& layout, void* record);
    bool noteMisfit(Statement& statement, const Layout& layout, const std::string& what);
    bool noteMisfit(Statement& statement, const Layout& layout, int column, FieldKind kind);
    void dropIndexes();
    void indexLast(); // puts a record that was appended into the indexes
    bool hasRowAsKey(long position) const
    {
        return m_type.keyOf(at(position)) == m_rows[static_cast<std::size_t>(position)];
    }
    long findText(std::unordered_map<KorString, long>& index, bool& built, int column, const KorString& text);

    Table& m_table;
    const RecordDescription& m_type;
    AnyRecords m_records;
    std::vector<std::int64_t> m_rows; // row ids, ascending
    struct LastText {
        std::string bytes;
        KorString text;
    };
    std::vector<LastText> m_lastTexts; // last text read per column: equal neighbours share one buffer
    bool m_allChanged = true;
    std::string m_misfit;
    std::vector<std::int64_t> m_changedRows;

    std::int64_t m_sparseReads = 0;
    std::int64_t m_sparseLimit = -1; // -1: the size of the table is not known
    bool m_namesKnown = false;       // m_names holds all run names, while the records are not read
    std::unordered_set<KorString> m_names;

    enum class Keys { Unknown, Rows, Index };
    Keys m_keys = Keys::Unknown; // Rows: each key is the id of its row, and no index is needed
    bool m_namesBuilt = false, m_textKeysBuilt = false, m_ownersBuilt = false;
    std::unordered_map<long, long> m_byKey;
    std::unordered_map<KorString, long> m_byName, m_byTextKey;
    std::unordered_map<long, std::vector<long>> m_byOwner;
    std::unordered_map<std::type_index, std::shared_ptr<const void>> m_derived;
};

} // namespace korodbc::host
