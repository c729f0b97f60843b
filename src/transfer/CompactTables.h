#pragma once

#include "Duplicates.h"
#include "records/AnyRecord.h"
#include "repository/KorDSNDefinitions.h"
#include "transfer/KorOdbcCompactDetailsTables.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace korodbc {

/// One table of a compaction: its rows in memory, and which row stands for which.
class CompactTable {
public:
    /// What the record description does not say.
    struct Rules {
        std::string_view ignored = {};                 // column that does not tell rows apart
        std::string_view loose = {};                   // text of the items that counts only where it is long
        const RecordDescription& (*owner)() = nullptr; // type of the rows that this one's owner column names
        bool listFirst = false;   // references in the list are redirected before those in the columns
        int minimumCondition = 8; // a condition for deleting rows has more characters
    };
    CompactTable(const RecordDescription& type, bool ofStyles, bool ofProcesses, const Rules& rules);

    const RecordDescription& type() const { return m_type; }
    bool isIn(KorOdbcCompactDetailsTables::eCompactType run) const;
    KorString name() const;
    long length() const { return m_records->length(); }
    void* at(long index) const { return m_records->at(index); }

    /// Reads the rows in key order; false when the table cannot be read.
    bool load();
    void clear();
    void findDuplicates();
    /// The key that stands for a key; the key itself when none does.
    int standingFor(int key) const;
    /// Keys of the duplicates, ascending.
    const std::vector<int>& duplicates() const { return m_duplicates; }

    const Rules rules;
    KorCompactedTable report;

private:
    const RecordDescription& m_type;
    const bool m_ofStyles, m_ofProcesses;
    const DuplicateRule m_rule;
    std::unique_ptr<AnyRecords> m_records;
    std::unordered_map<int, int> m_standing; // key of each row to the key of the row that stands for it
    std::vector<int> m_duplicates;
};

/// The tables of a compaction and what is done with them in the database.
class CompactTables {
public:
    CompactTables();
    /// The database, the type and the tables of the last run.
    static CompactTables& ofLastRun();

    eDSN database = KorDSNDefinitions::kDetails;
    KorOdbcCompactDetailsTables::eCompactType type = KorOdbcCompactDetailsTables::kCompactDetailStyles;
    bool onlyPreview = false; // no statement is executed

    eIndex index() const;
    std::vector<CompactTable>& all() { return m_tables; }
    CompactTable& of(const RecordDescription& type) { return *find(type); }
    /// nullptr when the table takes no part.
    CompactTable* find(const RecordDescription& type);

    /// Redirects the references of a table to the rows that stand for others.
    void redirect(CompactTable& table);
    /// Deletes the duplicates, ten to a statement, and their items where these go by the key of their row. Returns
    /// 1, or 0 when the last statement failed.
    int deleteDuplicates(CompactTable& table);
    /// Executes a statement in the database of the run.
    int execute(const KorString& pattern, std::initializer_list<int> values) const;

private:
    void redirectColumn(CompactTable& table, const ColumnDescription& column, void* element, const void* record,
                        long item);

    std::vector<CompactTable> m_tables;
    std::unordered_map<const ColumnDescription*, std::vector<KorString>> m_patterns; // by number of the column
};

} // namespace korodbc
