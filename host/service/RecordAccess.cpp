#include "database/RecordCache.h"
#include "service/Service.h"
#include "service/TableFit.h"

#include <korodbc/records/AnyRecord.h>
#include <korodbc/repository/RecordAccess.h>

#include <algorithm>
#include <charconv>
#include <numeric>
#include <unordered_set>
#include <utility>
#include <vector>

using namespace korodbc::host;

namespace {

RecordCache* recordsOf(const RecordDescription& type)
{
    Table* table = service().tableOf(type);
    RecordCache* records = table == nullptr ? nullptr : table->records(type);
    if (table != nullptr && records == nullptr)
        service().setError(table->database().failure());
    return records;
}

/// A source that has the table of a type.
struct Source {
    eDSN dsn;
    eIndex index;
    Table* table;
};

/// Adds the source if it has the table; false otherwise.
bool addSource(const RecordDescription& type, eDSN dsn, eIndex index, std::vector<Source>& sources)
{
    Database* database = service().database(dsn, index);
    if (database == nullptr)
        return false;
    database->validate();
    Table* table = database->table(service().physicalName(type));
    if (table == nullptr || !database->flush())
        return false;
    const auto known = [&](const Source& source) { return source.table == table; };
    if (std::none_of(sources.begin(), sources.end(), known))
        sources.push_back({dsn, index, table});
    return true;
}

/// Adds the first of the sources that keep such tables.
void addHome(const RecordDescription& type, std::vector<Source>& sources)
{
    for (unsigned dsn = 0; dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn) {
        const eDSN home = static_cast<eDSN>(dsn);
        if (type.homes.contains(home) && addSource(type, home, service().slot(home), sources))
            return;
    }
}

std::vector<Source> sourcesOf(const RecordDescription& type, RecordAccess::Sources wanted)
{
    const KorDSNManager& manager = KorDSNManager::getInstance();
    const eDSN current = manager.getCurrentDSN();
    std::vector<Source> sources;
    if (wanted != RecordAccess::Sources::All) {
        const bool elsewhereToo = wanted == RecordAccess::Sources::CurrentElseHome || !manager.isRequested();
        if (!addSource(type, current, manager.getCurrentIndex(), sources) && elsewhereToo)
            addHome(type, sources);
        if (sources.empty())
            service().noteMissing(type);
        return sources;
    }
    const Manifest& manifest = service().manifest();
    if (!manifest.connections[KorDSNDefinitions::kAddin].empty())
        addSource(type, KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin, sources);
    for (std::size_t i = 0; i < manifest.countryAddIns.size(); ++i)
        addSource(type, KorDSNDefinitions::kCountryAddin, static_cast<eIndex>(i + 1), sources);
    if (type.homes.contains(current))
        addSource(type, current, service().slot(current), sources);
    else
        addHome(type, sources);
    addSource(type, current, manager.getCurrentIndex(), sources);
    if (sources.empty())
        service().noteMissing(type);
    return sources;
}

/// The records of a type in every source that a read looks at, in the order of reading.
class Caches {
public:
    Caches(const RecordDescription& type, RecordAccess::Sources sources)
    {
        if (sources == RecordAccess::Sources::Current) {
            m_current = recordsOf(type);
            return;
        }
        const std::vector<Source> all = sourcesOf(type, sources);
        m_all.reserve(all.size());
        for (const Source& source : all) {
            if (RecordCache* records = source.table->records(type))
                m_all.push_back(records);
            else
                service().setError(source.table->database().failure());
        }
    }
    auto begin() const { return m_all.empty() ? &m_current : m_all.data(); }
    auto end() const { return begin() + (m_all.empty() ? (m_current != nullptr ? 1 : 0) : m_all.size()); }
    bool empty() const { return begin() == end(); }

private:
    RecordCache* m_current = nullptr;
    std::vector<RecordCache*> m_all;
};

/// The items of a type's records, as they stand; nullptr for a type without items or when their table is missing.
RecordCache* itemCache(const RecordDescription& type, const RecordCache& records)
{
    Table* table = type.items.exists() ? itemTableOf(records.table().database(), type) : nullptr;
    return table == nullptr ? nullptr : &table->recordCache(type.items.item());
}

/// Keeps the reason why a table cannot be read.
int unread(const RecordCache& records, int result = 0)
{
    const RecordDescription& type = records.type();
    const bool itemsMissing = type.items.exists() && itemCache(type, records) == nullptr;
    if (itemsMissing)
        service().setError("there is no table " + std::string(type.items.item().table) +
                               ", which holds the items of " + std::string(type.table),
                           FailureKind::Layout);
    else
        service().setError(records.table().database().failure());
    return result;
}

/// Puts the items of a record into it. False when they cannot be read: a record whose items cannot be read is no
/// record without items.
bool attachItems(const RecordDescription& type, RecordCache* items, void* record)
{
    if (!type.items.exists())
        return true;
    const MemberList& list = type.items.list;
    list.resize(record, 0);
    if (items == nullptr)
        return false;
    if (items->isSparse())
        return items->readOwner(type.keyOf(record), list.field(record));
    if (!items->refresh())
        return false;
    for (const long position : items->ofOwner(type.keyOf(record)))
        list.append(record, items->at(position));
    return true;
}

/// Reads the items of all records at once; false when they cannot be read.
bool itemsReady(const RecordDescription& type, const RecordCache& records)
{
    if (!type.items.exists() || records.length() == 0)
        return true;
    RecordCache* items = itemCache(type, records);
    return items != nullptr && items->refresh();
}

/// Shows all records, or the chosen ones; false when `act` wants no more.
bool show(const RecordCache& records, const std::function<bool(const void* record)>& act,
          const std::vector<long>* chosen = nullptr)
{
    const RecordDescription& type = records.type();
    const long length = chosen == nullptr ? records.length() : static_cast<long>(chosen->size());
    const auto at = [&](long i) {
        return records.at(chosen == nullptr ? i : (*chosen)[static_cast<std::size_t>(i)]);
    };
    if (!type.items.exists()) {
        for (long i = 0; i < length; ++i)
            if (!act(at(i)))
                return false;
        return true;
    }
    // items are kept apart from their records: they meet in one record that serves for all
    const AnyRecord complete(type);
    RecordCache* items = itemCache(type, records);
    for (long i = 0; i < length; ++i) {
        type.elements->assign(complete.get(), at(i));
        if (!attachItems(type, items, complete.get()) || !act(complete.get()))
            return false;
    }
    return true;
}

int handOut(RecordCache& records, long position, void* record)
{
    if (position < 0)
        return 0;
    const RecordDescription& type = records.type();
    if (!type.items.exists()) {
        type.elements->assign(record, records.at(position));
        return 1;
    }
    // the caller's record stays as it is when the items cannot be read
    const AnyRecord complete(type);
    type.elements->assign(complete.get(), records.at(position));
    if (!attachItems(type, itemCache(type, records), complete.get()))
        return unread(records);
    type.elements->assign(record, complete.get());
    return 1;
}

/// Reads one row of a large table that is not worth reading as a whole.
int readSingle(RecordCache& records, long key, void* record)
{
    const RecordDescription& type = records.type();
    const AnyRecord complete(type);
    if (!records.readKey(key, complete.get()))
        return records.misfit().empty() ? 0 : unread(records);
    if (!attachItems(type, itemCache(type, records), complete.get()))
        return unread(records);
    type.elements->assign(record, complete.get());
    return 1;
}

template <class Find>
int first(const RecordDescription& type, RecordAccess::Sources sources, void* record, Find find)
{
    for (RecordCache* records : Caches(type, sources))
        if (handOut(*records, find(*records), record) == 1)
            return 1;
    return 0;
}

/// Calls `act` with the position of each record, by the type's sort order or as in the table.
template <class Act>
void eachPosition(const RecordCache& records, bool ordered, Act act)
{
    const ColumnDescription* by = ordered ? records.type().at(records.type().sortOrder) : nullptr;
    const auto number = [&](long position) { return by->integer(records.at(position)); };
    long sorted = 1;
    while (by != nullptr && sorted < records.length() && number(sorted - 1) <= number(sorted))
        ++sorted;
    if (by == nullptr || sorted >= records.length()) {
        for (long position = 0; position < records.length(); ++position)
            act(position);
        return;
    }
    std::vector<long> order(static_cast<std::size_t>(records.length()));
    std::iota(order.begin(), order.end(), 0L);
    std::stable_sort(order.begin(), order.end(), [&](long a, long b) { return number(a) < number(b); });
    for (const long position : order)
        act(position);
}

/// Run name of the record at the position that `find` gives; -1 when the table cannot be read.
template <class Find>
int runNameWhere(const RecordDescription& type, KorString& runName, Find find)
{
    RecordCache* records = recordsOf(type);
    if (records == nullptr || type.runName < 0)
        return -1;
    const long position = find(*records);
    if (position < 0)
        return 0;
    runName = type.runNameColumn()->text(records->at(position));
    return 1;
}

/// Reads a whole text as a whole number; false when it is none.
bool number(const KorString& text, long& value)
{
    const std::wstring_view digits = text.view();
    char narrow[24];
    if (digits.empty() || digits.size() > sizeof(narrow))
        return false;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (digits[i] != L'-' && (digits[i] < L'0' || digits[i] > L'9'))
            return false;
        narrow[i] = static_cast<char>(digits[i]);
    }
    const auto end = std::from_chars(narrow, narrow + digits.size(), value);
    return end.ec == std::errc() && end.ptr == narrow + digits.size();
}

/// The keys that are looked for. Integer keys that lie close together are marks in their range, so that asking for
/// one is a single read.
class WantedKeys {
public:
    WantedKeys(const RecordDescription& type, const KorArray<long>& keys)
    {
        if (!type.hasTextKey())
            m_numbers.assign(keys.begin(), keys.end());
        mark();
    }
    WantedKeys(const RecordDescription& type, const KorArray<KorString>& keys)
    {
        if (type.hasTextKey()) {
            m_texts.insert(keys.begin(), keys.end());
            return;
        }
        m_numbers.reserve(static_cast<std::size_t>(keys.length()));
        for (const KorString& key : keys)
            if (long value = 0; number(key, value))
                m_numbers.push_back(value);
        mark();
    }

    bool has(const RecordDescription& type, const void* record) const
    {
        if (type.key < 0)
            return false;
        if (type.hasTextKey())
            return m_texts.contains(type.keyColumn().text(record));
        const long key = type.keyOf(record);
        if (m_marks.empty())
            return std::binary_search(m_numbers.begin(), m_numbers.end(), key);
        return key >= m_first && key - m_first < static_cast<long>(m_marks.size()) &&
               m_marks[static_cast<std::size_t>(key - m_first)] != 0;
    }

private:
    void mark()
    {
        std::erase_if(m_numbers, [](long key) { return !fitsKey(key); });
        if (m_numbers.empty())
            return;
        const auto [first, last] = std::minmax_element(m_numbers.begin(), m_numbers.end());
        m_first = *first;
        const auto range = static_cast<std::size_t>(*last - *first) + 1;
        if (range > 64 * m_numbers.size() + 4096) {
            std::sort(m_numbers.begin(), m_numbers.end());
            return;
        }
        m_marks.assign(range, 0);
        for (const long key : m_numbers)
            m_marks[static_cast<std::size_t>(key - m_first)] = 1;
    }

    std::unordered_set<KorString> m_texts;
    std::vector<long> m_numbers;
    std::vector<char> m_marks;
    long m_first = 0;
};

/// Positions of the records that have these keys, in the type's sort order.
std::vector<long> positionsOf(const RecordCache& records, const WantedKeys& keys)
{
    const RecordDescription& type = records.type();
    std::vector<long> positions;
    for (long position = 0; position < records.length(); ++position)
        if (keys.has(type, records.at(position)))
            positions.push_back(position);
    if (const ColumnDescription* by = type.at(type.sortOrder); by != nullptr) {
        const auto number = [&](long position) { return by->integer(records.at(position)); };
        const auto before = [&](long a, long b) { return number(a) < number(b); };
        if (!std::is_sorted(positions.begin(), positions.end(), before))
            std::stable_sort(positions.begin(), positions.end(), before);
    }
    return positions;
}

/// Puts the run names of the records with these keys into `names`; false when the table cannot be read.
template <class Key>
bool namesOfKeys(const RecordDescription& type, const KorArray<Key>& keys, KorArray<KorString>& names,
                 RecordAccess::Sources sources)
{
    const Caches caches(type, sources);
    const ColumnDescription* name = type.runNameColumn();
    if (caches.empty() || name == nullptr)
        return false;
    names.removeAll();
    const WantedKeys wanted(type, keys);
    for (const RecordCache* records : caches) {
        const std::vector<long> positions = positionsOf(*records, wanted);
        names.reserve(names.length() + static_cast<long>(positions.size()));
        for (const long position : positions)
            names.append(name->text(records->at(position)));
    }
    return true;
}

} // namespace

namespace RecordAccess {

int readByKey(const RecordDescription& type, long key, void* record, Sources sources)
{
    if (sources == Sources::Current && type.key >= 0 && !type.hasTextKey()) {
        Table* table = service().tableOf(type);
        RecordCache* records = table == nullptr ? nullptr : &table->recordCache(type);
        if (records != nullptr && records->isSparse())
            return readSingle(*records, key, record);
    }
    return first(type, sources, record, [&](RecordCache& records) { return records.findKey(key); });
}

int readByKey(const RecordDescription& type, const KorString& key, void* record, Sources sources)
{
    long value = 0;
    if (!type.hasTextKey())
        return number(key, value) ? readByKey(type, value, record, sources) : 0;
    return first(type, sources, record, [&](RecordCache& records) { return records.findKey(key); });
}

int readByRunName(const RecordDescription& type, const KorString& runName, void* record, Sources sources)
{
    return first(type, sources, record, [&](RecordCache& records) { return records.findRunName(runName); });
}

int readTable(const RecordDescription& type, void* out, Sources sources)
{
    const Caches caches(type, sources);
    for (const RecordCache* records : caches)
        if (!itemsReady(type, *records))
            return unread(*records);
    if (caches.empty())
        return 0;
    const ListOperations list = type.list();
    list.assign(out, (*caches.begin())->list());
    for (const auto* cache = caches.begin() + 1; cache != caches.end(); ++cache)
        for (long position = 0; position < (*cache)->length(); ++position)
            list.append(out, (*cache)->at(position));
    if (type.items.exists()) {
        long at = 0;
        for (const RecordCache* records : caches) {
            RecordCache* items = itemCache(type, *records);
            for (long position = 0; position < records->length(); ++position)
                attachItems(type, items, list.at(out, at++)); // they are ready
        }
    }
    return 1;
}

int readWhere(const RecordDescription& type, int column, long value, void* out)
{
    Table* table = service().tableOf(type);
    const ColumnDescription* field = type.at(column);
    if (table == nullptr || field == nullptr || field->kind != FieldKind::Integer)
        return -1;
    if (const Layout& layout = table->layout(type); layout.columns[static_cast<std::size_t>(column)] < 0) {
        Database::noteReadGap(layout.misfit(Use::Read));
        service().setError(layout.misfit(Use::Read),
                           FailureKind::Layout); // no row can be told to meet the condition, nor not to
        return -1;
    }
    const ListOperations list = type.list();
    RecordCache& records = table->recordCache(type);
    const long before = list.length(out);
    const auto result = [&](bool read) {
        if (!read)
            list.resize(out, before); // what was read of it goes
        return !read ? -1 : list.length(out) > before ? 1 : 0;
    };
    if (column == type.itemOwner && records.isSparse())
        return !records.readOwner(value, out) ? unread(records, result(false)) : result(true);
    if (!records.refresh())
        return unread(records, -1);
    RecordCache* items = itemCache(type, records);
    const auto take = [&](long position) {
        const long at = list.append(out, records.at(position));
        return attachItems(type, items, list.at(out, at));
    };
    bool read = true;
    if (column == type.itemOwner) {
        for (const long position : records.ofOwner(value))
            read = read && take(position);
    } else {
        for (long position = 0; position < records.length(); ++position)
            if (field->integer(records.at(position)) == value)
                read = read && take(position);
    }
    return read ? result(true) : unread(records, result(false));
}

int readFirstWhere(const RecordDescription& type, int column, long value, int column2, long value2, void* record)
{
    RecordCache* records = recordsOf(type);
    const ColumnDescription *one = type.at(column), *two = type.at(column2);
    if (records == nullptr || one == nullptr || two == nullptr)
        return 0;
    for (long position = 0; position < records->length(); ++position)
        if (one->integer(records->at(position)) == value && two->integer(records->at(position)) == value2)
            return handOut(*records, position, record);
    return 0;
}

int visit(const RecordDescription& type, const std::function<bool(const void* record)>& act, Sources sources)
{
    const Caches caches(type, sources);
    for (const RecordCache* records : caches)
        if (!itemsReady(type, *records))
            return unread(*records);
    for (const RecordCache* records : caches)
        if (!show(*records, act))
            break;
    return caches.empty() ? 0 : 1;
}

std::shared_ptr<const void> derived(const RecordDescription& type, const std::type_info& kind,
                                    const std::function<std::shared_ptr<const void>(const void* records)>& make)
{
    RecordCache* records = recordsOf(type);
    if (records == nullptr)
        return nullptr;
    std::shared_ptr<const void>& kept = records->derived(kind);
    if (kept == nullptr)
        kept = make(records->list());
    return kept;
}

void eachSource(const RecordDescription& type, Sources sources, const std::function<bool()>& act)
{
    for (const Source& source : sourcesOf(type, sources)) {
        const KorDSNRequest request(source.dsn, source.index);
        if (!act())
            return;
    }
}

int runNames(const RecordDescription& type, KorArray<KorString>& names, bool ordered, Sources sources)
{
    const Caches caches(type, sources);
    const ColumnDescription* name = type.runNameColumn();
    if (caches.empty() || name == nullptr)
        return 0;
    names.removeAll();
    long length = 0;
    for (const RecordCache* records : caches)
        length += records->length();
    names.reserve(length);
    for (const RecordCache* records : caches)
        eachPosition(*records, ordered, [&](long position) { names.append(name->text(records->at(position))); });
    return 1;
}

int runNamesOfKeys(const RecordDescription& type, const KorArray<long>& keys, KorArray<KorString>& names,
                   Sources sources)
{
    return namesOfKeys(type, keys, names, sources) ? 1 : 0;
}

int runNamesOfKeys(const RecordDescription& type, const KorArray<KorString>& keys, KorArray<KorString>& names,
                   Sources sources)
{
    KorArray<KorString> found;
    if (!namesOfKeys(type, keys, found, sources) || found.isEmpty())
        return 0;
    names = std::move(found);
    return 1;
}

int visitKeys(const RecordDescription& type, const KorArray<KorString>& keys,
              const std::function<bool(const void* record)>& act, Sources sources)
{
    const Caches caches(type, sources);
    for (const RecordCache* records : caches)
        if (!itemsReady(type, *records))
            return unread(*records);
    int found = 0;
    const WantedKeys wanted(type, keys);
    for (const RecordCache* records : caches) {
        const std::vector<long> positions = positionsOf(*records, wanted);
        found = found == 1 || !positions.empty() ? 1 : 0;
        if (!show(*records, act, &positions))
            break;
    }
    return found;
}

int keys(const RecordDescription& type, KorArray<long>& out)
{
    RecordCache* records = recordsOf(type);
    if (records == nullptr || type.key < 0 || type.hasTextKey())
        return 0;
    out.removeAll();
    out.reserve(records->length());
    for (long position = 0; position < records->length(); ++position)
        out.append(type.keyOf(records->at(position)));
    return 1;
}

int keys(const RecordDescription& type, KorArray<KorString>& out)
{
    RecordCache* records = recordsOf(type);
    if (records == nullptr || type.key < 0)
        return 0;
    out.removeAll();
    out.reserve(records->length());
    for (long position = 0; position < records->length(); ++position)
        out.append(type.hasTextKey() ? type.keyColumn().text(records->at(position))
                                     : KorString::format(L"%d", type.keyOf(records->at(position))));
    return 1;
}

int keyOfRunName(const RecordDescription& type, const KorString& runName, KorString& key)
{
    RecordCache* records = recordsOf(type);
    const long position = records == nullptr ? -1 : records->findRunName(runName);
    if (position < 0 || type.key < 0)
        return 0;
    key = type.hasTextKey() ? type.keyColumn().text(records->at(position))
                            : KorString::format(L"%d", type.keyOf(records->at(position)));
    return 1;
}

int keyOfRunName(const RecordDescription& type, const KorString& runName, int& key)
{
    RecordCache* records = recordsOf(type);
    const long position = records == nullptr ? -1 : records->findRunName(runName);
    if (position < 0 || type.key < 0 || type.hasTextKey())
        return 0;
    key = type.keyOf(records->at(position));
    return 1;
}

int runNameOfKey(const RecordDescription& type, const KorString& key, KorString& runName)
{
    long value = 0;
    if (!type.hasTextKey())
        return number(key, value) ? runNameOfKey(type, value, runName) : 0;
    return runNameWhere(type, runName, [&](RecordCache& records) { return records.findKey(key); });
}

int runNameOfKey(const RecordDescription& type, long key, KorString& runName)
{
    return runNameWhere(type, runName,
                        [&](RecordCache& records) { return type.hasTextKey() ? -1 : records.findKey(key); });
}

int hasRunName(const RecordDescription& type, const KorString& runName)
{
    Table* table = service().tableOf(type);
    return table == nullptr || type.runName < 0 ? -1 : table->recordCache(type).hasRunName(runName);
}

int loadItems(const RecordDescription& type)
{
    Table* table = service().tableOf(type);
    if (table == nullptr || !type.items.exists())
        return 0;
    RecordCache* items = itemCache(type, table->recordCache(type));
    return items != nullptr && (items->isSparse() || items->refresh()) ? 1 : 0;
}

void resetCache(const RecordDescription&) { service().checkAll(); }

} // namespace RecordAccess
