#pragma once

#include "database/Database.h"
#include "database/Layout.h"
#include "engine/Names.h"

#include <korodbc/records/RecordDescription.h>
#include <korodbc/repository/KorCellData.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace korodbc::host {

class RecordCache;

/// Keys are whole numbers of 32 bits.
constexpr std::int64_t largestKey = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t smallestKey = std::numeric_limits<std::int32_t>::min();
constexpr bool fitsKey(std::int64_t number) { return number >= smallestKey && number <= largestKey; }

/// One table of an open database: its columns, its free keys, its cached records.
class Table {
public:
    Table(Database& connection, std::string name);
    ~Table();
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    Database& database() { return m_database; }
    const std::string& name() const { return m_name; }
    const std::string& bracketedName() const { return m_bracketedName; }

    const std::vector<TableColumn>& columns();
    const std::vector<std::string>& columnNames();
    /// Takes the names of the columns from a statement that ran and reads a row's id and all its columns; spares
    /// asking for them.
    void learnColumnNames(const Statement& select);
    /// Index of a column, compared without regard to ASCII case; -1 when there is none. It is looked for at
    /// `likely` first.
    int columnIndex(std::string_view name, int likely = 0);
    /// Index of the column named "Key", otherwise of the first.
    int keyColumn();
    /// Name by which statements reach a row's id; empty in a table whose rows have none, or none that can be
    /// named.
    const std::string& rowId();
    /// " ORDER BY ..." by row id or primary key, the order in which the rows are read; empty: as they lie.
    const std::string& rowOrder();
    /// "SELECT row id, * FROM [table]"; 0 stands for the ids of a table without.
    std::string selectRows();

    const Layout& layout(const RecordDescription& type);
    /// Why the table must not be used so as a table of that type, in one line; empty when it fits. Says nothing of
    /// the table of its items. Costs next to nothing when it was asked before.
    std::string misfit(const RecordDescription& type, Use use);

    /// A key that no row has and that no row had since the table was first asked for one; 0 when there is none or
    /// the table cannot be read. Counts on from the largest key; when that is the largest possible one, from the
    /// largest below it whose successor is free.
    std::int64_t freeKey();
    bool hasKey(const Value& key, int keyColumn);
    /// Keys up to this one are given out no more.
    void keyTaken(std::int64_t key);
    /// Keys were given out by a batch that is undone: the largest one is looked for anew.
    void keysUndone();
    /// False until it was said which keys other rows may still refer to.
    bool knowsReferredKeys() const { return m_knowsReferred; }
    void setReferredKey(std::int64_t largest)
    {
        m_knowsReferred = true;
        keyTaken(std::min(largest, largestKey));
    }

    /// Writes the described columns of a record as a new row, or over the row with that key. Refused, with the
    /// connection's error set, when the table does not fit the type.
    bool insertRecord(const RecordDescription& type, const Value& key, const void* record);
    bool updateRecord(const RecordDescription& type, const Value& key, const void* record);
    /// Writes cells by column index as a new row, or over the row with that key.
    bool insertCells(const Value& key, const std::map<int, Value>& cells);
    bool updateCells(const Value& key, int keyColumn, const std::map<int, Value>& cells);
    bool deleteRow(const Value& key, int keyColumn);
    /// True when the writes of a row may wait for one another: nothing but a missing value could refuse them.
    bool mayWait() { return !rules().mayRefuse; }
    /// True when a write can remove other rows, unseen.
    bool replacesRows() { return rules().replacesRows; }

    /// The records of the table as that type; read at once or brought up to date. nullptr when it cannot be read.
    RecordCache* records(const RecordDescription& type);
    /// The same as it stands: not read, or not up to date.
    RecordCache& recordCache(const RecordDescription& type);

    void rowChanged(std::int64_t row);
    /// Any row may have changed: keys and cached rows are taken anew.
    void allChanged();
    /// The connection lets its kept statements go.
    void forgetStatements();
    /// Columns changed: everything known of the table is taken anew.
    void schemaChanged();

private:
    const TableRules& rules();
    Layout& knownLayout(const RecordDescription& type);
    /// True when every key is good that the records could be read with: a number of its own in each row.
    bool readsEveryKey(const RecordDescription& type);
    std::string keyMisfit(const RecordDescription& type);
    bool isPrimaryKey(int column); // alone
    bool isRowId(int column);
    std::int64_t freeKeyInAGap(const std::string& key);
    bool refused(const RecordDescription& type, const Layout& layout, long items);
    void bindRecord(Statement& statement, const RecordDescription& type, const Layout& layout, long items,
                    const void* record, int position);
    std::string storeText(const RecordDescription& type, const Layout& layout, long items, bool insert);
    /// A write of the host's own ran; the engine names no rows of a table without row ids.
    bool wrote(bool stored);

    Database& m_database;
    std::string m_name;
    std::string m_bracketedName;
    std::vector<TableColumn> m_columns;
    std::vector<std::string> m_columnNames;
    std::optional<std::string> m_rowId;
    std::optional<std::string> m_rowOrder;
    std::optional<TableRules> m_rules;
    std::unordered_map<const RecordDescription*, Layout> m_layouts;
    std::unordered_map<const RecordDescription*, std::unique_ptr<RecordCache>> m_caches;
    std::map<std::pair<const RecordDescription*, long>, Statement*> m_stores; // by type and 2 * items + insert
    std::int64_t m_largestKey = 0; // ever seen, given out or referred to
    std::int64_t m_gapKey = 0;     // the same without the largest that is possible
    bool m_keysChanged = true;     // rows changed since the largest key was looked for
    bool m_knowsReferred = false;
};

Value valueOf(const KorCellData& cell);
/// The value of a cell; a whole number beyond an int as the text of its digits.
KorCellData cellOf(const Statement& statement, int column);

} // namespace korodbc::host
