#include "transfer/KorDetailReferences.h"

#include "DetailReferences.h"
#include "foundation/RecordColumns.h"
#include "records/Registry.h"
#include "repository/KorDatabaseAccess.h"
#include "repository/KorDSNManager.h"
#include "repository/RecordAccess.h"

#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace korodbc {

namespace {

KorString wide(std::string_view text) { return KorString::fromUtf8(text); }

KorString columnName(const StoredReference& reference)
{
    const KorString pattern = wide(reference.column.name);
    return reference.item >= 0 && reference.from.numbered.exists()
               ? KorString::format(pattern.c_str(), reference.item + 1)
               : pattern;
}

KorDetailReference described(const StoredReference& reference)
{
    const RecordDescription& holder =
        reference.item >= 0 && reference.from.items.exists() ? reference.from.items.item() : reference.from;
    KorDetailReference result{wide(holder.table), columnName(reference),
                              reference.key,      {},
                              reference.item,     wide(reference.column.target().table),
                              reference.target};
    RecordAccess::runNameOfKey(reference.from, static_cast<long>(reference.key), result.name);
    return result;
}

using KeysByType = std::unordered_map<const RecordDescription*, std::unordered_set<int>>;

void addKeys(const RecordDescription& type, RecordAccess::Sources sources, KeysByType& keys)
{
    if (type.key < 0 || type.hasTextKey())
        return;
    RecordAccess::visit(
        type,
        [&known = keys[&type], &type](const void* record) {
            known.insert(type.keyOf(record));
            return true;
        },
        sources);
}

bool has(const KeysByType& keys, const RecordDescription& type, int key)
{
    const auto found = keys.find(&type);
    return found != keys.end() && found->second.contains(key);
}

/// Keys of the catalogue tables that the detail tables look up: rows of any data source will do.
KeysByType keysOfLookups()
{
    const KorDSNRequest base(KorDSNDefinitions::kDetails, KorDSNDefinitions::kBase);
    KeysByType keys;
    for (const auto describe : records::all()) {
        if (!records::isDetailTable(describe()))
            continue;
        for (const auto columns : {describe().columns, describe().numbered.columns})
            for (const ColumnDescription& column : columns)
                if (column.link == LinkKind::Lookup && !keys.contains(&column.target()))
                    addKeys(column.target(), RecordAccess::Sources::All, keys);
    }
    return keys;
}

} // namespace

int findReferences(const std::function<bool(const StoredReference&)>& wanted,
                   KorArray<KorDetailReference>& references)
{
    std::unordered_set<const RecordDescription*> itemTypes; // walked through with the rows that they belong to
    for (const auto describe : records::all())
        if (describe().items.exists())
            itemTypes.insert(&describe().items.item());
    const eDSN dsn = KorDSNManager::getInstance().getCurrentDSN();
    std::vector<StoredReference> found;
    for (const auto describe : records::all()) {
        const RecordDescription& type = describe();
        if (!records::isDetailTable(type) || itemTypes.contains(&type) ||
            KorDatabaseAccess::doesTableExists(dsn, wide(type.table)) != 1)
            continue;
        const int read = RecordAccess::visit(type, [&](const void* record) {
            const int key = type.keyOf(record);
            return forEachColumn(type, record,
                                 [&](const ColumnDescription& column, const void* element, long item) {
                                     if (column.link != LinkKind::None) {
                                         const StoredReference reference{type, column, key, static_cast<int>(item),
                                                                         column.integer(element)};
                                         if (wanted(reference))
                                             found.push_back(reference);
                                     }
                                     return true;
                                 });
        });
        if (read != 1)
            return 0;
    }
    for (const StoredReference& reference : found)
        references.append(described(reference));
    return 1;
}

} // namespace korodbc

using namespace korodbc;

int KorDetailReferences::getDangling(eDSN dsn, eIndex index, KorArray<KorDetailReference>& references)
{
    const KeysByType fixed = keysOfLookups();
    const KorDSNRequest request(dsn, index);
    KeysByType own;
    for (const auto describe : records::all())
        if (records::isDetailTable(describe()))
            addKeys(describe(), RecordAccess::Sources::Current, own);
    return findReferences(
        [&](const StoredReference& reference) {
            const RecordDescription& target = reference.column.target();
            const bool isLookup = reference.column.link == LinkKind::Lookup;
            // a look-up of -1 chooses nothing, where a reference has to say so
            if (reference.target == -1 && (reference.column.noneAllowed || isLookup))
                return false;
            return !has(own, target, reference.target) && !(isLookup && has(fixed, target, reference.target));
        },
        references);
}

int KorDetailReferences::getReferrers(eDSN dsn, eIndex index, const KorString& table, int key,
                                      KorArray<KorDetailReference>& references)
{
    const KorDSNRequest request(dsn, index);
    const std::string name = table.toUtf8();
    return findReferences(
        [&](const StoredReference& reference) {
            return reference.target == key && reference.column.target().table == name;
        },
        references);
}
