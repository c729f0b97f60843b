#pragma once

#include "DetailTable.h"

#include <algorithm>
#include <iterator>

namespace korodbc {

namespace rows {

using M = KorOdbcMan;
using Editing = DetailTable::Editing;
using Travel = DetailTable::Travel;
using Naming = DetailTable::Naming;
using Callback = DetailTable::Callback;

template <class T>
constexpr DetailTable::Record with(T& current)
{
    return {descriptionOf<T>, &current};
}
template <class T>
constexpr DetailTable::Record only()
{
    return {descriptionOf<T>, nullptr};
}

// The columns of some types do not fit together: kDetArrangerStrategy declares four per item and names three,
// others name columns and declare none, so that none is ever added, or declare what they do not name. A script of
// 2 characters or less equals any other. Collecting reports line types as qualifier sets.
// clang-format off
inline constexpr DetailTable detailTables[] = {
    {.type = M::kDetailStyle, .record = with(M::m_structDetailStyle), .columns = {16, 1, {L"Request%i INT"}},
     .readsBack = true, .checksItems = true, .namesUnique = true, .editing = Editing::OfOwner,
     .copying = {.travel = Travel::WithStyles, .catalogueId = 106},
     .compaction = {.ofStyles = true, .listFirst = true, .stays = true}},
    {.type = M::kDetViewArrangeStrategy, .record = with(M::m_structDetViewArrangeStrategy), .namesUnique = true,
     .editing = Editing::OfOwner, .copying = {.travel = Travel::WithStyles, .catalogueId = 54},
     .compaction = {.ofStyles = true}},
    {.type = M::kDetViewRequest, .record = with(M::m_structDetViewRequest),
     .readWith = M::kDetViewRequestCategories, .namesUnique = true, .editing = Editing::OfOwner,
     .copying = {.travel = Travel::WithStyles, .catalogueId = 53}, .compaction = {.ofStyles = true}},
    {.type = M::kDetViewRequestCategories, .record = with(M::m_structDetViewRequestCategory), .hidesKey = true,
     .copying = {.travel = Travel::WithStyles, .naming = Naming::None, .catalogueId = 100},
     .compaction = {.ofStyles = true, .columns = {.counted = "DetViewRequest"}}},
    {.type = M::kDetObjReprMap, .record = with(M::m_structDetObjReprMap),
     .columns = {4, 5, {L"ObjQualifier%i INT", L"Appearance%i INT", L"AnnotationStrategy%i INT",
       L"LineType%i INT", L"SimplifiedGap%i FLOAT"}}, .checksItems = true, .itemsAtFirstDepth = true,
     .namesUnique = true, .editing = Editing::OfOwner,
     .copying = {.travel = Travel::WithStyles, .naming = Naming::AfterReferences, .catalogueId = 48},
     .compaction = {.ofStyles = true, .minimumCondition = 3}},
    {.type = M::kDetViewSystemAndBox, .record = with(M::m_structDetViewSystemAndBox), .namesUnique = true,
     .editing = Editing::OfOwner, .copying = {.travel = Travel::WithStyles, .catalogueId = 51},
     .compaction = {.ofStyles = true}},
    {.type = M::kDetObjAppearance, .record = with(M::m_structDetObjAppearance), .hidesKey = true,
     .namesUnique = true, .copying = {.travel = Travel::WithStyles}},
    {.type = M::kDetViewDimStrategy, .record = with(M::m_structDetViewDimStrategy),
     .columns = {5, 2, {L"Type%i INT", L"Key%i INT"}}, .checksItems = true, .namesUnique = true,
     .editing = Editing::OfOwner, .copying = {.travel = Travel::WithStyles, .catalogueId = 57},
     .compaction = {.ofStyles = true, .minimumCondition = 3}},
    {.type = M::kDetViewLengthClip, .record = with(M::m_structDetViewLengthClip), .namesUnique = true,
     .editing = Editing::OfOwner, .copying = {.travel = Travel::WithStyles, .catalogueId = 55},
     .compaction = {.ofStyles = true}},
    {.type = M::kDetObjAnnotationStrategy, .record = with(M::m_structDetObjAnnotationStrategy),
     .readsBack = true, .namesUnique = true, .editing = Editing::OfOwner,
     .copying = {.travel = Travel::WithStyles, .catalogueId = 47}, .compaction = {.ofStyles = true}},
    {.type = M::kDetAnnotationType, .record = with(M::m_structDetAnnotationType),
     .columns = {4, 1, {L"AnnotationTypeContents%i VARCHAR(255)"}}, .namesUnique = true,
     .editing = Editing::OfOwner, .copying = {.travel = Travel::WithStyles, .catalogueId = 101},
     .compaction = {.ofStyles = true}},
    {.type = M::kDetArrangerControl, .record = with(M::m_structDetArrangerControl),
     .columns = {9, 3, {L"Angle%i FLOAT", L"PreferredDistance%i FLOAT", L"MaxDistance%i FLOAT"}},
     .namesUnique = true, .editing = Editing::OfOwner,
     .copying = {.travel = Travel::WithStyles, .catalogueId = 109},
     .compaction = {.ofStyles = true, .columns = {.counted = "LengthItems"}}},
    {.type = M::kDetArrangerStrategy, .record = with(M::m_structDetArrangerStrategy),
     .columns = {7, 4, {L"SearchArea%i INT", L"MinDistance%i FLOAT", L"MaxDistance%i FLOAT"}},
     .namesUnique = true, .editing = Editing::OfOwner, .copying = {.travel = Travel::WithStyles},
     .compaction = {.ofStyles = true, .columns = {.counted = "LengthItems"}}},
    {.type = M::kDetViewDimRequestLinear, .record = with(M::m_structDetViewDimRequestLinear),
     .columns = {14, 1, {L"Point%i INT"}}, .checksItems = true, .namesUnique = true,
     .editing = Editing::OfOwner, .copying = {.travel = Travel::WithStyles, .catalogueId = 56},
     .compaction = {.ofStyles = true, .columns = {.ignored = "Group"}}},
    {.type = M::kDetViewDimPointSelection, .record = with(M::m_structDetViewDimPointSelection),
     .namesUnique = true, .editing = Editing::OfOwner,
     .copying = {.travel = Travel::WithStyles, .catalogueId = 52}, .compaction = {.ofStyles = true}},
    {.type = M::kDetailMaster, .record = with(M::m_structDetailMaster),
     .copying = {.travel = Travel::WithStyles, .naming = Naming::None, .catalogueId = 108}},
    {.type = M::kDetObjQualifierSet, .record = with(M::m_structDetObjQualifierSet),
     .columns = {5, 3, {L"ObjectQualifier%i INT", L"ModelRole%i VARCHAR(255)", L"Filter%i VARCHAR(64)"}},
     .namesUnique = true, .copying = {.travel = Travel::WithStyles, .catalogueId = 42},
     .compaction = {.ofStyles = true, .ofProcesses = true, .columns = {.ignored = "Group"}}},
    {.type = M::kDetObjQualifierFilter, .record = with(M::m_structDetObjQualifierFilter), .namesUnique = true},
    {.type = M::kNumberingPrefix, .record = with(M::m_structNumberingPrefix), .columns = {8, 0},
     .editing = Editing::OfOwner},
    {.type = M::kExplodeSettings, .record = with(M::m_structExplodeSettings), .columns = {7, 0}},
    {.type = M::kObjectStructure, .record = with(M::m_structObjectStructure), .columns = {3, 0}},
    {.type = M::kExplodeProfile, .record = with(M::m_structExplodeProfile), .columns = {3, 0}},
    {.type = M::kLinetypes, .record = with(M::m_structLinetypes), .columns = {3, 0}, .namesUnique = true,
     .copying = {.travel = Travel::WithStyles, .naming = Naming::None, .reusedByName = true,
       .catalogueId = 172, .identity = L"StructLineType", .readAs = M::kDetObjQualifierSet}},
    {.type = M::kDetBaseCategories, .record = with(M::m_structDetBaseCategory), .columns = {1, 0},
     .namesUnique = true,
     .copying = {.travel = Travel::WithStyles, .naming = Naming::None, .reusedByName = true, .keepsKey = true,
       .catalogueId = 99}},
    {.type = M::kDetManualAnnotationType, .record = with(M::m_structDetManualAnnotationType), .columns = {5, 1},
     .editing = Editing::OfAll},
    {.type = M::kDetObjReprMapItems, .record = only<StructDetObjReprMapItem>(),
     .copying = {.travel = Travel::WithStyles}},
    {.type = M::kDetObjAnnotationGroup, .record = with(M::m_structDetObjAnnotationStrategyGroup),
     .columns = {1, 0}, .namesUnique = true,
     .copying = {.travel = Travel::WithStyles, .naming = Naming::None, .reusedByName = true, .keepsKey = true,
       .catalogueId = 194}},
    {.type = M::kDetViewDimRequestLinearGroup, .record = with(M::m_structDetViewDimRequestLinearGroup),
     .columns = {1, 0}, .namesUnique = true,
     .copying = {.travel = Travel::WithStyles, .naming = Naming::None, .reusedByName = true, .keepsKey = true,
       .catalogueId = 195}},
    {.type = M::kDetObjQualifierSetGroup, .record = with(M::m_structDetObjQualifierSetGroup), .columns = {3, 0},
     .namesUnique = true,
     .copying = {.travel = Travel::WithStyles, .naming = Naming::None, .reusedByName = true, .keepsKey = true,
       .catalogueId = 192}},
    {.type = M::kDetViewDimStrategyItems, .record = only<StructDetViewDimStrategyItem>(),
     .copying = {.travel = Travel::WithStyles}},
    {.type = M::kDetHatchSettings, .record = with(M::m_structDetHatchSettings),
     .columns = {0, 0, {L"Step%i INT"}}, .hidesKey = true, .namesUnique = true,
     .copying = {.travel = Travel::WithStyles}},
    {.type = M::kDetGridReferenceSettings, .record = with(M::m_structDetGridRefSettings), .hidesKey = true},
    {.type = M::kDetailProcessDefinition, .record = with(M::m_structDetailProcessDefinition), .columns = {8, 1},
     .namesUnique = true, .copying = {.travel = Travel::WithProcesses, .callback = Callback::MustName},
     .compaction = {.ofProcesses = true, .stays = true}},
    {.type = M::kDetailProcessStep, .record = with(M::m_structDetailProcessStep), .namesUnique = true,
     .copying = {.travel = Travel::WithProcesses, .callback = Callback::MustName},
     .compaction = {.ofProcesses = true}},
    {.type = M::kDetailFilenameSelector, .record = with(M::m_structDetailFilenameSelector), .namesUnique = true,
     .copying = {.travel = Travel::WithProcesses, .callback = Callback::NotAsked},
     .compaction = {.ofProcesses = true}},
    {.type = M::kDetailProcessSelection, .record = with(M::m_structDetailProcessSelection)},
    {.type = M::kDetailProcessSort, .record = with(M::m_structDetailProcessSort)},
    {.type = M::kDetailStyleMap, .record = with(M::m_structDetailStyleMap),
     .columns = {0, 0, {L"Request%i INT"}}, .namesUnique = true,
     .copying = {.travel = Travel::WithProcesses, .callback = Callback::NotAsked},
     .compaction = {.ofStyles = true, .ofProcesses = true, .columns = {.loose = "Script"}, .minimumCondition = 3}},
    {.type = M::kDetailStyleMapItems, .record = only<StructDetailStyleMapItem>(),
     .columns = {0, 0, {L"MainViewScale%i INT", L"Request%i INT"}},
     .copying = {.travel = Travel::WithProcesses}},
    {.type = M::kDetailProcessScales, .record = with(M::m_structDetProcessScales), .columns = {4, 1},
     .namesUnique = true, .copying = {.travel = Travel::WithProcesses, .callback = Callback::NotAsked},
     .compaction = {.ofProcesses = true}},
    {.type = M::kDetailProcessMain2CutScale, .record = with(M::m_structDetProcessMain2CutScales),
     .columns = {4, 2}, .namesUnique = true,
     .copying = {.travel = Travel::WithProcesses, .callback = Callback::NotAsked},
     .compaction = {.ofProcesses = true}},
    {.type = M::kDetailProcessCategories, .record = with(M::m_structDetProcessCategory), .namesUnique = true,
     .copying = {.travel = Travel::WithProcesses, .callback = Callback::NotAsked, .reusedByName = true,
       .keepsKey = true}},
    {.type = M::kDetProcessesSuiteDefinition, .record = with(M::m_structDetProcessesSuiteDefinition),
     .itemsAtFirstDepth = true, .editing = Editing::OfOwner},
    {.type = M::kDetProcessesSuiteItems, .record = only<StructDetProcessesSuiteItem>()},
    {.type = M::kNumberingPrefixProfile, .record = with(M::m_structNumberingPrefixProfile), .columns = {3, 0}},
    {.type = M::kProfileShapeRunName, .record = with(M::m_structProfileShapeRunName), .columns = {3, 0}},
    {.type = M::kDetObjQualifierSetItem, .record = only<StructDetObjQualifierSetItem>(),
     .copying = {.travel = Travel::WithStyles}},
    {.type = M::kDetailProcessScalesItem, .record = only<StructDetProcessScalesItem>(),
     .copying = {.travel = Travel::WithProcesses}},
};
// clang-format on

static_assert(std::size(detailTables) == KorOdbcMan::kTableTypes &&
                  std::ranges::all_of(detailTables,
                                      [](const DetailTable& row) { return &row == detailTables + row.type; }),
              "every type has a row, which stands at its index");

} // namespace rows

using rows::detailTables;

inline bool isTableType(int type) { return type >= 0 && type < KorOdbcMan::kTableTypes; }
/// Of a valid type.
constexpr const DetailTable& detailTable(int type) { return detailTables[type]; }
/// Logical name of a valid type's table.
const KorString& tableName(int type);
/// The row of the table with that record type.
template <class T>
consteval const DetailTable& detailTableOf()
{
    return *std::ranges::find_if(
        detailTables, [](const DetailTable& row) { return row.record.description == &descriptionOf<T>; });
}
/// Type of the table that a record description is of; -1 when it is no detail table.
int tableTypeOf(const RecordDescription& description);
/// Type of the table that keeps the items of a valid type's records; -1 for types without one.
int itemTableType(int ownerType);

} // namespace korodbc
