#include "DetailTables.h"

#include <unordered_map>

namespace korodbc {

namespace {

using M = KorOdbcMan;

/// The columns of all types, as the manager shows them.
struct ColumnCounts {
    int of[M::kTableTypes][2];
};
constexpr ColumnCounts columnCounts = [] {
    ColumnCounts counts{};
    for (const DetailTable& row : detailTables) {
        counts.of[row.type][0] = row.columns.fixed;
        counts.of[row.type][1] = row.columns.perItem;
    }
    return counts;
}();

} // namespace

const KorString& tableName(int type)
{
    static const std::array<KorString, M::kTableTypes> names = [] {
        std::array<KorString, M::kTableTypes> list;
        for (const DetailTable& row : detailTables)
            list[row.type] = KorString::fromUtf8(row.description().table);
        return list;
    }();
    return names[static_cast<std::size_t>(type)];
}

int tableTypeOf(const RecordDescription& description)
{
    static const std::unordered_map<const RecordDescription*, int> types = [] {
        std::unordered_map<const RecordDescription*, int> map;
        for (const DetailTable& row : detailTables)
            map.emplace(&row.description(), row.type);
        return map;
    }();
    const auto found = types.find(&description);
    return found == types.end() ? -1 : found->second;
}

int itemTableType(int ownerType)
{
    const ItemTable& items = detailTable(ownerType).description().items;
    return items.exists() ? tableTypeOf(items.item()) : -1;
}

} // namespace korodbc

// The fixed count is only used for tables with item columns.
constinit const int (&KorOdbcMan::m_numberOfColumns)[kTableTypes][2] = korodbc::columnCounts.of;
