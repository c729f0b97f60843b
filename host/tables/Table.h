#pragma once

#include "records/RecordDescription.h"
#include "repository/KorCellData.h"
#include "sqlite/Connection.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace korodbc::host {

class RecordCache;

struct TableColumn {
    std::string name;
    std::string declaration; // "INTEGER", "VARCHAR(255)"
    KorItemType::BaseTypes type;
    bool primaryKey;
};

/// Where a record type's columns stand in a table. Fixed columns are found by name, numbered ones by position.
struct Layout {
    std::vector<int> columns;    // column index by description column, -1: the table has no such column
    std::vector<int> writeOrder; // description columns in the order in which they are written, the key excepted
    int firstNumbered = 0;       // index of the first numbered column
    int numberedItems = 0;       // items for which the table has columns
    std::string differences;     // what the description and the table do not agree on, one report
};

/// One table of an open database: its columns, its free keys, its cached records.
class Table {
public:
    Table(Connection& connection, std::string name);
    ~Table();
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    Connection& connection() { return m_connection; }
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
    const Layout& layout(const RecordDescription& type);

    /// A key that no row has; 0 when the table cannot be read. Integer-keyed tables count on from the largest key.
    std::int64_t freeKey();
    /// Row id of the row whose key column holds `key`; -1 when there is none.
    std::int64_t rowOfKey(const Value& key, int keyColumn);
    void keyTaken(std::int64_t key);

    /// Writes the described columns of a record as a new row, or over the row with that key.
    bool insertRecord(const RecordDescription& type, const Value& key, const void* record);
    bool updateRecord(const RecordDescription& type, const Value& key, const void* record);
    /// Writes cells by column index as a new row, or over the row with that key.
    bool insertCells(const Value& key, const std::map<int, Value>& cells);
    bool updateCells(const Value& key, int keyColumn, const std::map<int, Value>& cells);

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
    void bindRecord(Statement& statement, const RecordDescription& type, const Layout& layout, long items,
                    const void* record, int position);
    std::string storeText(const RecordDescription& type, const Layout& layout, long items, bool insert);

    Connection& m_connection;
    std::string m_name;
    std::string m_bracketedName;
    std::vector<TableColumn> m_columns;
    std::vector<std::string> m_columnNames;
    std::unordered_map<const RecordDescription*, Layout> m_layouts;
    std::unordered_map<const RecordDescription*, std::unique_ptr<RecordCache>> m_caches;
    std::map<std::pair<const RecordDescription*, long>, Statement*> m_stores; // by type and 2 * items + insert
    std::int64_t m_largestKey = -1;                                           // -1: not known
};

/// "[name]"; a name that holds a closing bracket stands between double quotes instead.
std::string bracketed(std::string_view name);
/// ASCII letters in lower case.
std::string lowerCase(std::string_view text);
KorItemType::BaseTypes typeOfDeclaration(std::string_view declaration);
Value valueOf(const KorCellData& cell);
KorCellData cellOf(Statement& statement, int column);

} // namespace korodbc::host
