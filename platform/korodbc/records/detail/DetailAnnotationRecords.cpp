#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDetObjAnnotationStrategy>()
{
    using R = StructDetObjAnnotationStrategy;
    return described([] {
        return describe<R>("StructDetObjAnnotationStrategy",
                           "DetObjAnnotationStrategy",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::annotationType, StructDetAnnotationType>("AnnotationType"),
                           reference<&R::arrangerControl, StructDetArrangerControl>("ArrangerControl"),
                           reference<&R::arrangerStrategy, StructDetArrangerStrategy>("ArrangerStrategy"),
                           reference<&R::group, StructDetObjAnnotationGroup>("Group"),
                           column<&R::annotateOnce>("AnnotateOnce"),
                           column<&R::layer>("Layer"),
                           column<&R::textSize>("TextSize"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetObjAnnotationGroup>()
{
    using R = StructDetObjAnnotationGroup;
    return described([] {
        return describe<R>("StructDetObjAnnotationGroup",
                           "DetObjAnnotationGroup",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::bitmapId>("BitmapId"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetAnnotationType>()
{
    using R = StructDetAnnotationType;
    return described([] {
        return describe<R>("StructDetAnnotationType",
                           "DetAnnotationType",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::leaderStyle, StructDetLeaderStyle>("LeaderStyle"),
                           owner<&R::ownerText>("OwnerText"),
                           column<&R::contents>("AnnotationTypeContents1"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetArrangerControl>()
{
    using R = StructDetArrangerControl;
    using Item = StructDetArrangerControlItem;
    return described([] {
        return describe<R>("StructDetArrangerControl",
                           "DetArrangerControl",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::arrangeGlobally>("ArrangeGlobally"),
                           column<&R::arrangeInCentre>("ArrangeInCentre"),
                           column<&R::oppositeAngleAllowed>("OppositeAngleAllowed"),
                           column<&R::terminateOnFirstFit>("TerminateOnFirstFit"),
                           column<&R::useBasePositionOnFailure>("UseBasePositionOnFailure"),
                           owner<&R::ownerText>("OwnerText"),
                           itemCount<&R::lengthItems>("LengthItems"),
                           numberedGroup<&R::items>(8,
                                                    column<&Item::angle>("Angle%d"),
                                                    column<&Item::preferredDistance>("PreferredDistance%d"),
                                                    column<&Item::maxDistance>("MaxDistance%d")));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetArrangerStrategy>()
{
    using R = StructDetArrangerStrategy;
    using Item = StructDetArrangerStrategyItem;
    return described([] {
        return describe<R>("StructDetArrangerStrategy",
                           "DetArrangerStrategy",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::terminateOnFirstFit>("TerminateOnFirstFit"),
                           column<&R::arrangeGlobally>("ArrangeGlobally"),
                           column<&R::arrangeInCenter>("ArrangeInCenter"),
                           owner<&R::ownerText>("OwnerText"),
                           itemCount<&R::lengthItems>("LengthItems").writtenAfter(4),
                           numberedGroup<&R::items>(8,
                                                    column<&Item::searchArea>("SearchArea%d"),
                                                    column<&Item::searchDirection>("SearchDirection%d"),
                                                    column<&Item::minDistance>("MinDistance%d"),
                                                    column<&Item::maxDistance>("MaxDistance%d")));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetManualAnnotationType>()
{
    using R = StructDetManualAnnotationType;
    using Item = StructDetManualAnnotationTypeItem;
    return described([] {
        return describe<R>("StructDetManualAnnotationType",
                           "DetManualAnnotationType",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::leaderStyle, StructDetLeaderStyle>("LeaderStyle"),
                           owner<&R::ownerText>("OwnerText"),
                           itemCount<&R::numberItems>("NumberItems"),
                           numberedGroup<&R::items>(12, column<&Item::contents>("Contents%d")));
    });
}

std::span<const DescriptionFunction> records::detailAnnotationRecords()
{
    static constexpr DescriptionFunction types[] = {
        &descriptionOf<StructDetObjAnnotationStrategy>,
        &descriptionOf<StructDetObjAnnotationGroup>,
        &descriptionOf<StructDetAnnotationType>,
        &descriptionOf<StructDetArrangerControl>,
        &descriptionOf<StructDetArrangerStrategy>,
        &descriptionOf<StructDetManualAnnotationType>,
    };
    return types;
}
