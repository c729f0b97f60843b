#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>
#include <korodbc/references/KorDetailSharing.h>
#include <korodbc/repository/RecordAccess.h>

#include <algorithm>
#include <functional>
#include <span>
#include <vector>

namespace {

/// Takes the key of the record that holds a reference; false ends the search.
using Act = std::function<bool(int holder)>;

/// The references to one record from the rows of one table.
class References {
public:
    References(std::span<const ColumnDescription> columns, const RecordDescription& target, int key) : m_key(key)
    {
        for (const ColumnDescription& column : columns)
            if (column.link != LinkKind::None && column.kind == FieldKind::Integer && &column.target() == &target)
                m_columns.push_back(&column);
    }
    bool possible() const { return !m_columns.empty(); }
    /// Calls `act` once for each reference in the row; false when it wants no more.
    bool show(const void* row, int holder, const Act& act) const
    {
        return std::all_of(m_columns.begin(), m_columns.end(), [&](const ColumnDescription* column) {
            return column->integer(row) != m_key || act(holder);
        });
    }

private:
    std::vector<const ColumnDescription*> m_columns;
    int m_key;
};

/// References from the columns of the records, the numbered ones included.
bool showOwn(const RecordDescription& type, const RecordDescription& target, int key, const Act& act)
{
    const References fixed(type.columns, target, key);
    const References numbered(type.numbered.columns, target, key);
    if (!fixed.possible() && !numbered.possible())
        return true;
    bool more = true;
    RecordAccess::visit(type, [&](const void* record) {
        const int holder = type.keyOf(record);
        more = fixed.show(record, holder, act);
        for (long i = 0; more && numbered.possible() && i < type.numbered.list.length(record); ++i)
            more = numbered.show(type.numbered.list.at(record, i), holder, act);
        return more;
    });
    return more;
}

/// References from the items that the records keep in a table of their own. The table is read as it stands,
/// without putting its rows into their records.
void showItems(const RecordDescription& type, const RecordDescription& target, int key, const Act& act)
{
    if (!type.items.exists())
        return;
    const RecordDescription& item = type.items.item();
    const References references(item.columns, target, key);
    KorArray<long> owners;
    if (!references.possible() || RecordAccess::loadItems(type) != 1 || RecordAccess::keys(type, owners) != 1)
        return;
    std::sort(owners.begin(), owners.end());
    RecordAccess::visit(item, [&](const void* row) {
        const int owner = item.at(item.itemOwner)->integer(row);
        return references.show(row, owner, [&](int holder) {
            return !std::binary_search(owners.begin(), owners.end(), long{holder}) || act(holder);
        });
    });
}

/// Shows every reference from the records of `type` to the record of `target` with that key.
void showReferences(const RecordDescription& type, const RecordDescription& target, int key, const Act& act)
{
    if (key != -1 && showOwn(type, target, key, act))
        showItems(type, target, key, act);
}

/// Number of references from `From` records, their items included, to a `To` record; counted up to `cap`.
template <class From, class To>
int countReferences(const KorOdbcKey& key, int cap)
{
    int count = 0;
    showReferences(descriptionOf<From>(), descriptionOf<To>(), static_cast<int>(key.getKey()),
                   [&](int) { return ++count < cap; });
    return count;
}
template <class From, class To>
bool isShared(const KorOdbcKey& key)
{
    return countReferences<From, To>(key, 3) >= 2;
}
template <class From, class To>
bool isReferredTo(const KorOdbcKey& key)
{
    return countReferences<From, To>(key, 1) == 1;
}

} // namespace

bool KorDetailSharing::isAnnotationStrategyShared(const KorOdbcKey& key)
{
    return isShared<StructDetObjReprMap, StructDetObjAnnotationStrategy>(key);
}

bool KorDetailSharing::isQualifierSetShared(const KorOdbcKey& key)
{
    // one map item and one point selection together do not share the set
    const int inMaps = countReferences<StructDetObjReprMap, StructDetObjQualifierSet>(key, 3);
    return inMaps > 0 ? inMaps >= 2 : isShared<StructDetViewDimPointSelection, StructDetObjQualifierSet>(key);
}

bool KorDetailSharing::isDimensionRequestShared(const KorOdbcKey& key)
{
    return isShared<StructDetViewDimStrategy, StructDetViewDimRequestLinear>(key);
}

bool KorDetailSharing::isDimPointSelectionShared(const KorOdbcKey& key)
{
    return isShared<StructDetViewDimRequestLinear, StructDetViewDimPointSelection>(key);
}

bool KorDetailSharing::isViewRequestShared(const KorOdbcKey& key)
{
    return isShared<StructDetailStyle, StructDetViewRequest>(key);
}

bool KorDetailSharing::isViewArrangeStrategyShared(const KorOdbcKey& key)
{
    return isShared<StructDetailStyle, StructDetViewArrangeStrategy>(key);
}

bool KorDetailSharing::isViewLengthClipShared(const KorOdbcKey& key)
{
    return isShared<StructDetViewRequest, StructDetViewLengthClip>(key);
}

bool KorDetailSharing::isObjReprMapRuleShared(const KorOdbcKey& key)
{
    return isShared<StructDetViewRequest, StructDetObjReprMap>(key);
}

bool KorDetailSharing::isViewDimStrategyShared(const KorOdbcKey& key)
{
    return isShared<StructDetViewRequest, StructDetViewDimStrategy>(key);
}

bool KorDetailSharing::isSystemAndBoxShared(const KorOdbcKey& key)
{
    return isShared<StructDetViewRequest, StructDetViewSystemAndBox>(key);
}

bool KorDetailSharing::isArrangerControlShared(const KorOdbcKey& key)
{
    return isShared<StructDetObjAnnotationStrategy, StructDetArrangerControl>(key);
}

bool KorDetailSharing::isAnnotationTypeShared(const KorOdbcKey& key)
{
    return isShared<StructDetObjAnnotationStrategy, StructDetAnnotationType>(key);
}

bool KorDetailSharing::isArrangerStrategyShared(const KorOdbcKey& key)
{
    // looks the key up among the references to arranger controls
    return isArrangerControlShared(key);
}

bool KorDetailSharing::findAnnotationStrategy(const KorOdbcKey& key)
{
    return isReferredTo<StructDetObjReprMap, StructDetObjAnnotationStrategy>(key);
}

bool KorDetailSharing::findDimensionRequest(const KorOdbcKey& key)
{
    return isReferredTo<StructDetViewDimStrategy, StructDetViewDimRequestLinear>(key);
}

bool KorDetailSharing::findQualifierSet(const KorOdbcKey& key)
{
    return isReferredTo<StructDetObjReprMap, StructDetObjQualifierSet>(key) ||
           isReferredTo<StructDetViewDimPointSelection, StructDetObjQualifierSet>(key);
}
