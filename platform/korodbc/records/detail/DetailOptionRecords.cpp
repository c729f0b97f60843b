#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailOptionRecords.h>

using namespace records;

template <std::same_as<StructDetAcadSettings> R>
constexpr Entry listOf<R>[] = {
    table("DetAcadSettings", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::prototype, "Prototype"),
    column(&R::dimensionStyle, "DimensionStyle"),
    column(&R::textStyle, "TextStyle"),
    column(&R::lineTypeScale, "LineTypeScale"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetViewDimSum> R>
constexpr Entry listOf<R>[] = {
    table("DetViewDimSum", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::format, "Format"),
    column(&R::position, "Position"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetViewDimGeomRestrictionBitmaps> R>
constexpr Entry listOf<R>[] = {
    table("DetViewDimGeomRestrictionBitmaps", inDetailCatalogue),
    key(&R::key, "Key"),
    lookup<StructDetViewDimPointtype>(&R::pointType, "PointType"),
    lookup<StructDetVwDimGeomRestrictions>(&R::geometricRestriction, "GeometricRestriction"),
    column(&R::bitmapId, "BitmapId"),
};

template <std::same_as<StructDetVwDimParentRelaPosRestriction> R>
constexpr Entry listOf<R>[] = {
    table("DetVwDimParentRelaPosRestriction", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetOrdinatePosition> R>
constexpr Entry listOf<R>[] = {
    table("DetOrdinatePosition", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetOrdinateReference> R>
constexpr Entry listOf<R>[] = {
    table("DetOrdinateReference", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetOrdinateDimType> R>
constexpr Entry listOf<R>[] = {
    table("DetOrdinateDimType", inDetailCatalogue),
    key(&R::key, "Key"),
    lookup<StructDetOrdinatePosition>(&R::position, "Position"),
    lookup<StructDetOrdinateReference>(&R::reference, "Reference"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetailAreaType> R>
constexpr Entry listOf<R>[] = {
    table("DetailAreaType", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetailReferenceAxis> R>
constexpr Entry listOf<R>[] = {
    table("DetailReferenceAxis", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetailVisibilityStatus> R>
constexpr Entry listOf<R>[] = {
    table("DetailVisibilityStatus", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetailOutputFileVersion> R>
constexpr Entry listOf<R>[] = {
    table("DetailOutputFileVersion", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::fileVersion, "FileVersion"),
};

template <std::same_as<StructNCDXFOutputFileVersion> R>
constexpr Entry listOf<R>[] = {
    table("NCDXFOutputFileVersion", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::fileVersion, "FileVersion"),
};

template <std::same_as<StructBeamConnectionType> R>
constexpr Entry listOf<R>[] = {
    table("BeamConnectionType", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::fixity, "Fixity"),
};

template <std::same_as<StructNodeSupportType> R>
constexpr Entry listOf<R>[] = {
    table("NodeSupportType", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::fixed, "Fixed"),
};

template <std::same_as<StructDegreeOfFreedom> R>
constexpr Entry listOf<R>[] = {
    table("DegreeOfFreedom", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::symbol, "Symbol"),
    column(&R::bit, "Bit"),
};

template <std::same_as<StructNumberingDataRange> R>
constexpr Entry listOf<R>[] = {
    table("GridMultiLang", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::language, "Language"),
    column(&R::labels, "Labels"),
};

template <std::same_as<StructIncrementalCounter> R>
constexpr Entry listOf<R>[] = {
    table("IncrementalCounter", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::first, "First"),
    column(&R::step, "Step"),
};

constinit const Family records::detailOptionRecords =
    family<StructDetAcadSettings, StructDetViewDimSum, StructDetViewDimGeomRestrictionBitmaps,
           StructDetVwDimParentRelaPosRestriction, StructDetOrdinatePosition, StructDetOrdinateReference,
           StructDetOrdinateDimType, StructDetailAreaType, StructDetailReferenceAxis, StructDetailVisibilityStatus,
           StructDetailOutputFileVersion, StructNCDXFOutputFileVersion, StructBeamConnectionType,
           StructNodeSupportType, StructDegreeOfFreedom, StructNumberingDataRange, StructIncrementalCounter>;
