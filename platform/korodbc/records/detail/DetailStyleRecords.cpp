#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>

#include <algorithm>
#include <tuple>
#include <utility>

using namespace records;

template <std::same_as<StructDetailStyle> R>
constexpr Entry listOf<R>[] = {
    table("DetailStyle", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructDetViewArrangeStrategy>(&R::viewArrangeStrategy, "ViewArrangeStrategy"),
    lookup<StructDetailOrientation>(&R::detailOrientation, "DetailOrientation"),
    lookup<StructDetObjSelectionStrategy>(&R::objectSelectionStrategy, "ObjectSelectionStrategy"),
    column(&R::titleFormat, "TitleFormat"),
    column(&R::titlePosition, "TitlePosition"),
    column(&R::cutViewTitleFormat, "CutViewTitleFormat"),
    column(&R::cutViewTitlePosition, "CutViewTitlePosition"),
    column(&R::scaleFormat, "ScaleFormat"),
    column(&R::dateFormat, "DateFormat"),
    column(&R::frameAppearance, "FrameAppearance"),
    column(&R::objectPosition, "ObjectPosition"),
    column(&R::automaticClipping, "AutomaticClipping"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::numberRequests, "NumberRequests").writtenAfter(11),
    numberedReferences<StructDetViewRequest>(&R::requests, "Request%d", 8),
};

template <std::same_as<StructDetailMaster> R>
constexpr Entry listOf<R>[] = {
    table("DetailMasterTable", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructDetailStyle>(&R::detailStyle, "DetailStyle"),
    reference<StructDetBaseCategory>(&R::baseCategory, "BaseCategory"),
    column(&R::subCategory, "SubCategory"),
    owner(&R::ownerText, "OwnerText"),
};

int StructDetailMasterMarshal::getTableOrdered(KorArray<StructDetailMaster>& records)
{
    KorArray<StructDetailMaster> table;
    const int result = getTable(table);
    if (result != 1)
        return result;
    std::stable_sort(table.begin(), table.end(), [](const auto& left, const auto& right) {
        return std::tie(left.baseCategory, left.subCategory) < std::tie(right.baseCategory, right.subCategory);
    });
    records = std::move(table);
    return result;
}

int StructDetailMasterMarshal::getRunNameListOrdered(KorArray<KorString>& names)
{
    KorArray<StructDetailMaster> table;
    const int result = getTableOrdered(table);
    if (result != 1)
        return result;
    names.removeAll();
    for (const StructDetailMaster& master : table)
        names.append(master.runName);
    return result;
}

template <std::same_as<StructDetBaseCategory> R>
constexpr Entry listOf<R>[] = {
    table("DetBaseCategories", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetViewArrangeStrategy> R>
constexpr Entry listOf<R>[] = {
    table("DetViewArrangeStrategy", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructDetViewArrangeDirection>(&R::arrangeDirection, "ArrangeDirection"),
    column(&R::horizontalGap, "HorizontalGap").tolerant(),
    column(&R::verticalGap, "VerticalGap").tolerant(),
    column(&R::alignViews, "AlignViews"),
    owner(&R::ownerText, "OwnerText"),
};

constinit const Family records::detailStyleRecords =
    family<StructDetailStyle, StructDetailMaster, StructDetBaseCategory, StructDetViewArrangeStrategy>;
