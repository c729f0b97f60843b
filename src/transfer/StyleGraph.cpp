#include "StyleGraph.h"

#include "foundation/RecordEquality.h"
#include "Scoped.h"

#include <korodbc/foundation/KorTransferState.h>
#include <korodbc/roots/KorAssert.h>
#include <korodbc/roots/KorProgressCtrl.h>
#include <korodbc/transfer/KorDetailTableDependencies.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace korodbc {

using Copy = KorDetailTableDependencies;
using Man = KorOdbcMan;

namespace {

bool collectCategories(void* record, long)
{
    DeepCopyGraph& graph = styleGraph();
    StructDetViewRequest& request = *static_cast<StructDetViewRequest*>(record);
    if (!graph.isReadable(*graph.table(Man::kDetViewRequestCategories)) ||
        StructDetViewRequestMarshal::loadCategories(request) == -1)
        return false;
    return std::ranges::all_of(request.categories, [&](const StructDetViewRequestCategory& entry) {
        return graph.collect(descriptionOf<StructDetViewRequestCategory>(), nullptr, entry.key) != -1;
    });
}

bool collectMasterOfStyle(void*, long key)
{
    collectMasterOf(key);
    return true;
}

/// Writes the category rows of a request that has just been written.
bool saveCategories(long collectedRequest, long newKey)
{
    DeepCopyGraph& graph = styleGraph();
    const CopyTable& categories = *graph.table(Man::kDetViewRequestCategories);
    const KorArray<StructDetViewRequestCategory> entries =
        Copy::m_DetViewRequest.getAt(collectedRequest).categories;
    for (const StructDetViewRequestCategory& entry : entries) {
        const long position = graph.find(categories, entry.key);
        if (position < 0)
            return false;
        StructDetViewRequestCategory category = Copy::m_DetViewRequestCategory.getAt(position);
        category.detViewRequest = static_cast<int>(newKey);
        if (graph.save(categories.description(), &category, newKey) == -1)
            return false;
    }
    return true;
}

void saveMastersOfStyle(long index, long)
{
    for (long position = 0; position < Copy::m_DetMasterCopy.length(); ++position) {
        StructDetailMaster master = Copy::m_DetMasterCopy.getAt(position);
        if (master.detailStyle == index && saveMaster(master, position) == -1)
            KorAssert::korAssert("false", "KorDetailTableDependencies", __LINE__);
    }
}

/// The first number from `from` on that is not taken; behind the last number comes 1.
int firstFree(const std::vector<int>& taken, int from)
{
    std::vector<bool> used(taken.size() + 1, false);
    for (const int number : taken)
        if (const std::int64_t distance = std::int64_t{number} - from;
            distance >= 0 && distance < std::ssize(used))
            used[static_cast<std::size_t>(distance)] = true;
    const std::int64_t free = from + (std::ranges::find(used, false) - used.begin());
    return free <= std::numeric_limits<int>::max() ? static_cast<int>(free) : firstFree(taken, 1);
}

int freeSubCategory(int baseCategory, int from)
{
    std::vector<int> taken;
    RecordAccess::visit(descriptionOf<StructDetailMaster>(), [&](const void* record) {
        const StructDetailMaster& master = *static_cast<const StructDetailMaster*>(record);
        if (master.baseCategory == baseCategory)
            taken.push_back(master.subCategory);
        return true;
    });
    return firstFree(taken, from);
}

/// While importing, a qualifier set of the target that has the same name and equals the collected one in every
/// field stands for it.
long existingQualifierSet(const void* record)
{
    if (KorTransferState::isImportInProgress() == 0)
        return -1;
    StructDetObjQualifierSet collected = *static_cast<const StructDetObjQualifierSet*>(record);
    StructDetObjQualifierSet found;
    if (StructDetObjQualifierSetMarshal::getStructByRunName(collected.runName, found) != 1)
        return -1;
    if (Copy::m_bKernelNewerThan42 != 0) {
        // the group as it would be in the target
        StructDetObjQualifierSetGroup group;
        const KorString name = Copy::m_DetObjQualifierSetGroup.getAt(collected.group).runName;
        if (StructDetObjQualifierSetGroupMarshal::getStructByRunName(name, group) != 1)
            return -1;
        collected.group = group.key;
    }
    return equalRecords(descriptionOf<StructDetObjQualifierSet>(), &collected, &found) ? found.key : -1;
}

} // namespace

long collectMaster(StructDetailMaster& master, long key)
{
    DeepCopyGraph& graph = styleGraph();
    const RecordDescription& type = descriptionOf<StructDetailMaster>();
    const CopyTable& masters = *graph.table(type);
    Copy::ProgressBar(Man::kDetailMaster, 0);
    long position = graph.find(masters, key);
    if (position >= 0) {
        master = Copy::m_DetMasterCopy.getAt(position);
        return position;
    }
    const CopyTable& categories = *graph.table(Man::kDetBaseCategories);
    if (!graph.isReadable(masters) || !graph.isReadable(categories) ||
        StructDetailMasterMarshal::getStructByKey(key, master) != 1)
        return -1;
    const long style = graph.collect(descriptionOf<StructDetailStyle>(), nullptr, master.detailStyle);
    // a category that does not exist is none
    master.baseCategory = static_cast<int>(graph.collect(categories.description(), nullptr, master.baseCategory));
    if (style == -1)
        return -1;
    master.detailStyle = static_cast<int>(style);
    // collecting the style has usually collected this master already
    position = graph.find(masters, key);
    return position >= 0 ? position : graph.append(masters, &master, key);
}

long collectMasterOf(long styleKey)
{
    StructDetailMaster master;
    DeepCopyGraph& graph = styleGraph();
    return graph.isReadable(*graph.table(Man::kDetailMaster)) &&
                   StructDetailMasterMarshal::getByStyleKey(styleKey, master) == 1
               ? collectMaster(master, master.key)
               : -1;
}

long saveMaster(StructDetailMaster& master, long index)
{
    DeepCopyGraph& graph = styleGraph();
    const CopyTable& masters = *graph.table(Man::kDetailMaster);
    const rowInfo identity{masters.identity, static_cast<int>(index), master.key};
    long known = -1;
    if (Copy::m_writeTransferKeyMap.lookup(identity, known))
        return known;
    Man::m_structDetailMaster = master;
    const long sourceKey = master.key;
    static long underWay = -1;
    if (index != underWay) {
        if (Copy::pInitProgressBar != nullptr)
            Copy::pInitProgressBar(0, Copy::m_NrRowsToWrite);
        else
            KorProgressCtrl::setPercentage(0, 1);
    }
    {
        // saving the style saves its masters, this one included
        const Scoped saved(underWay, index);
        master.detailStyle =
            static_cast<int>(graph.saveCollected(*graph.table(Man::kDetailStyle), master.detailStyle));
    }
    if (master.detailStyle == -1)
        return -1;
    if (Copy::m_writeTransferKeyMap.lookup(identity, known))
        return known;
    StructDetailStyle style;
    if (StructDetailStyleMarshal::getStructByKey(master.detailStyle, style) == 1)
        master.runName = style.runName;
    if (Copy::detBaseCategory != -1) {
        master.baseCategory = static_cast<int>(std::exchange(Copy::detBaseCategory, -1));
    } else if (master.baseCategory != -1) {
        master.baseCategory =
            static_cast<int>(graph.saveCollected(*graph.table(Man::kDetBaseCategories), master.baseCategory));
        if (master.baseCategory == -1)
            return -1;
    }
    master.subCategory = freeSubCategory(master.baseCategory, master.subCategory);
    return graph.write(masters, &master, index, sourceKey, 0);
}

DeepCopyGraph& styleGraph()
{
    static DeepCopyGraph graph = [] {
        const CopyTable tables[] = {
            CopyTable(Copy::m_DetStyleCopy),
            CopyTable(Copy::m_DetViewArrangeStrategyCopy),
            CopyTable(Copy::m_DetViewRequest),
            CopyTable(Copy::m_DetViewRequestCategory),
            CopyTable(Copy::m_DetObjReprMap),
            CopyTable(Copy::m_DetViewSystemAndBox),
            CopyTable(Copy::m_DetObjAppearance),
            CopyTable(Copy::m_DetViewDimStrategy),
            CopyTable(Copy::m_DetViewLengthClip),
            CopyTable(Copy::m_DetObjAnnotationStrategy, &Copy::m_AnnotationStrategiesResultedFromDeepCopy),
            CopyTable(Copy::m_DetAnnotationType),
            CopyTable(Copy::m_DetArrangerControl),
            CopyTable(Copy::m_DetArrangerStrategy),
            CopyTable(Copy::m_DetViewDimRequestLinear, &Copy::m_LinearDimRequestsResultedFromDeepCopy),
            CopyTable(Copy::m_DetViewDimPointSelection),
            CopyTable(Copy::m_DetMasterCopy),
            CopyTable(Copy::m_DetObjQualifierSet, &Copy::m_QualifierSetsResultedFromDeepCopy),
            CopyTable(Copy::m_LineType),
            CopyTable(Copy::m_DetBaseCategory, &Copy::m_BaseCategoriesResultedFromDeepCopy),
            CopyTable(Copy::m_DetObjAnnotationGroup),
            CopyTable(Copy::m_DetViewDimRequestLinearGroup),
            CopyTable(Copy::m_DetObjQualifierSetGroup),
            CopyTable(Copy::m_DetHatchSettings),
        };
        static_assert(std::size(tables) == copiedTables(DetailTable::Travel::WithStyles));
        DeepCopyGraph made(tables, Copy::m_writeTransferKeyMap);
        const int* withGroups = &Copy::m_bKernelNewerThan42;
        made.setEdge(Man::kDetObjQualifierSet, Man::kDetObjQualifierSetGroup,
                     {withGroups, &Copy::detQualifierSetGroup});
        made.setEdge(Man::kDetViewDimRequestLinear, Man::kDetViewDimRequestLinearGroup,
                     {withGroups, &Copy::detDimStrategyGroup});
        made.setEdge(Man::kDetObjAnnotationStrategy, Man::kDetObjAnnotationGroup,
                     {withGroups, &Copy::detAnnotationGroup});
        made.setHooks(Man::kDetViewRequest, {.referencesCollected = collectCategories});
        made.setHooks(Man::kDetailStyle, {.collected = collectMasterOfStyle,
                                          .listReferenceSaved = saveCategories,
                                          .saved = saveMastersOfStyle,
                                          .keepKey = Copy::getRunningFromCommand});
        made.setHooks(Man::kDetObjQualifierSet, {.existing = existingQualifierSet});
        return made;
    }();
    return graph;
}

} // namespace korodbc
