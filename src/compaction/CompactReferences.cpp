// What a compaction has to know of tables that it does not merge, and of what is stored in the end.

#include "CompactTables.h"
#include "edit/DetailTables.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/Registry.h>
#include <korodbc/repository/KorColumn.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/RecordAccess.h>

#include <algorithm>
#include <set>

namespace korodbc {

namespace {

using Man = KorOdbcMan;

KorString wide(std::string_view text) { return KorString::fromUtf8(text); }

/// A number that a reader of the table takes for another row's key.
bool namesRowsOf(const ColumnDescription& column)
{
    return column.namesRows() && column.kind == FieldKind::Integer;
}

/// Calls `act` for each record type of a detail table that no compaction takes, and each of its columns that names
/// rows which a compaction may delete.
template <class Act>
void forEachOther(CompactTables& tables, Act act)
{
    for (const auto describe : records::all()) {
        const RecordDescription& type = describe();
        if (!records::isDetailTable(type) || type.itemOwner >= 0 || tables.find(type) != nullptr)
            continue;
        for (const ColumnDescription& column : type.columns)
            if (const CompactTable* target = namesRowsOf(column) ? tables.find(column.target()) : nullptr;
                target != nullptr && target->isIn(tables.type) && !target->rules.stays)
                act(type, column, *target);
    }
}

bool exists(eDSN database, const RecordDescription& type)
{
    return KorDatabaseAccess::doesTableExists(database, wide(type.table)) == 1;
}

std::set<int> openedByRuns; // numbers of edits

int openingOf(const RecordDescription& type)
{
    const int tableType = tableTypeOf(type);
    return tableType < 0 ? 0 : Man::openingOf(static_cast<Man::eTableType>(tableType));
}

} // namespace

bool isOpen(const RecordDescription& type, int depth)
{
    const int tableType = tableTypeOf(type);
    for (; tableType >= 0 && depth < Man::kCopies; ++depth)
        if (Man::isOpen(static_cast<Man::eTableType>(tableType), static_cast<Man::eCopyDepth>(depth)))
            return true;
    return false;
}

int storedColumn(eDSN dsn, const KorString& table, const KorString& column)
{
    KorArray<KorColumn> columns;
    KorDatabaseAccess::getTableStructure(dsn, table, columns);
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const KorColumn& stored) {
        return stored.getName().compareNoCase(column) == 0;
    });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

void CompactTables::noteOpening(int opening) { openedByRuns.insert(opening); }

/// An edit of some of the tables cannot be cancelled as a whole: the others keep what the run did.
void CompactTables::checkDialogs(bool opensAll)
{
    const RecordDescription* held = nullptr;
    bool all = true;
    const auto look = [&](const RecordDescription& of) {
        const int opening = openingOf(of);
        all = all && opening != 0;
        if (opening != 0 && !(opensAll && openedByRuns.contains(opening)))
            held = &of;
    };
    for (const CompactTable& table : m_tables)
        if (table.isIn(type))
            look(table.type());
    forEachOther(*this, [&](const RecordDescription& of, const ColumnDescription&, const CompactTable&) {
        if (openingOf(of) != 0)
            look(of);
    });
    if (held != nullptr && !all)
        fail(wide(held->table) + L" is open in a dialog that does not hold all tables of the run; close it first");
}

bool CompactTables::areUsable(bool opensAll)
{
    bool usable = true;
    const auto check = [&](const RecordDescription& of) {
        usable = usable && KorDatabaseAccess::checkTable(database, of, true) == 1;
    };
    for (const CompactTable& table : m_tables) {
        if (!table.isIn(type))
            continue;
        check(table.type());
        for (const RecordDescription* of :
             {&table.type(), table.type().items.exists() ? &table.type().items.item() : nullptr})
            if (of != nullptr && !onlyPreview && isOpen(*of, Man::kSecondCopy))
                fail(wide(of->table) + L" is open in an inner dialog; close it first");
    }
    if (type != KorOdbcCompactDetailsTables::kCompactDetailProcesses &&
        exists(database, descriptionOf<StructLinetypes>()))
        check(descriptionOf<StructLinetypes>()); // a copy is taken of it
    forEachOther(*this, [&](const RecordDescription& of, const ColumnDescription&, const CompactTable&) {
        if (exists(database, of))
            check(of);
    });
    if (!onlyPreview)
        checkDialogs(opensAll);
    return usable && !hasFailed();
}

void CompactTables::redirectOthers()
{
    forEachOther(*this, [&](const RecordDescription& from, const ColumnDescription& column,
                            const CompactTable& target) {
        if (target.report.deleted == 0 || !exists(database, from))
            return;
        std::vector<std::pair<int, int>> changed; // key, new value
        KorCompactedTable report{wide(from.table)};
        const int read = RecordAccess::visit(from, [&](const void* record) {
            const int value = column.integer(record);
            ++report.rows;
            if (target.standingFor(value) != value && !column.isNone(value))
                changed.emplace_back(from.keyOf(record), target.standingFor(value));
            return true;
        });
        const int at = storedColumn(database, report.table, wide(column.name));
        bool done = read == 1;
        for (const auto& [key, value] : changed)
            done = done && (onlyPreview || KorDatabaseAccess::setTableColumnValue(database, report.table, L"Key",
                                                                                  KorString::format(L"%d", key),
                                                                                  at, KorCellData(value)) == 1);
        if (!done)
            fail(report.table + L" could not be redirected");
        report.redirected = static_cast<int>(changed.size());
        if (report.redirected > 0)
            m_others.push_back(report);
    });
}

void CompactTables::checkReferences()
{
    if (onlyPreview)
        return;
    for (const auto describe : records::all()) {
        const RecordDescription& from = describe();
        const CompactTable* table = find(from);
        if (!records::isDetailTable(from) || (from.itemOwner >= 0 && table == nullptr) ||
            (table != nullptr && !table->isIn(type)) || !exists(database, from))
            continue;
        for (const ColumnDescription& column : from.columns)
            checkColumn(from, from, column);
        for (const ColumnDescription& column : from.numbered.columns)
            checkColumn(from, from, column);
        if (from.items.exists())
            for (const ColumnDescription& column : from.items.item().columns)
                checkColumn(from.items.item(), from, column);
    }
}

/// Asks the database for references that lead nowhere: those to rows that were there are losses. What stands
/// behind the number of items is no reference, nor is what an item says whose record is gone.
void CompactTables::checkColumn(const RecordDescription& holder, const RecordDescription& owner,
                                const ColumnDescription& column)
{
    const CompactTable* target = namesRowsOf(column) ? find(column.target()) : nullptr;
    if (target == nullptr || target->report.deleted == 0)
        return;
    const KorString table = wide(holder.table);
    const bool numbered = owner.numbered.exists() && column.name.find("%d") != std::string_view::npos;
    for (int number = 1;; ++number) {
        const KorString name = numbered ? KorString::format(wide(column.name).c_str(), number) : wide(column.name);
        const int at = storedColumn(database, table, name);
        if (at < 0)
            return;
        KorString where = L"[" + name + L"] NOT IN (SELECT [Key] FROM [" +
                          KorDatabaseAccess::getTableName(target->name()) + L"])";
        if (numbered && owner.itemCount >= 0)
            where += L" AND [" + wide(owner.at(owner.itemCount)->name) + KorString::format(L"] >= %d", number);
        if (&holder != &owner)
            where += L" AND [" + wide(holder.at(holder.itemOwner)->name) + L"] IN (SELECT [Key] FROM [" +
                     KorDatabaseAccess::getTableName(wide(owner.table)) + L"])";
        KorArray<KorCellData> values;
        if (KorDatabaseAccess::getColumnValues(database, table, where, {}, at, values) != 1) {
            fail(table + L" could not be checked");
            return;
        }
        for (long i = 0; i < values.length(); ++i) {
            const int key = values[i].getInt();
            if (target->standingFor(key) == key)
                continue; // led nowhere before
            KorArray<KorCellData> holders;
            KorDatabaseAccess::getColumnValues(database, table, where, {}, storedColumn(database, table, L"Key"),
                                               holders);
            fail(KorString::format(L"%s %s %s would name %s %d, which would be gone", table,
                                   i < holders.length() ? holders[i].getStringW() : KorString(), name,
                                   target->name(), key));
            return;
        }
        if (!numbered)
            return;
    }
}

} // namespace korodbc
