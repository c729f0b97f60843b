#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailOptionRecords.h>
#include <korodbc/records/detail/NamedRows.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDetAcadSettings>()
{
    using R = StructDetAcadSettings;
    return described([] {
        return describe<R>("StructDetAcadSettings",
                           "DetAcadSettings",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::prototype>("Prototype"),
                           column<&R::dimensionStyle>("DimensionStyle"),
                           column<&R::textStyle>("TextStyle"),
                           column<&R::lineTypeScale>("LineTypeScale"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetViewDimSum>()
{
    using R = StructDetViewDimSum;
    return described([] {
        return describe<R>("StructDetViewDimSum",
                           "DetViewDimSum",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::format>("Format"),
                           column<&R::position>("Position"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetViewDimGeomRestrictionBitmaps>()
{
    using R = StructDetViewDimGeomRestrictionBitmaps;
    return described([] {
        return describe<R>(
            "StructDetViewDimGeomRestrictionBitmaps",
            "DetViewDimGeomRestrictionBitmaps",
            inDetailCatalogue,
            key<&R::key>("Key"),
            lookup<&R::pointType, StructDetViewDimPointtype>("PointType"),
            lookup<&R::geometricRestriction, StructDetVwDimGeomRestrictions>("GeometricRestriction"),
            column<&R::bitmapId>("BitmapId"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetVwDimParentRelaPosRestriction>()
{
    return namedRows<StructDetVwDimParentRelaPosRestriction>("StructDetVwDimParentRelaPosRestriction",
                                                             "DetVwDimParentRelaPosRestriction");
}

template <>
const RecordDescription& descriptionOf<StructDetOrdinatePosition>()
{
    return namedRows<StructDetOrdinatePosition>("StructDetOrdinatePosition", "DetOrdinatePosition");
}

template <>
const RecordDescription& descriptionOf<StructDetOrdinateReference>()
{
    return namedRows<StructDetOrdinateReference>("StructDetOrdinateReference", "DetOrdinateReference");
}

template <>
const RecordDescription& descriptionOf<StructDetOrdinateDimType>()
{
    using R = StructDetOrdinateDimType;
    return described([] {
        return describe<R>("StructDetOrdinateDimType",
                           "DetOrdinateDimType",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           lookup<&R::position, StructDetOrdinatePosition>("Position"),
                           lookup<&R::reference, StructDetOrdinateReference>("Reference"),
                           runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailAreaType>()
{
    return namedRows<StructDetailAreaType>("StructDetailAreaType", "DetailAreaType");
}

template <>
const RecordDescription& descriptionOf<StructDetailReferenceAxis>()
{
    return namedRows<StructDetailReferenceAxis>("StructDetailReferenceAxis", "DetailReferenceAxis");
}

template <>
const RecordDescription& descriptionOf<StructDetailVisibilityStatus>()
{
    return namedRows<StructDetailVisibilityStatus>("StructDetailVisibilityStatus", "DetailVisibilityStatus");
}

template <>
const RecordDescription& descriptionOf<StructDetailOutputFileVersion>()
{
    using R = StructDetailOutputFileVersion;
    return described([] {
        return describe<R>("StructDetailOutputFileVersion",
                           "DetailOutputFileVersion",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::fileVersion>("FileVersion"));
    });
}

template <>
const RecordDescription& descriptionOf<StructNCDXFOutputFileVersion>()
{
    using R = StructNCDXFOutputFileVersion;
    return described([] {
        return describe<R>("StructNCDXFOutputFileVersion",
                           "NCDXFOutputFileVersion",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::fileVersion>("FileVersion"));
    });
}

template <>
const RecordDescription& descriptionOf<StructBeamConnectionType>()
{
    using R = StructBeamConnectionType;
    return described([] {
        return describe<R>("StructBeamConnectionType",
                           "BeamConnectionType",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::fixity>("Fixity"));
    });
}

template <>
const RecordDescription& descriptionOf<StructNodeSupportType>()
{
    using R = StructNodeSupportType;
    return described([] {
        return describe<R>("StructNodeSupportType",
                           "NodeSupportType",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::fixed>("Fixed"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDegreeOfFreedom>()
{
    using R = StructDegreeOfFreedom;
    return described([] {
        return describe<R>("StructDegreeOfFreedom",
                           "DegreeOfFreedom",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::symbol>("Symbol"),
                           column<&R::bit>("Bit"));
    });
}

template <>
const RecordDescription& descriptionOf<StructNumberingDataRange>()
{
    using R = StructNumberingDataRange;
    return described([] {
        return describe<R>("StructNumberingDataRange",
                           "GridMultiLang",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::language>("Language"),
                           column<&R::labels>("Labels"));
    });
}

template <>
const RecordDescription& descriptionOf<StructIncrementalCounter>()
{
    using R = StructIncrementalCounter;
    return described([] {
        return describe<R>("StructIncrementalCounter",
                           "IncrementalCounter",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::first>("First"),
                           column<&R::step>("Step"));
    });
}

std::span<const DescriptionFunction> records::detailOptionRecords()
{
    static constexpr DescriptionFunction types[] = {
        &descriptionOf<StructDetAcadSettings>,
        &descriptionOf<StructDetViewDimSum>,
        &descriptionOf<StructDetViewDimGeomRestrictionBitmaps>,
        &descriptionOf<StructDetVwDimParentRelaPosRestriction>,
        &descriptionOf<StructDetOrdinatePosition>,
        &descriptionOf<StructDetOrdinateReference>,
        &descriptionOf<StructDetOrdinateDimType>,
        &descriptionOf<StructDetailAreaType>,
        &descriptionOf<StructDetailReferenceAxis>,
        &descriptionOf<StructDetailVisibilityStatus>,
        &descriptionOf<StructDetailOutputFileVersion>,
        &descriptionOf<StructNCDXFOutputFileVersion>,
        &descriptionOf<StructBeamConnectionType>,
        &descriptionOf<StructNodeSupportType>,
        &descriptionOf<StructDegreeOfFreedom>,
        &descriptionOf<StructNumberingDataRange>,
        &descriptionOf<StructIncrementalCounter>,
    };
    return types;
}
