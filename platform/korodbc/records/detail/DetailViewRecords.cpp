#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailSettingRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>

#include <utility>

using namespace records;

template <std::same_as<StructDetViewRequestCategory> R>
constexpr Entry listOf<R>[] = {
    table("DetViewRequestCategories", inDetails),
    key(&R::key, "Key"),
    reference<StructDetBaseCategory>(&R::baseCategory, "BaseCategory"),
    names<StructDetViewRequest>(&R::detViewRequest, "DetViewRequest").inRole(ColumnRole::ItemOwner),
    unstored(&R::deleted),
};

template <std::same_as<StructDetViewRequest> R>
constexpr Entry listOf<R>[] = {
    table("DetViewRequest", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructDetViewSystemAndBox>(&R::systemAndBox, "SystemAndBox"),
    reference<StructDetObjReprMap>(&R::objReprMap, "ObjReprMap"),
    reference<StructDetViewDimStrategy>(&R::dimStrategy, "DimStrategy"),
    reference<StructDetViewLengthClip>(&R::lengthClipXY, "LengthClipXY"),
    column(&R::usedForCutsAndCallouts, "UsedForCutsAndCallouts"),
    column(&R::titlePosition, "TitlePosition"),
    column(&R::calloutTitleTemplate, "CalloutTitleTemplate"),
    column(&R::scaleFactor, "ScaleFactor").tolerant(),
    column(&R::rotation, "Rotation").tolerant(),
    owner(&R::ownerText, "OwnerText"),
    unstored(&R::categories),
};

int StructDetViewRequestMarshal::loadCategories(StructDetViewRequest& record)
{
    KorArray<StructDetViewRequestCategory> categories;
    const int result = StructDetViewRequestCategoryMarshal::getByDetViewRequest(record.key, categories);
    record.categories = std::move(categories);
    return result;
}

template <std::same_as<StructDetViewSystemAndBox> R>
constexpr Entry listOf<R>[] = {
    table("DetViewSystemAndBox", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructDetViewSystemSource>(&R::systemSource, "SystemSource"),
    lookup<StructDetViewSelectMode>(&R::selectMode, "SelectMode"),
    column(&R::viewDirection, "ViewDirection"),
    column(&R::boxMode, "BoxMode"),
    column(&R::rotationX, "RotationX"),
    column(&R::rotationZ, "RotationZ"),
    column(&R::depthFront, "DepthFront").tolerant(),
    column(&R::depthBack, "DepthBack").tolerant(),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetViewLengthClip> R>
constexpr Entry listOf<R>[] = {
    table("DetViewLengthClip", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::clipX, "ClipX"),
    column(&R::clipY, "ClipY"),
    lookup<StructClippingType>(&R::clippingType, "ClippingType"),
    column(&R::minimumLength, "MinimumLength").tolerant(),
    column(&R::gap, "Gap").tolerant(),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetViewDimStrategyItem> R>
constexpr Entry listOf<R>[] = {
    table("DetViewDimStrategyItems", inDetails),
    itemOwner(&R::key, "Key"),
    itemOrder(&R::order, "Order"),
    column(&R::description, "Description"),
    owner(&R::ownerText, "OwnerText"),
    lookup<StructDetRequestType>(&R::type, "Type"),
    reference<StructDetViewDimRequestLinear>(&R::requestLinear, "RequestLinear"),
    column(&R::groupEqualDistances, "GroupEqualDistances"),
    column(&R::brokenRunningDimension, "BrokenRunningDimension"),
    lookup<StructDetRunningDimensionTextAlignment>(&R::runningDimensionTextAlignment,
                                                   "RunningDimensionTextAlignment")
        .zeroIsNone(),
    column(&R::hideDimensionPoint, "HideDimensionPoint"),
};

template <std::same_as<StructDetViewDimStrategy> R>
constexpr Entry listOf<R>[] = {
    table("DetViewDimStrategyNew", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::oneChainPerBoltDiam, "OneChainPerBoltDiam"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::numberItems, "NumberItems"),
    items(&R::items),
};

template <std::same_as<StructDetViewDimRequestLinearGroup> R>
constexpr Entry listOf<R>[] = {
    table("DetViewDimRequestLinearGroup", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::bitmapId, "BitmapId"),
};

template <std::same_as<StructDetViewDimRequestLinear> R>
constexpr Entry listOf<R>[] = {
    table("DetViewDimRequestLinear", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructDetRequestLinearDirection>(&R::direction, "Direction"),
    column(&R::allowCombine, "AllowCombine"),
    column(&R::arrangeAbove, "ArrangeAbove"),
    column(&R::arrangeGlobally, "ArrangeGlobally"),
    column(&R::groupRelatedDimensions, "GroupRelatedDimensions"),
    column(&R::oneChainPerObjectInFirstSelection, "OneChainPerObjectInFirstSelection"),
    column(&R::labelContents, "LabelContents"),
    column(&R::labelPosition, "LabelPosition"),
    reference<StructDetViewDimRequestLinearGroup>(&R::group, "Group"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::numberPoints, "NumberPoints"),
    numberedReferences<StructDetViewDimPointSelection>(&R::points, "Point%d", 8),
};

template <std::same_as<StructDetViewDimPointSelection> R>
constexpr Entry listOf<R>[] = {
    table("DetViewDimPointSelection", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructDetViewDimPointtype>(&R::type, "Type"),
    reference<StructDetObjQualifierSet>(&R::objects, "Objects"),
    lookup<StructDetVwDimGeomRestrictions>(&R::geometricRestrictions, "GeometricRestrictions"),
    column(&R::outermostOnly, "OutermostOnly"),
    owner(&R::ownerText, "OwnerText"),
};

constinit const Family records::detailViewRecords =
    family<StructDetViewRequest, StructDetViewRequestCategory, StructDetViewSystemAndBox, StructDetViewLengthClip,
           StructDetViewDimStrategy, StructDetViewDimStrategyItem, StructDetViewDimRequestLinear,
           StructDetViewDimRequestLinearGroup, StructDetViewDimPointSelection>;
