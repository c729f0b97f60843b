#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>

using namespace records;

template <std::same_as<StructDetObjReprMap> R>
constexpr Entry listOf<R>[] = {
    table("DetObjReprMapsNew", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::numberItems, "NumberItems"),
    items(&R::items),
};

template <std::same_as<StructDetObjReprMapItem> R>
constexpr Entry listOf<R>[] = {
    table("DetObjReprMapItems", inDetails),
    itemOwner(&R::key, "Key"),
    itemOrder(&R::order, "Order"),
    column(&R::description, "Description"),
    owner(&R::ownerText, "OwnerText"),
    reference<StructDetObjQualifierSet>(&R::objQualifier, "ObjQualifier"),
    lookup<StructDetVwDimGeomRestrictions>(&R::geometricRestrictions, "GeometricRestrictions"),
    lookup<StructDetailDepthPosition>(&R::depthPosition, "DepthPosition"),
    reference<StructDetObjAppearance>(&R::appearance, "Appearance"),
    reference<StructDetObjAnnotationStrategy>(&R::annotationStrategy, "AnnotationStrategy"),
    reference<StructLinetypes>(&R::lineType, "LineType").noneAllowed(),
    column(&R::simplifiedGap, "SimplifiedGap"),
    column(&R::compassMark, "CompassMark"),
};

template <std::same_as<StructDetObjAppearance> R>
constexpr Entry listOf<R>[] = {
    table("DetObjAppearance", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructDetHatchSettings>(&R::hatchSettings, "HatchSettings"),
    column(&R::presentation, "Presentation"),
    column(&R::visibleLayer, "VisibleLayer"),
    column(&R::visibleColor, "VisibleColor"),
    column(&R::drawHiddenEdges, "DrawHiddenEdges"),
    column(&R::hiddenLayer, "HiddenLayer"),
    column(&R::hiddenColor, "HiddenColor"),
    column(&R::drawAxis, "DrawAxis"),
    column(&R::axisLayer, "AxisLayer"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetHatchSettings> R>
constexpr Entry listOf<R>[] = {
    table("DetHatchSettings", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::pattern, "Pattern"),
    column(&R::spacing, "Spacing"),
    column(&R::angle, "Angle"),
    column(&R::color, "Color"),
    column(&R::layer, "Layer"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetGridRefSettings> R>
constexpr Entry listOf<R>[] = {
    table("DetGridReferenceSettings", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::format, "Format"),
    column(&R::textSize, "TextSize"),
    column(&R::layer, "Layer"),
    column(&R::showOffset, "ShowOffset"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetObjQualifierSet> R>
constexpr Entry listOf<R>[] = {
    table("DetObjQualifierSet", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructDetObjQualifierSetGroup>(&R::group, "Group"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::numberItems, "NumberItems"),
    items(&R::items),
};

template <std::same_as<StructDetObjQualifierSetItem> R>
constexpr Entry listOf<R>[] = {
    table("DetObjQualifierSetItem", inDetails),
    key(&R::key, "Key"),
    itemOwner(&R::qualifierSet, "IdDetObjQualifierSet"),
    itemOrder(&R::order, "Order"),
    lookup<StructDetObjQualifier>(&R::objectQualifier, "ObjectQualifier"),
    column(&R::modelRole, "ModelRole"),
    lookup<StructDetObjQualifierFilter>(&R::filter, "Filter"),
};

template <std::same_as<StructDetObjQualifierSetGroup> R>
constexpr Entry listOf<R>[] = {
    table("DetObjQualifierSetGroup", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::bitmapId, "BitmapId"),
};

template <std::same_as<StructDetObjQualifierFilter> R>
constexpr Entry listOf<R>[] = {
    table("DetObjQualifierFilter", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::script, "Script"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructLinetypes> R>
constexpr Entry listOf<R>[] = {
    table("Linetypes", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    owner(&R::ownerText, "OwnerText"),
};

constinit const Family records::detailObjectRecords =
    family<StructDetObjReprMap, StructDetObjReprMapItem, StructDetObjAppearance, StructDetHatchSettings,
           StructDetGridRefSettings, StructDetObjQualifierSet, StructDetObjQualifierSetItem,
           StructDetObjQualifierSetGroup, StructDetObjQualifierFilter, StructLinetypes>;
