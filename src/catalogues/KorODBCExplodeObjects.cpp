#include <korodbc/catalogues/KorODBCExplodeObjects.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/roots/KorAssert.h>

#include <algorithm>
#include <unordered_map>

namespace {

constexpr eDSN users = KorDSNDefinitions::kAddin;
constexpr eIndex usersIndex = KorDSNDefinitions::kFirstAddin;

/// The name of a row whose key the service gave.
KorString nameOf(const KorCellData& key)
{
    switch (key.getType()) {
    case KorItemType::kString:
        return key.getStringW();
    case KorItemType::kInt:
        return KorString::format(L"%d", key.getInt());
    default:
        KorAssert::korAssert("false", "KorODBCExplodeObjects", __LINE__);
        return {};
    }
}

} // namespace

int KorODBCExplodeObjects::getExplodeObjectsTable(KorArray<StructExplodeObjects>& records, int sorted)
{
    const int own = getExplodeObjectsTable(records, users, usersIndex, sorted);
    KorArray<StructExplodeObjects> defaults;
    const int read =
        getExplodeObjectsTable(defaults, KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase, sorted);
    if (own != 1) {
        if (read == 1)
            records = std::move(defaults);
        return read;
    }
    if (records.length() >= defaults.length())
        return own;
    std::unordered_map<KorString, const StructExplodeObjects*> byName;
    for (const StructExplodeObjects& record : records)
        byName.emplace(record.name, &record);
    for (StructExplodeObjects& record : defaults)
        if (const auto replacing = byName.find(record.name); replacing != byName.end())
            record = *replacing->second;
    records = std::move(defaults);
    return own;
}

int KorODBCExplodeObjects::setExplodeObjects(KorString name, const StructExplodeObjects& record)
{
    const KorDSNRequest request(users, usersIndex);
    StructExplodeObjects known;
    if (byKey(name, known) == 1)
        return 0;
    const KorString table = KorDatabaseAccess::getTableName(L"ExplodeObjectsTo");
    if (KorDatabaseAccess::checkTable(users, StructExplodeObjectsMarshal::type(), true) != 1)
        return -1; // its columns stand elsewhere
    KorDatabaseBatch batch;
    KorCellData key = name.isEmpty() ? KorCellData() : KorCellData(name);
    if (KorDatabaseAccess::appendNewLine(users, table, key, true, !name.isEmpty()) != 1)
        return batch.undo(-1);
    name = nameOf(key);
    const KorCellData values[] = {record.solidsTo,     record.solidsGrouped, record.linesTo,
                                  record.linesGrouped, record.textsTo,       record.textsGrouped};
    bool written = true;
    int column = 0;
    for (const KorCellData& value : values)
        written =
            KorDatabaseAccess::setTableColumnValue(users, table, L"Key", name, ++column, value) == 1 && written;
    StructExplodeObjectsMarshal::resetTableCache(0);
    return written && batch.end(1) == 1 ? 1 : batch.undo(-1);
}

int KorODBCExplodeObjects::setExplodeObjectsTable(const KorArray<StructExplodeObjects>& records)
{
    KorDatabaseBatch batch;
    for (const StructExplodeObjects& record : records)
        if (setExplodeObjects(record.name, record) == -1)
            return batch.undo(-1);
    return batch.end(1) == 1 ? 1 : -1;
}

int KorODBCExplodeObjects::compareExplodeObjects(const void* left, const void* right)
{
    const int a = static_cast<const StructExplodeObjects*>(left)->order;
    const int b = static_cast<const StructExplodeObjects*>(right)->order;
    return a < b ? -1 : a > b ? 1 : 0;
}
