#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>

using namespace records;

template <std::same_as<StructDetObjAnnotationStrategy> R>
constexpr Entry listOf<R>[] = {
    table("DetObjAnnotationStrategy", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructDetAnnotationType>(&R::annotationType, "AnnotationType"),
    reference<StructDetArrangerControl>(&R::arrangerControl, "ArrangerControl"),
    reference<StructDetArrangerStrategy>(&R::arrangerStrategy, "ArrangerStrategy"),
    reference<StructDetObjAnnotationGroup>(&R::group, "Group"),
    column(&R::annotateOnce, "AnnotateOnce"),
    column(&R::layer, "Layer"),
    column(&R::textSize, "TextSize"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetObjAnnotationGroup> R>
constexpr Entry listOf<R>[] = {
    table("DetObjAnnotationGroup", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::bitmapId, "BitmapId"),
};

template <std::same_as<StructDetAnnotationType> R>
constexpr Entry listOf<R>[] = {
    table("DetAnnotationType", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructDetLeaderStyle>(&R::leaderStyle, "LeaderStyle"),
    owner(&R::ownerText, "OwnerText"),
    column(&R::contents, "AnnotationTypeContents1"),
};

template <std::same_as<StructDetArrangerControlItem> R>
constexpr Entry listOf<R>[] = {
    column(&R::angle, "Angle%d"),
    column(&R::preferredDistance, "PreferredDistance%d"),
    column(&R::maxDistance, "MaxDistance%d"),
};

template <std::same_as<StructDetArrangerControl> R>
constexpr Entry listOf<R>[] = {
    table("DetArrangerControl", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::arrangeGlobally, "ArrangeGlobally"),
    column(&R::arrangeInCentre, "ArrangeInCentre"),
    column(&R::oppositeAngleAllowed, "OppositeAngleAllowed"),
    column(&R::terminateOnFirstFit, "TerminateOnFirstFit"),
    column(&R::useBasePositionOnFailure, "UseBasePositionOnFailure"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::lengthItems, "LengthItems"),
    numberedItems(&R::items, 8),
};

template <std::same_as<StructDetArrangerStrategyItem> R>
constexpr Entry listOf<R>[] = {
    column(&R::searchArea, "SearchArea%d"),
    column(&R::searchDirection, "SearchDirection%d"),
    column(&R::minDistance, "MinDistance%d"),
    column(&R::maxDistance, "MaxDistance%d"),
};

template <std::same_as<StructDetArrangerStrategy> R>
constexpr Entry listOf<R>[] = {
    table("DetArrangerStrategy", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::terminateOnFirstFit, "TerminateOnFirstFit"),
    column(&R::arrangeGlobally, "ArrangeGlobally"),
    column(&R::arrangeInCenter, "ArrangeInCenter"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::lengthItems, "LengthItems").writtenAfter(4),
    numberedItems(&R::items, 8),
};

template <std::same_as<StructDetManualAnnotationTypeItem> R>
constexpr Entry listOf<R>[] = {
    column(&R::contents, "Contents%d"),
};

template <std::same_as<StructDetManualAnnotationType> R>
constexpr Entry listOf<R>[] = {
    table("DetManualAnnotationType", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructDetLeaderStyle>(&R::leaderStyle, "LeaderStyle"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::numberItems, "NumberItems"),
    numberedItems(&R::items, 12),
};

constinit const Family records::detailAnnotationRecords =
    family<StructDetObjAnnotationStrategy, StructDetObjAnnotationGroup, StructDetAnnotationType,
           StructDetArrangerControl, StructDetArrangerStrategy, StructDetManualAnnotationType>;
