#include "CompactTables.h"

#include "edit/DetailTables.h"
#include "foundation/RecordColumns.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/RecordAccess.h>

#include <algorithm>
#include <numeric>
#include <span>

namespace korodbc {

using Compact = KorOdbcCompactDetailsTables;

namespace {

using Man = KorOdbcMan;

constexpr std::size_t keysPerStatement = 10;

using enum Man::eTableType;
/// The tables are read and saved in this order.
constexpr Man::eTableType order[] = {kDetViewSystemAndBox,        kDetViewLengthClip,   kDetViewDimStrategy,
                                     kDetViewArrangeStrategy,     kDetArrangerControl,  kDetArrangerStrategy,
                                     kDetAnnotationType,          kDetailStyle,         kDetObjAnnotationStrategy,
                                     kDetObjQualifierSet,         kDetObjReprMap,       kDetViewDimPointSelection,
                                     kDetViewDimRequestLinear,    kDetViewRequest,      kDetViewRequestCategories,
                                     kDetailProcessDefinition,    kDetailProcessStep,   kDetailFilenameSelector,
                                     kDetailProcessMain2CutScale, kDetailProcessScales, kDetailStyleMap};
static_assert(std::ranges::all_of(detailTables, [](const DetailTable& table) {
    return std::ranges::count(order, table.type) == (table.compaction.exists() ? 1 : 0);
}));

KorString wide(std::string_view text) { return KorString::fromUtf8(text); }

std::unique_ptr<CompactTables>& lastRun()
{
    static std::unique_ptr<CompactTables> run;
    return run;
}

/// The slot in which a run finds its database: of the country add-ins the edit manager's current one.
eIndex slotOf(eDSN database)
{
    if (database == KorDSNDefinitions::kCountryAddin)
        return KorOdbcMan::m_currentDSN == database ? KorOdbcMan::m_currentAddIn : KorDSNManager::getAddInIdx(0);
    return database == KorDSNDefinitions::kAddin ? KorDSNDefinitions::kFirstAddin : KorDSNDefinitions::kBase;
}

} // namespace

CompactTable::CompactTable(const DetailTable& table)
    : rules(table.compaction), m_type(table.description()), m_rule(m_type, rules.columns),
      m_records(std::make_unique<AnyRecords>(m_type))
{
}

bool CompactTable::isIn(Compact::eCompactType run) const
{
    return (rules.ofStyles && run != Compact::kCompactDetailProcesses) ||
           (rules.ofProcesses && run != Compact::kCompactDetailStyles);
}

KorString CompactTable::name() const { return wide(m_type.table); }

bool CompactTable::load()
{
    clear();
    report.table = name();
    // without their table rows would read as rows without items, all of them equal
    if (m_type.items.exists() && KorDatabaseAccess::doesTableExists(KorDSNManager::getInstance().getCurrentDSN(),
                                                                    wide(m_type.items.item().table)) != 1)
        return false;
    if (RecordAccess::readTable(m_type, m_records->get()) != 1)
        return false;
    report.rows = static_cast<int>(length());
    const auto keyLess = [this](long a, long b) { return m_type.keyOf(at(a)) < m_type.keyOf(at(b)); };
    std::vector<long> order(static_cast<std::size_t>(length()));
    std::iota(order.begin(), order.end(), 0);
    if (!std::is_sorted(order.begin(), order.end(), keyLess)) {
        std::stable_sort(order.begin(), order.end(), keyLess);
        auto sorted = std::make_unique<AnyRecords>(m_type);
        for (const long position : order)
            m_type.list().append(sorted->get(), at(position));
        m_records = std::move(sorted);
    }
    return true;
}

void CompactTable::clear()
{
    m_records = std::make_unique<AnyRecords>(m_type);
    m_standing.clear();
    m_duplicates.clear();
}

void CompactTable::findDuplicates()
{
    const std::vector<long> survivors = m_rule.survivors(m_type.list(), m_records->get());
    m_standing.clear();
    m_standing.reserve(survivors.size());
    m_duplicates.clear();
    for (std::size_t i = 0; i < survivors.size(); ++i) {
        const int key = m_type.keyOf(at(static_cast<long>(i)));
        const int standing = m_type.keyOf(at(survivors[i]));
        if (m_standing.emplace(key, standing).second && standing != key)
            m_duplicates.push_back(key);
    }
    report.duplicates = static_cast<int>(m_duplicates.size());
}

int CompactTable::standingFor(int key) const
{
    const auto found = m_standing.find(key);
    return found == m_standing.end() ? key : found->second;
}

CompactTables::CompactTables(eDSN ofDatabase, Type ofType, bool preview)
    : database(ofDatabase), index(slotOf(ofDatabase)), type(ofType), onlyPreview(preview)
{
    for (const Man::eTableType type : order)
        m_tables.emplace_back(detailTable(type));
}

CompactTables& CompactTables::current()
{
    return lastRun() == nullptr ? begin(KorDSNDefinitions::kDetails, Compact::kCompactDetailStyles, false)
                                : *lastRun();
}

CompactTables& CompactTables::begin(eDSN database, Type type, bool onlyPreview)
{
    lastRun() = std::make_unique<CompactTables>(database, type, onlyPreview);
    return *lastRun();
}

CompactTable* CompactTables::find(const RecordDescription& wanted)
{
    const auto found = std::find_if(m_tables.begin(), m_tables.end(),
                                    [&](const CompactTable& table) { return &table.type() == &wanted; });
    return found == m_tables.end() ? nullptr : &*found;
}

void CompactTables::fail(const KorString& reason)
{
    if (m_failure.isEmpty())
        m_failure = reason;
}

void CompactTables::clear(bool undone)
{
    for (CompactTable& table : m_tables) {
        table.clear();
        if (undone)
            table.report.redirected = table.report.deleted = 0;
    }
    if (undone)
        m_others.clear();
}

int CompactTables::execute(const KorString& pattern, std::initializer_list<int> values) const
{
    if (onlyPreview)
        return 1;
    const std::vector<KorFormatArgument> arguments(values.begin(), values.end());
    return KorDatabaseAccess::doSQLStatement(database, pattern, arguments);
}

void CompactTables::redirect(CompactTable& table)
{
    const KorDSNRequest request(database, index);
    for (long i = 0; i < table.length() && !hasFailed(); ++i) {
        void* record = table.at(i);
        forEachColumn(
            table.type(), record,
            [&](const ColumnDescription& column, void*, long item) {
                if (column.namesRows() && column.kind == FieldKind::Integer)
                    redirectColumn(table, column, record, item);
                return true;
            },
            table.rules.listFirst ? ColumnOrder::ItemsFirst : ColumnOrder::ItemsLast);
    }
}

void CompactTables::redirectColumn(CompactTable& table, const ColumnDescription& column, void* record, long item)
{
    const RecordDescription& from = table.type();
    const CompactTable* target = find(column.target());
    if (target == nullptr)
        return;
    void* element = item < 0 ? record : from.itemList()->at(record, item);
    int& value = column.integer(element);
    const int standing = target->standingFor(value);
    if (standing == value)
        return;
    const bool inItemTable = item >= 0 && from.items.exists();
    if (inItemTable && isAmbiguous(table, column, record, item, standing))
        return;
    value = standing;
    ++table.report.redirected;
    std::vector<KorString>& patterns = m_patterns[&column];
    const auto number = static_cast<std::size_t>(item < 0 || inItemTable ? 0 : item);
    if (patterns.size() <= number)
        patterns.resize(number + 1);
    KorString& pattern = patterns[number];
    const RecordDescription& rows = inItemTable ? from.items.item() : from;
    if (pattern.isEmpty()) {
        const KorString name = item < 0 || inItemTable
                                   ? wide(column.name)
                                   : KorString::format(wide(column.name).c_str(), static_cast<int>(item) + 1);
        pattern = L"UPDATE " + wide(rows.table) + L" SET " + name +
                  (inItemTable ? L"=%d WHERE ([Key]=%d AND [Order]=%d);" : L"=%d WHERE [Key]=%d;");
    }
    const int done = inItemTable ? execute(pattern, {value, rows.at(rows.itemOwner)->integer(element),
                                                     rows.at(rows.itemOrder)->integer(element)})
                                 : execute(pattern, {value, from.keyOf(record)});
    if (done != 1)
        fail(KorString::format(L"%s %d could not be redirected", wide(rows.table), from.keyOf(record)));
}

/// A statement for one item reaches every item of its order. Fails the run where that would give another one a
/// reference that is not its own.
bool CompactTables::isAmbiguous(const CompactTable& table, const ColumnDescription& column, void* record,
                                long item, int standing)
{
    const RecordDescription& from = table.type();
    const RecordDescription& rows = from.items.item();
    const auto orderOf = [&](long of) { return rows.at(rows.itemOrder)->integer(from.items.list.at(record, of)); };
    const CompactTable* target = find(column.target());
    for (long other = 0; other < from.items.list.length(record); ++other)
        if (other != item && orderOf(other) == orderOf(item) &&
            target->standingFor(column.integer(from.items.list.at(record, other))) != standing) {
            fail(KorString::format(L"two items of %s %d have the order %d, so that a reference of one cannot be "
                                   L"changed alone; store that row again",
                                   table.name(), from.keyOf(record), orderOf(item)));
            return true;
        }
    return false;
}

int CompactTables::deleteDuplicates(CompactTable& table)
{
    const KorDSNRequest request(database, index);
    const std::vector<int>& keys = table.duplicates();
    const RecordDescription& from = table.type();
    const bool itemsByOwner = from.items.exists() && from.items.item().key < 0;
    int result = 1;
    KorString condition, statement; // patterns for as many keys as the last batch had
    std::size_t keysInCondition = 0;
    for (std::size_t i = 0; i < keys.size(); i += keysPerStatement) {
        const auto batch = std::span(keys).subspan(i, std::min(keys.size() - i, keysPerStatement));
        if (batch.size() != keysInCondition) {
            keysInCondition = batch.size();
            condition = L"[Key] = %d";
            for (std::size_t j = 1; j < keysInCondition; ++j)
                condition += L" OR [Key] = %d";
            statement = L"DELETE FROM " + table.name() + L" WHERE " + condition + L";";
        }
        if (condition.length() > table.rules.minimumCondition && !onlyPreview)
            result = KorDatabaseAccess::doSQLStatement(database, statement,
                                                       std::vector<KorFormatArgument>(batch.begin(), batch.end()));
        if (result == 0)
            fail(L"rows of " + table.name() + L" could not be deleted");
    }
    table.report.deleted = static_cast<int>(keys.size());
    // items with keys of their own stay: no copy is taken of them, so Cancel needs them, and storing a row
    // replaces what an earlier one of its key left
    if (!itemsByOwner)
        return 1; // whatever the statements gave: a failure is noted
    const KorString pattern = L"DELETE FROM " + wide(from.items.item().table) + L" WHERE [Key]=%d;";
    for (const int key : keys) {
        result = execute(pattern, {key});
        if (result == 0)
            fail(L"items of " + table.name() + L" could not be deleted");
    }
    return result != 0 ? 1 : 0;
}

} // namespace korodbc
