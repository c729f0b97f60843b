#include "QualifierSetNumbers.h"

#include "CompactTables.h"
#include "edit/DetailTables.h"
#include "foundation/ManagerDatabase.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/records/configuration/ExchangeRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>

#include <algorithm>
#include <map>

namespace korodbc {

namespace {

using Sets = KorArray<StructDetObjQualifierSet>;
using Numbers = std::map<int, int>; // by key

bool readSets(Sets& sets)
{
    sets.removeAll();
    if (StructDetObjQualifierSetMarshal::getTable(sets) != 1)
        return false;
    std::stable_sort(sets.begin(), sets.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
    return true;
}

/// Keys of the items by the qualifier set that they belong to.
std::map<int, std::vector<int>> itemsOfSets()
{
    KorArray<StructDetObjQualifierSetItem> items;
    StructDetObjQualifierSetItemMarshal::getTable(items);
    std::map<int, std::vector<int>> keys;
    for (const StructDetObjQualifierSetItem& item : items)
        keys[item.qualifierSet].push_back(item.key);
    return keys;
}

/// A column that names qualifier sets, with what it holds.
struct Column {
    KorString table, name;
    int at = -1; // -1: the database does not have it
    KorArray<KorCellData> values{};

    bool read(eDSN database)
    {
        at = storedColumn(database, table, name);
        return at < 0 || KorDatabaseAccess::getColumnValues(database, table, {}, {}, at, values) == 1;
    }
};

constexpr const wchar_t* statements[] = {
    L"UPDATE DetObjReprMapItems SET ObjQualifier=%d WHERE ObjQualifier=%d",
    L"UPDATE DetViewDimPointSelection SET Objects=%d WHERE Objects=%d",
    L"UPDATE DetailStyleMapItems SET ObjQualifierSet=%d WHERE ObjQualifierSet=%d",
    L"UPDATE DetObjQualifierSet SET [Key]=%d WHERE [Key]=%d",
};

class Numbering {
public:
    explicit Numbering(CompactTables& run) : m_run(run) {}

    void number()
    {
        if (!readSets(m_sets) || !readColumns(m_before))
            return m_run.fail(L"the qualifier sets or the references to them cannot be read");
        for (long i = 0; i < m_sets.length(); ++i)
            if (!m_numbers.emplace(m_sets[i].key, static_cast<int>(i) + 1).second)
                return m_run.fail(KorString::format(L"two qualifier sets have the key %d", m_sets[i].key));
        m_items = itemsOfSets();
        m_ownerColumn = storedColumn(m_run.database, itemTable, L"IdDetObjQualifierSet");
        // keys below their number, which only keys of 0 and less make possible, are in the way of no higher number
        // when the last one moves first; all others are in the way of no lower one when the first one does
        long rising = 0;
        while (rising < m_sets.length() && m_sets[rising].key <= rising)
            ++rising;
        for (long i = rising - 1; i >= 0; --i)
            move(i);
        for (long i = rising; i < m_sets.length(); ++i)
            move(i);
        moveRules();
        check();
    }

private:
    void move(long position)
    {
        const int key = m_sets[position].key, number = static_cast<int>(position) + 1;
        if (key == number || m_run.hasFailed())
            return;
        bool done = true;
        for (const wchar_t* statement : statements)
            done = m_run.execute(statement, {number, key}) == 1 && done;
        // the items go with their set; the items of an earlier set of that number must not join them
        for (const int left : m_items[number])
            done = KorDatabaseAccess::deleteLine(itemTable, KorCellData(left)) == 1 && done;
        for (const int item : m_items[number] = m_items[key])
            done = KorDatabaseAccess::setTableColumnValue(m_run.database, itemTable, L"Key",
                                                          KorString::format(L"%d", item), m_ownerColumn,
                                                          KorCellData(number)) == 1 &&
                   done;
        m_items.erase(key);
        if (!done)
            m_run.fail(KorString::format(L"qualifier set %d could not get the number %d", key, number));
    }

    /// The rules of necessary views name sets, too. No copy is ever taken of them, so they must not move while
    /// Cancel may bring the old numbers back.
    void moveRules()
    {
        KorArray<StructNecessaryViewsConfiguration> rules;
        const KorString table(L"NecessaryViewsConfiguration");
        if (m_run.hasFailed() || m_before.back().at < 0 ||
            StructNecessaryViewsConfigurationMarshal::getTable(rules) != 1)
            return;
        const ColumnDescription& column =
            *std::ranges::find(descriptionOf<StructNecessaryViewsConfiguration>().columns, "DetObjQualifierSet",
                               &ColumnDescription::name);
        for (const StructNecessaryViewsConfiguration& rule : rules) {
            const int number = numberOf(rule.detObjQualifierSet);
            if (number == rule.detObjQualifierSet || column.isNone(rule.detObjQualifierSet))
                continue;
            if (isOpen(descriptionOf<StructDetObjQualifierSet>(), KorOdbcMan::kFirstCopy))
                return m_run.fail(KorString::format(
                    L"%s %d names qualifier set %d, and would name another if the open dialog of the qualifier "
                    L"sets were cancelled; close it first",
                    table, rule.key, rule.detObjQualifierSet));
            if (KorDatabaseAccess::setTableColumnValue(m_run.database, table, L"Key",
                                                       KorString::format(L"%d", rule.key), m_before.back().at,
                                                       KorCellData(number)) != 1)
                return m_run.fail(KorString::format(L"%s %d could not be redirected", table, rule.key));
        }
    }

    /// What is stored now against what was: the sets by their contents, the references by the set that they name.
    void check()
    {
        Sets after;
        std::vector<Column> references;
        if (m_run.hasFailed())
            return;
        if (!readSets(after) || !readColumns(references) || after.length() != m_sets.length())
            return m_run.fail(L"the numbered qualifier sets cannot be read");
        const DuplicateRule sameContents(descriptionOf<StructDetObjQualifierSet>());
        for (long i = 0; i < after.length(); ++i)
            if (after[i].key != i + 1 || after[i].runName != m_sets[i].runName ||
                !sameContents.equal(&after[i], &m_sets[i]))
                return m_run.fail(
                    KorString::format(L"qualifier set %d would not keep its contents under the number %d",
                                      m_sets[i].key, static_cast<int>(i) + 1));
        for (std::size_t i = 0; i < references.size(); ++i)
            for (long row = 0; row < m_before[i].values.length(); ++row) {
                const int before = m_before[i].values[row].getInt();
                if (m_before[i].values[row].getType() == KorItemType::kNone)
                    continue;
                if (row >= references[i].values.length() ||
                    (m_numbers.contains(before) && !isNone(i, before) &&
                     references[i].values[row].getInt() != numberOf(before)))
                    return m_run.fail(KorString::format(L"%s %s %d would name another qualifier set",
                                                        references[i].table, references[i].name, before));
            }
    }

    /// What names nothing keeps its value.
    int numberOf(int key) const
    {
        const auto found = m_numbers.find(key);
        return found == m_numbers.end() ? key : found->second;
    }
    static bool isNone(std::size_t column, int value) { return column == 3 && value == -1; }
    bool readColumns(std::vector<Column>& columns) const
    {
        columns = {{L"DetObjReprMapItems", L"ObjQualifier"},
                   {L"DetViewDimPointSelection", L"Objects"},
                   {L"DetailStyleMapItems", L"ObjQualifierSet"},
                   {L"NecessaryViewsConfiguration", L"DetObjQualifierSet"}};
        return std::ranges::all_of(columns, [&](Column& column) { return column.read(m_run.database); });
    }

    const KorString itemTable = L"DetObjQualifierSetItem";
    CompactTables& m_run;
    Sets m_sets; // before, by key
    Numbers m_numbers;
    std::map<int, std::vector<int>> m_items;
    int m_ownerColumn = -1;
    std::vector<Column> m_before; // the rules of necessary views last
};

} // namespace

int numberQualifierSets(CompactTables& run)
{
    Numbering(run).number();
    return run.hasFailed() ? 0 : 1;
}

} // namespace korodbc

void KorOdbcCompactDetailsTables::rearrangeQualifierSets()
{
    korodbc::CompactTables& run = korodbc::CompactTables::current();
    const korodbc::ManagerDatabase database(run.database, run.index);
    KorDatabaseBatch batch;
    if (KorDatabaseBatch::lock(run.database) == 1 && korodbc::numberQualifierSets(run) == 1)
        batch.end(1);
    else
        batch.undo(0);
}
