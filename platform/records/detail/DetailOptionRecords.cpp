#include "records/detail/DetailOptionRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/detail/DetailCatalogueRecords.h"
#include "records/detail/NamedRows.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDetAcadSettings>()
{
    using R = StructDetAcadSettings;
    static constexpr auto list = describe<R>("StructDetAcadSettings",
                                             "DetAcadSettings",
                                             inDetailCatalogue,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::prototype>("Prototype"),
                                             column<&R::dimensionStyle>("DimensionStyle"),
                                             column<&R::textStyle>("TextStyle"),
                                             column<&R::lineTypeScale>("LineTypeScale"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructDetViewDimSum>()
{
    using R = StructDetViewDimSum;
    static constexpr auto list = describe<R>("StructDetViewDimSum",
                                             "DetViewDimSum",
                                             inDetailCatalogue,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::format>("Format"),
                                             column<&R::position>("Position"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructDetViewDimGeomRestrictionBitmaps>()
{
    using R = StructDetViewDimGeomRestrictionBitmaps;
    static constexpr auto list =
        describe<R>("StructDetViewDimGeomRestrictionBitmaps",
                    "DetViewDimGeomRestrictionBitmaps",
                    inDetailCatalogue,
                    key<&R::key>("Key"),
                    lookup<&R::pointType, StructDetViewDimPointtype>("PointType"),
                    lookup<&R::geometricRestriction, StructDetVwDimGeomRestrictions>("GeometricRestriction"),
                    column<&R::bitmapId>("BitmapId"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
    static constexpr auto list = describe<R>("StructDetOrdinateDimType",
                                             "DetOrdinateDimType",
                                             inDetailCatalogue,
                                             key<&R::key>("Key"),
                                             lookup<&R::position, StructDetOrdinatePosition>("Position"),
                                             lookup<&R::reference, StructDetOrdinateReference>("Reference"),
                                             runName<&R::runName>("RunName"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
    static constexpr auto list = describe<R>("StructDetailOutputFileVersion",
                                             "DetailOutputFileVersion",
                                             inDetailCatalogue,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::fileVersion>("FileVersion"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructNCDXFOutputFileVersion>()
{
    using R = StructNCDXFOutputFileVersion;
    static constexpr auto list = describe<R>("StructNCDXFOutputFileVersion",
                                             "NCDXFOutputFileVersion",
                                             inDetailCatalogue,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::fileVersion>("FileVersion"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructBeamConnectionType>()
{
    using R = StructBeamConnectionType;
    static constexpr auto list = describe<R>("StructBeamConnectionType",
                                             "BeamConnectionType",
                                             inDetailCatalogue,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::fixity>("Fixity"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructNodeSupportType>()
{
    using R = StructNodeSupportType;
    static constexpr auto list = describe<R>("StructNodeSupportType",
                                             "NodeSupportType",
                                             inDetailCatalogue,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::fixed>("Fixed"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructDegreeOfFreedom>()
{
    using R = StructDegreeOfFreedom;
    static constexpr auto list = describe<R>("StructDegreeOfFreedom",
                                             "DegreeOfFreedom",
                                             inDetailCatalogue,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::symbol>("Symbol"),
                                             column<&R::bit>("Bit"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructNumberingDataRange>()
{
    using R = StructNumberingDataRange;
    static constexpr auto list = describe<R>("StructNumberingDataRange",
                                             "GridMultiLang",
                                             inDetailCatalogue,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::language>("Language"),
                                             column<&R::labels>("Labels"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructIncrementalCounter>()
{
    using R = StructIncrementalCounter;
    static constexpr auto list = describe<R>("StructIncrementalCounter",
                                             "IncrementalCounter",
                                             inDetailCatalogue,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::first>("First"),
                                             column<&R::step>("Step"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
