// The record reads over maps: every read makes the records of the table anew.

#include "MapHost.h"

#include <korodbc/records/AnyRecord.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/RecordAccess.h>

#include <algorithm>
#include <memory>
#include <typeindex>

using namespace maphost;
using RecordAccess::Sources;

namespace {

std::vector<eDSN> sourcesOf(const RecordDescription& type, Sources sources)
{
    const KorDSNManager& manager = KorDSNManager::getInstance();
    const eDSN current = manager.getCurrentDSN();
    const KorString name = KorString::fromUtf8(type.table);
    std::vector<eDSN> found;
    const auto add = [&](eDSN dsn) {
        const bool has = findTable(dsn, name) != nullptr;
        if (has && std::find(found.begin(), found.end(), dsn) == found.end())
            found.push_back(dsn);
        return has;
    };
    const auto addHome = [&] {
        for (unsigned dsn = 0; dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn)
            if (type.homes.contains(static_cast<eDSN>(dsn)) && add(static_cast<eDSN>(dsn)))
                return;
    };
    if (sources != Sources::All) {
        if (!add(current) && (sources == Sources::CurrentElseHome || !manager.isRequested()))
            addHome();
        return found;
    }
    add(KorDSNDefinitions::kAddin);
    type.homes.contains(current) ? static_cast<void>(add(current)) : addHome();
    add(current);
    return found;
}

/// Takes a row's cells into a new record or item; `item`, counted from 1, tells the columns of a numbered one.
void take(const Table& table, const Row& row, std::span<const ColumnDescription> columns, int item, void* element)
{
    for (const ColumnDescription& column : columns) {
        const int at = table.column(item > 0 ? numberedName(column, item) : KorString::fromUtf8(column.name));
        if (at < 0)
            continue;
        const KorCellData& cell = row[static_cast<std::size_t>(at)];
        if (cell.getType() == KorItemType::kNone && column.kind != FieldKind::Text)
            continue; // an empty cell is no number
        if (column.kind == FieldKind::Integer)
            column.integer(element) = cell.getInt();
        else if (column.kind == FieldKind::Real)
            column.real(element) = cell.getDouble();
        else
            column.text(element) = cell.getStringW();
    }
}

using Records = std::vector<const void*>;

/// By the column with that index, equal ones as they stand; -1 sorts nothing.
void sort(Records& records, const ColumnDescription* by)
{
    if (by != nullptr)
        std::stable_sort(records.begin(), records.end(),
                         [&](const void* a, const void* b) { return by->integer(a) < by->integer(b); });
}

/// The records of one source, with their items.
class SourceRecords {
public:
    SourceRecords(const RecordDescription& type, eDSN dsn) : m_type(type), m_list(type)
    {
        const Table& table = *findTable(dsn, KorString::fromUtf8(type.table));
        const ListOperations list = type.list();
        for (const Row& row : table.rows) {
            void* record = list.at(m_list.get(), list.append(m_list.get(), type.elements->fresh));
            take(table, row, type.columns, 0, record);
            for (int item = 1; item <= numberedItems(table, record); ++item) {
                type.numbered.list.resize(record, item);
                take(table, row, type.numbered.columns, item, type.numbered.list.at(record, item - 1));
            }
        }
        if (type.items.exists())
            readItems(dsn);
    }
    bool readable() const { return m_readable; }
    const void* list() const { return m_list.get(); }
    Records all() const
    {
        Records records;
        for (long i = 0; i < m_list.length(); ++i)
            records.push_back(m_list.at(i));
        return records;
    }

private:
    int numberedItems(const Table& table, const void* record) const
    {
        int columns = 0;
        while (m_type.numbered.exists() &&
               table.column(numberedName(m_type.numbered.columns.front(), columns + 1)) >= 0)
            ++columns;
        return m_type.itemCount < 0 ? columns
                                    : std::clamp(m_type.at(m_type.itemCount)->integer(record), 0, columns);
    }
    void readItems(eDSN dsn)
    {
        const RecordDescription& item = m_type.items.item();
        m_readable = findTable(dsn, KorString::fromUtf8(item.table)) != nullptr;
        if (!m_readable)
            return;
        const SourceRecords items(item, dsn);
        Records sorted = items.all();
        sort(sorted, item.at(item.itemOrder));
        const MemberList& list = m_type.items.list;
        for (long i = 0; i < m_list.length(); ++i)
            for (const void* one : sorted)
                if (item.at(item.itemOwner)->integer(one) == m_type.keyOf(m_list.at(i)))
                    list.append(m_list.at(i), one);
    }

    const RecordDescription& m_type;
    AnyRecords m_list;
    bool m_readable = true;
};

/// What a read looks at, source by source; empty when nothing can be read.
std::vector<std::unique_ptr<SourceRecords>> read(const RecordDescription& type, Sources sources = Sources::Current)
{
    std::vector<std::unique_ptr<SourceRecords>> found;
    for (const eDSN dsn : sourcesOf(type, sources)) {
        found.push_back(std::make_unique<SourceRecords>(type, dsn));
        if (!found.back()->readable())
            return {};
    }
    return found;
}

KorString keyText(const RecordDescription& type, const void* record)
{
    return type.hasTextKey() ? type.keyColumn().text(record) : KorString::format(L"%d", type.keyOf(record));
}

template <class Matches>
int first(const RecordDescription& type, Sources sources, void* out, Matches matches)
{
    for (const auto& source : read(type, sources))
        for (const void* record : source->all())
            if (matches(record)) {
                type.elements->assign(out, record);
                return 1;
            }
    return 0;
}

/// Calls `act` for the records with these keys in sort order until it returns false.
template <class Act>
void eachOfKeys(const RecordDescription& type, const SourceRecords& source, const KorArray<KorString>& keys,
                Act act)
{
    Records records = source.all();
    std::erase_if(records, [&](const void* record) {
        return std::find(keys.begin(), keys.end(), keyText(type, record)) == keys.end();
    });
    sort(records, type.at(type.sortOrder));
    for (const void* record : records)
        if (!act(record))
            return;
}

} // namespace

int RecordAccess::readByKey(const RecordDescription& type, const KorString& key, void* record, Sources sources)
{
    return first(type, sources, record,
                 [&](const void* one) { return type.key >= 0 && keyText(type, one) == key; });
}

int RecordAccess::readByKey(const RecordDescription& type, long key, void* record, Sources sources)
{
    return type.hasTextKey() ? 0 : readByKey(type, KorString::format(L"%d", key), record, sources);
}

int RecordAccess::readByRunName(const RecordDescription& type, const KorString& runName, void* record,
                                Sources sources)
{
    const ColumnDescription* name = type.runNameColumn();
    return first(type, sources, record,
                 [&](const void* one) { return name != nullptr && name->text(one) == runName; });
}

int RecordAccess::readTable(const RecordDescription& type, void* records, Sources sources)
{
    const auto found = read(type, sources);
    const ListOperations list = type.list();
    if (found.empty())
        return 0;
    list.resize(records, 0);
    for (const auto& source : found)
        for (const void* record : source->all())
            list.append(records, record);
    return 1;
}

int RecordAccess::readWhere(const RecordDescription& type, int column, long value, void* records)
{
    const auto found = read(type);
    const ColumnDescription* by = type.at(column);
    if (found.empty() || by == nullptr || by->kind != FieldKind::Integer)
        return -1;
    const Table& table = *findTable(sourcesOf(type, Sources::Current).front(), KorString::fromUtf8(type.table));
    if (table.column(KorString::fromUtf8(by->name)) < 0)
        return -1;
    Records all = found.front()->all();
    sort(all, column == type.itemOwner ? type.at(type.itemOrder) : nullptr);
    int result = 0;
    for (const void* record : all)
        if (by->integer(record) == value) {
            type.list().append(records, record);
            result = 1;
        }
    return result;
}

int RecordAccess::readFirstWhere(const RecordDescription& type, int column, long value, int column2, long value2,
                                 void* record)
{
    return first(type, Sources::Current, record, [&](const void* one) {
        return type.at(column)->integer(one) == value && type.at(column2)->integer(one) == value2;
    });
}

int RecordAccess::visit(const RecordDescription& type, const std::function<bool(const void* record)>& act,
                        Sources sources)
{
    const auto found = read(type, sources);
    for (const auto& source : found)
        for (const void* record : source->all())
            if (!act(record))
                return 1;
    return found.empty() ? 0 : 1;
}

std::shared_ptr<const void>
RecordAccess::derived(const RecordDescription& type, const std::type_info& kind,
                      const std::function<std::shared_ptr<const void>(const void* records)>& make)
{
    static std::map<std::pair<const Table*, std::type_index>, std::pair<long, std::shared_ptr<const void>>> known;
    const auto found = read(type);
    if (found.empty())
        return nullptr;
    const Table* table = findTable(sourcesOf(type, Sources::Current).front(), KorString::fromUtf8(type.table));
    auto& [made, kept] = known[{table, kind}];
    if (kept == nullptr || made != writes())
        kept = make(found.front()->list());
    made = writes();
    return kept;
}

int RecordAccess::visitKeys(const RecordDescription& type, const KorArray<KorString>& keys,
                            const std::function<bool(const void* record)>& act, Sources sources)
{
    int result = 0;
    bool more = true;
    for (const auto& source : read(type, sources))
        eachOfKeys(type, *source, keys, [&](const void* record) {
            result = 1;
            return more = more && act(record);
        });
    return result;
}

void RecordAccess::eachSource(const RecordDescription& type, Sources sources, const std::function<bool()>& act)
{
    for (const eDSN dsn : sourcesOf(type, sources)) {
        const KorDSNRequest request(dsn, KorDSNDefinitions::kBase);
        if (!act())
            return;
    }
}

int RecordAccess::runNames(const RecordDescription& type, KorArray<KorString>& names, bool ordered,
                           Sources sources)
{
    const auto found = read(type, sources);
    if (found.empty() || type.runName < 0)
        return 0;
    names.removeAll();
    for (const auto& source : found) {
        Records records = source->all();
        sort(records, ordered ? type.at(type.sortOrder) : nullptr);
        for (const void* record : records)
            names.append(type.runNameColumn()->text(record));
    }
    return 1;
}

int RecordAccess::runNamesOfKeys(const RecordDescription& type, const KorArray<KorString>& keys,
                                 KorArray<KorString>& names, Sources sources)
{
    KorArray<KorString> found;
    if (type.runName >= 0)
        for (const auto& source : read(type, sources))
            eachOfKeys(type, *source, keys,
                       [&](const void* record) { return found.append(type.runNameColumn()->text(record)) >= 0; });
    if (found.isEmpty())
        return 0;
    names = std::move(found);
    return 1;
}

int RecordAccess::runNamesOfKeys(const RecordDescription& type, const KorArray<long>& keys,
                                 KorArray<KorString>& names, Sources sources)
{
    if (read(type, sources).empty() || type.runName < 0)
        return 0;
    KorArray<KorString> texts;
    for (const long key : keys)
        texts.append(KorString::format(L"%d", key));
    names.removeAll();
    runNamesOfKeys(type, texts, names, sources);
    return 1;
}

int RecordAccess::keys(const RecordDescription& type, KorArray<KorString>& keys)
{
    const auto found = read(type);
    if (found.empty() || type.key < 0)
        return 0;
    keys.removeAll();
    for (const void* record : found.front()->all())
        keys.append(keyText(type, record));
    return 1;
}

int RecordAccess::keys(const RecordDescription& type, KorArray<long>& keys)
{
    KorArray<KorString> texts;
    if (type.hasTextKey() || RecordAccess::keys(type, texts) != 1)
        return 0;
    keys.removeAll();
    for (const KorString& text : texts)
        keys.append(text.toInteger());
    return 1;
}

int RecordAccess::keyOfRunName(const RecordDescription& type, const KorString& runName, KorString& key)
{
    const AnyRecord record(type);
    if (type.key < 0 || readByRunName(type, runName, record.get()) != 1)
        return 0;
    key = keyText(type, record.get());
    return 1;
}

int RecordAccess::keyOfRunName(const RecordDescription& type, const KorString& runName, int& key)
{
    KorString text;
    if (type.hasTextKey() || keyOfRunName(type, runName, text) != 1)
        return 0;
    key = static_cast<int>(text.toInteger());
    return 1;
}

int RecordAccess::runNameOfKey(const RecordDescription& type, const KorString& key, KorString& runName)
{
    const AnyRecord record(type);
    if (type.runName < 0 || read(type).empty())
        return -1;
    if (readByKey(type, key, record.get()) != 1)
        return 0;
    runName = type.runNameColumn()->text(record.get());
    return 1;
}

int RecordAccess::runNameOfKey(const RecordDescription& type, long key, KorString& runName)
{
    return runNameOfKey(type, KorString::format(L"%d", key), runName);
}

int RecordAccess::hasRunName(const RecordDescription& type, const KorString& runName)
{
    const AnyRecord record(type);
    return read(type).empty() || type.runName < 0 ? -1 : readByRunName(type, runName, record.get());
}

int RecordAccess::loadItems(const RecordDescription& type)
{
    return type.items.exists() && !read(type).empty() ? 1 : 0;
}

void RecordAccess::resetCache(const RecordDescription&) {}
