#include "DetailReferences.h"
#include "foundation/RecordColumns.h"

#include <korodbc/records/Registry.h>
#include <korodbc/references/KorDetailReferences.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/RecordAccess.h>

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
                              reference.target,   reference.text};
    RecordAccess::runNameOfKey(reference.from, static_cast<long>(reference.key), result.name);
    return result;
}

/// The keys of the rows of a type: numbers or texts.
struct Keys {
    std::unordered_set<int> numbers;
    std::unordered_set<KorString> texts;
};
using KeysByType = std::unordered_map<const RecordDescription*, Keys>;

void addKeys(const RecordDescription& type, RecordAccess::Sources sources, KeysByType& keys)
{
    if (type.key < 0)
        return;
    RecordAccess::visit(
        type,
        [&known = keys[&type], &type](const void* record) {
            if (type.hasTextKey())
                known.texts.insert(type.keyColumn().text(record));
            else
                known.numbers.insert(type.keyOf(record));
            return true;
        },
        sources);
}

bool has(const KeysByType& keys, const StoredReference& reference)
{
    const auto found = keys.find(&reference.column.target());
    if (found == keys.end())
        return false;
    return reference.column.kind == FieldKind::Text ? found->second.texts.contains(reference.text)
                                                    : found->second.numbers.contains(reference.target);
}

/// True when the reference chooses no row.
bool namesNone(const StoredReference& reference)
{
    return reference.column.kind == FieldKind::Text ? reference.text.isEmpty()
                                                    : reference.column.isNone(reference.target);
}

/// True for the tables whose references are looked at.
bool isWalked(const RecordDescription& type)
{
    return records::isDetailTable(type) || records::isProjectTable(type);
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

template <class Leads>
int findReferrers(eDSN dsn, eIndex index, const KorString& table, FieldKind kind,
                  KorArray<KorDetailReference>& references, Leads leads)
{
    const KorDSNRequest request(dsn, index);
    const KorDatabaseReading reading(dsn);
    const std::string name = table.toUtf8();
    return findReferences(
        [&](const StoredReference& reference) {
            return leads(reference) && reference.column.kind == kind && reference.column.target().table == name;
        },
        references);
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
        if (!isWalked(type) || itemTypes.contains(&type) ||
            KorDatabaseAccess::doesTableExists(dsn, wide(type.table)) != 1)
            continue;
        const int read = RecordAccess::visit(type, [&](const void* record) {
            const int key = type.keyOf(record);
            return forEachColumn(
                type, record, [&](const ColumnDescription& column, const void* element, long item) {
                    if (column.link != LinkKind::None) {
                        const bool isText = column.kind == FieldKind::Text;
                        const StoredReference reference{type,
                                                        column,
                                                        key,
                                                        static_cast<int>(item),
                                                        isText ? -1 : column.integer(element),
                                                        isText ? column.text(element) : KorString()};
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
    const KorDatabaseReading reading(dsn); // rows and references of one state
    KeysByType own;
    for (const auto describe : records::all())
        if (isWalked(describe()))
            addKeys(describe(), RecordAccess::Sources::Current, own);
    return findReferences(
        [&](const StoredReference& reference) {
            return !namesNone(reference) && !has(own, reference) &&
                   !(reference.column.link == LinkKind::Lookup && has(fixed, reference));
        },
        references);
}

int KorDetailReferences::getReferrers(eDSN dsn, eIndex index, const KorString& table, int key,
                                      KorArray<KorDetailReference>& references)
{
    return findReferrers(dsn, index, table, FieldKind::Integer, references,
                         [=](const StoredReference& reference) { return reference.target == key; });
}

int KorDetailReferences::getReferrers(eDSN dsn, eIndex index, const KorString& table, const KorString& key,
                                      KorArray<KorDetailReference>& references)
{
    return findReferrers(dsn, index, table, FieldKind::Text, references,
                         [&](const StoredReference& reference) { return reference.text == key; });
}

int KorDetailReferences::count(eDSN dsn, eIndex index)
{
    const KorDSNRequest request(dsn, index);
    KorArray<KorDetailReference> none;
    int count = 0;
    return findReferences(
               [&](const StoredReference& reference) {
                   count += namesNone(reference) ? 0 : 1;
                   return false;
               },
               none) == 1
               ? count
               : -1;
}
