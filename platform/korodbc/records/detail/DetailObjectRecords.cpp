#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDetObjReprMap>()
{
    using R = StructDetObjReprMap;
    return described([] {
        return describe<R>("StructDetObjReprMap",
                           "DetObjReprMapsNew",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           owner<&R::ownerText>("OwnerText"),
                           itemCount<&R::numberItems>("NumberItems"),
                           items<&R::items>());
    });
}

template <>
const RecordDescription& descriptionOf<StructDetObjReprMapItem>()
{
    using R = StructDetObjReprMapItem;
    return described([] {
        return describe<R>(
            "StructDetObjReprMapItem",
            "DetObjReprMapItems",
            inDetails,
            itemOwner<&R::key>("Key"),
            itemOrder<&R::order>("Order"),
            column<&R::description>("Description"),
            owner<&R::ownerText>("OwnerText"),
            reference<&R::objQualifier, StructDetObjQualifierSet>("ObjQualifier"),
            lookup<&R::geometricRestrictions, StructDetVwDimGeomRestrictions>("GeometricRestrictions"),
            lookup<&R::depthPosition, StructDetailDepthPosition>("DepthPosition"),
            reference<&R::appearance, StructDetObjAppearance>("Appearance"),
            reference<&R::annotationStrategy, StructDetObjAnnotationStrategy>("AnnotationStrategy"),
            reference<&R::lineType, StructLinetypes>("LineType").noneAllowed(),
            column<&R::simplifiedGap>("SimplifiedGap"),
            column<&R::compassMark>("CompassMark"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetObjAppearance>()
{
    using R = StructDetObjAppearance;
    return described([] {
        return describe<R>("StructDetObjAppearance",
                           "DetObjAppearance",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::hatchSettings, StructDetHatchSettings>("HatchSettings"),
                           column<&R::presentation>("Presentation"),
                           column<&R::visibleLayer>("VisibleLayer"),
                           column<&R::visibleColor>("VisibleColor"),
                           column<&R::drawHiddenEdges>("DrawHiddenEdges"),
                           column<&R::hiddenLayer>("HiddenLayer"),
                           column<&R::hiddenColor>("HiddenColor"),
                           column<&R::drawAxis>("DrawAxis"),
                           column<&R::axisLayer>("AxisLayer"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetHatchSettings>()
{
    using R = StructDetHatchSettings;
    return described([] {
        return describe<R>("StructDetHatchSettings",
                           "DetHatchSettings",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::pattern>("Pattern"),
                           column<&R::spacing>("Spacing"),
                           column<&R::angle>("Angle"),
                           column<&R::color>("Color"),
                           column<&R::layer>("Layer"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetGridRefSettings>()
{
    using R = StructDetGridRefSettings;
    return described([] {
        return describe<R>("StructDetGridRefSettings",
                           "DetGridReferenceSettings",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::format>("Format"),
                           column<&R::textSize>("TextSize"),
                           column<&R::layer>("Layer"),
                           column<&R::showOffset>("ShowOffset"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetObjQualifierSet>()
{
    using R = StructDetObjQualifierSet;
    return described([] {
        return describe<R>("StructDetObjQualifierSet",
                           "DetObjQualifierSet",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::group, StructDetObjQualifierSetGroup>("Group"),
                           owner<&R::ownerText>("OwnerText"),
                           itemCount<&R::numberItems>("NumberItems"),
                           items<&R::items>());
    });
}

template <>
const RecordDescription& descriptionOf<StructDetObjQualifierSetItem>()
{
    using R = StructDetObjQualifierSetItem;
    return described([] {
        return describe<R>("StructDetObjQualifierSetItem",
                           "DetObjQualifierSetItem",
                           inDetails,
                           key<&R::key>("Key"),
                           itemOwner<&R::qualifierSet>("IdDetObjQualifierSet"),
                           itemOrder<&R::order>("Order"),
                           lookup<&R::objectQualifier, StructDetObjQualifier>("ObjectQualifier"),
                           column<&R::modelRole>("ModelRole"),
                           lookup<&R::filter, StructDetObjQualifierFilter>("Filter"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetObjQualifierSetGroup>()
{
    using R = StructDetObjQualifierSetGroup;
    return described([] {
        return describe<R>("StructDetObjQualifierSetGroup",
                           "DetObjQualifierSetGroup",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::bitmapId>("BitmapId"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetObjQualifierFilter>()
{
    using R = StructDetObjQualifierFilter;
    return described([] {
        return describe<R>("StructDetObjQualifierFilter",
                           "DetObjQualifierFilter",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::script>("Script"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructLinetypes>()
{
    using R = StructLinetypes;
    return described([] {
        return describe<R>("StructLinetypes",
                           "Linetypes",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

std::span<const DescriptionFunction> records::detailObjectRecords()
{
    static constexpr DescriptionFunction types[] = {
        &descriptionOf<StructDetObjReprMap>,
        &descriptionOf<StructDetObjReprMapItem>,
        &descriptionOf<StructDetObjAppearance>,
        &descriptionOf<StructDetHatchSettings>,
        &descriptionOf<StructDetGridRefSettings>,
        &descriptionOf<StructDetObjQualifierSet>,
        &descriptionOf<StructDetObjQualifierSetItem>,
        &descriptionOf<StructDetObjQualifierSetGroup>,
        &descriptionOf<StructDetObjQualifierFilter>,
        &descriptionOf<StructLinetypes>,
    };
    return types;
}
