#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/NamedRows.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDetRequestType>()
{
    return namedRows<StructDetRequestType>("StructDetRequestType", "DetRequestTypes");
}

template <>
const RecordDescription& descriptionOf<StructDetModelType>()
{
    return namedRows<StructDetModelType>("StructDetModelType", "DetModelType");
}

template <>
const RecordDescription& descriptionOf<StructDetRole>()
{
    return namedRows<StructDetRole>("StructDetRole", "DetRole");
}

template <>
const RecordDescription& descriptionOf<StructDetailOrientation>()
{
    return namedRows<StructDetailOrientation>("StructDetailOrientation", "DetailOrientation");
}

template <>
const RecordDescription& descriptionOf<StructDetObjSelectionStrategy>()
{
    return namedRows<StructDetObjSelectionStrategy>("StructDetObjSelectionStrategy", "DetObjSelectionStrategy");
}

template <>
const RecordDescription& descriptionOf<StructDetLeaderStyle>()
{
    return namedRows<StructDetLeaderStyle>("StructDetLeaderStyle", "DetLeaderStyle");
}

template <>
const RecordDescription& descriptionOf<StructDetViewArrangeDirection>()
{
    return namedRows<StructDetViewArrangeDirection>("StructDetViewArrangeDirection", "DetViewArrangeDirection");
}

template <>
const RecordDescription& descriptionOf<StructDetViewSelectMode>()
{
    return namedRows<StructDetViewSelectMode>("StructDetViewSelectMode", "DetViewSelectMode");
}

template <>
const RecordDescription& descriptionOf<StructDetRequestLinearDirection>()
{
    return namedRows<StructDetRequestLinearDirection>("StructDetRequestLinearDirection",
                                                      "DetRequestLinearDirection");
}

template <>
const RecordDescription& descriptionOf<StructDetViewDimPointtype>()
{
    return namedRows<StructDetViewDimPointtype>("StructDetViewDimPointtype", "DetViewDimPointtype");
}

template <>
const RecordDescription& descriptionOf<StructDetVwDimGeomRestrictions>()
{
    return namedRows<StructDetVwDimGeomRestrictions>("StructDetVwDimGeomRestrictions", "DetVwDimGeomRestrictions");
}

template <>
const RecordDescription& descriptionOf<StructDetViewSystemSource>()
{
    return namedRows<StructDetViewSystemSource>("StructDetViewSystemSource", "DetViewSystemSources");
}

template <>
const RecordDescription& descriptionOf<StructDetailDepthPosition>()
{
    return namedRows<StructDetailDepthPosition>("StructDetailDepthPosition", "DetailDepthPosition");
}

template <>
const RecordDescription& descriptionOf<StructBeamPositionCalculation>()
{
    return namedRows<StructBeamPositionCalculation>("StructBeamPositionCalculation", "BeamPositionCalculation");
}

template <>
const RecordDescription& descriptionOf<StructClippingType>()
{
    return namedRows<StructClippingType>("StructClippingType", "ClippingType");
}

template <>
const RecordDescription& descriptionOf<StructDetObjQualifier>()
{
    using R = StructDetObjQualifier;
    return described([] {
        return describe<R>("StructDetObjQualifier",
                           "DetObjQualifier",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           lookup<&R::modelType, StructDetModelType>("ModelType"),
                           lookup<&R::role, StructDetRole>("Role"),
                           runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAnnotationTypeContents>()
{
    using R = StructAnnotationTypeContents;
    return described([] {
        return describe<R>("StructAnnotationTypeContents",
                           "DetAnnotationTypeContents",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::token>("Token"));
    });
}

template <>
const RecordDescription& descriptionOf<StructClippingGap>()
{
    using R = StructClippingGap;
    return described([] {
        return describe<R>(
            "StructClippingGap", "ClippingGap", inDetailCatalogue, key<&R::key>("Key"), column<&R::gap>("Gap"));
    });
}

int StructClippingGapMarshal::getByValue(double gap, StructClippingGap& record)
{
    KorArray<StructClippingGap> table;
    getTable(table);
    for (const StructClippingGap& row : table) {
        if (row.gap == gap) {
            record = row;
            return 1;
        }
    }
    return 0;
}

std::span<const DescriptionFunction> records::detailCatalogueRecords()
{
    static constexpr DescriptionFunction types[] = {
        &descriptionOf<StructDetRequestType>,
        &descriptionOf<StructDetModelType>,
        &descriptionOf<StructDetRole>,
        &descriptionOf<StructDetailOrientation>,
        &descriptionOf<StructDetObjSelectionStrategy>,
        &descriptionOf<StructDetLeaderStyle>,
        &descriptionOf<StructDetViewArrangeDirection>,
        &descriptionOf<StructDetViewSelectMode>,
        &descriptionOf<StructDetRequestLinearDirection>,
        &descriptionOf<StructDetViewDimPointtype>,
        &descriptionOf<StructDetVwDimGeomRestrictions>,
        &descriptionOf<StructDetViewSystemSource>,
        &descriptionOf<StructDetailDepthPosition>,
        &descriptionOf<StructBeamPositionCalculation>,
        &descriptionOf<StructClippingType>,
        &descriptionOf<StructDetObjQualifier>,
        &descriptionOf<StructAnnotationTypeContents>,
        &descriptionOf<StructClippingGap>,
    };
    return types;
}
