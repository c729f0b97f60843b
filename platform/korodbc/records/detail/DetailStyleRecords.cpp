#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>
#include <korodbc/records/Registry.h>

#include <algorithm>
#include <tuple>
#include <utility>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDetailStyle>()
{
    using R = StructDetailStyle;
    return described([] {
        return describe<R>(
            "StructDetailStyle",
            "DetailStyle",
            inDetails,
            key<&R::key>("Key"),
            runName<&R::runName>("RunName"),
            reference<&R::viewArrangeStrategy, StructDetViewArrangeStrategy>("ViewArrangeStrategy"),
            lookup<&R::detailOrientation, StructDetailOrientation>("DetailOrientation"),
            lookup<&R::objectSelectionStrategy, StructDetObjSelectionStrategy>("ObjectSelectionStrategy"),
            column<&R::titleFormat>("TitleFormat"),
            column<&R::titlePosition>("TitlePosition"),
            column<&R::cutViewTitleFormat>("CutViewTitleFormat"),
            column<&R::cutViewTitlePosition>("CutViewTitlePosition"),
            column<&R::scaleFormat>("ScaleFormat"),
            column<&R::dateFormat>("DateFormat"),
            column<&R::frameAppearance>("FrameAppearance"),
            column<&R::objectPosition>("ObjectPosition"),
            column<&R::automaticClipping>("AutomaticClipping"),
            owner<&R::ownerText>("OwnerText"),
            itemCount<&R::numberRequests>("NumberRequests").writtenAfter(11),
            numberedReferences<&R::requests, StructDetViewRequest>("Request%d", 8));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailMaster>()
{
    using R = StructDetailMaster;
    return described([] {
        return describe<R>("StructDetailMaster",
                           "DetailMasterTable",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::detailStyle, StructDetailStyle>("DetailStyle"),
                           reference<&R::baseCategory, StructDetBaseCategory>("BaseCategory"),
                           column<&R::subCategory>("SubCategory"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

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

template <>
const RecordDescription& descriptionOf<StructDetBaseCategory>()
{
    using R = StructDetBaseCategory;
    return described([] {
        return describe<R>("StructDetBaseCategory",
                           "DetBaseCategories",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetViewArrangeStrategy>()
{
    using R = StructDetViewArrangeStrategy;
    return described([] {
        return describe<R>("StructDetViewArrangeStrategy",
                           "DetViewArrangeStrategy",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::arrangeDirection, StructDetViewArrangeDirection>("ArrangeDirection"),
                           column<&R::horizontalGap>("HorizontalGap").tolerant(),
                           column<&R::verticalGap>("VerticalGap").tolerant(),
                           column<&R::alignViews>("AlignViews"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

std::span<const DescriptionFunction> records::detailStyleRecords()
{
    static constexpr DescriptionFunction types[] = {
        &descriptionOf<StructDetailStyle>,
        &descriptionOf<StructDetailMaster>,
        &descriptionOf<StructDetBaseCategory>,
        &descriptionOf<StructDetViewArrangeStrategy>,
    };
    return types;
}
