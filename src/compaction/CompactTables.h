#pragma once

#include "DuplicateRule.h"
#include "edit/DetailTable.h"

#include <korodbc/compaction/KorOdbcCompactDetailsTables.h>
#include <korodbc/records/AnyRecord.h>
#include <korodbc/repository/KorDSNDefinitions.h>

#include <memory>
#include <unordered_map>
#include <vector>

namespace korodbc {

/// One table of a compaction: its rows in memory, and which row stands for which.
class CompactTable {
public:
    explicit CompactTable(const DetailTable& table);

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

    const DetailTable::Compaction& rules;
    KorCompactedTable report;

private:
    const RecordDescription& m_type;
    const DuplicateRule m_rule;
    std::unique_ptr<AnyRecords> m_records;
    std::unordered_map<int, int> m_standing; // key of each row to the key of the row that stands for it
    std::vector<int> m_duplicates;
};

/// One run: its database and slot, its tables, and what is done with them in the database, which has to be the
/// current one.
class CompactTables {
public:
    using Type = KorOdbcCompactDetailsTables::eCompactType;

    CompactTables(eDSN database, Type type, bool onlyPreview);
    /// The run under way, or the last one.
    static CompactTables& current();
    /// Begins a run, with nothing left of the one before.
    static CompactTables& begin(eDSN database, Type type, bool onlyPreview);

    const eDSN database;
    const eIndex index;
    const Type type;
    const bool onlyPreview; // nothing is written

    bool ofStyles() const { return type == Type::kCompactDetailStyles || type == Type::kCompactAll; }
    bool ofProcesses() const { return type == Type::kCompactDetailProcesses || type == Type::kCompactAll; }
    std::vector<CompactTable>& all() { return m_tables; }
    CompactTable& of(const RecordDescription& wanted) { return *find(wanted); }
    /// nullptr when no compaction takes the table.
    CompactTable* find(const RecordDescription& wanted);
    /// What the run did to tables that no compaction takes, but that refer to rows that are gone.
    const std::vector<KorCompactedTable>& others() const { return m_others; }

    /// Notes why the run cannot be kept; the first reason counts.
    void fail(const KorString& reason);
    bool hasFailed() const { return !m_failure.isEmpty(); }
    const KorString& failure() const { return m_failure; }

    /// True when every table that the run reads or writes fits its record type, belongs to no other program, and
    /// is open in no edit whose Cancel would bring back references to merged rows, but not the rows. `opensAll`:
    /// the run takes the copies of its tables.
    bool areUsable(bool opensAll);
    /// Remembers an edit that the run has begun: the next one goes on within it.
    static void noteOpening(int opening);
    /// Redirects the references of a table to the rows that stand for others.
    void redirect(CompactTable& table);
    /// Deletes the duplicates, ten to a statement, and their items where these go by the key of their row. Returns
    /// 1, or 0 when the last statement for items failed; the run fails with any.
    int deleteDuplicates(CompactTable& table);
    /// Redirects what tables that no compaction takes say about the deleted rows.
    void redirectOthers();
    /// Fails the run when a stored reference names a row that the run has deleted. References of tables that a run
    /// of this type leaves out are found beforehand, see findStranded().
    void checkReferences();
    /// Executes a statement in the database of the run.
    int execute(const KorString& pattern, std::initializer_list<int> values) const;
    /// Lets go of the rows, and of the reports of what a run has done that is undone.
    void clear(bool undone);

private:
    void redirectColumn(CompactTable& table, const ColumnDescription& column, void* record, long item);
    bool isAmbiguous(const CompactTable& table, const ColumnDescription& column, void* record, long item,
                     int standing);
    void checkDialogs(bool opensAll);
    void checkColumn(const RecordDescription& holder, const RecordDescription& owner,
                     const ColumnDescription& column);

    std::vector<CompactTable> m_tables;
    std::vector<KorCompactedTable> m_others;
    std::unordered_map<const ColumnDescription*, std::vector<KorString>> m_patterns; // by number of the column
    KorString m_failure;
};

/// True when this program edits the table of that type in the manager's database at that depth or a deeper one.
bool isOpen(const RecordDescription& type, int depth);
/// Position of a column in a stored table; -1 when it has none of that name.
int storedColumn(eDSN dsn, const KorString& table, const KorString& column);

} // namespace korodbc
