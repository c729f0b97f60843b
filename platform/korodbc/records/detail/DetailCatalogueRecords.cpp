#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>

using namespace records;

template <std::same_as<StructDetRequestType> R>
constexpr Entry listOf<R>[] = {
    table("DetRequestTypes", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetModelType> R>
constexpr Entry listOf<R>[] = {
    table("DetModelType", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetRole> R>
constexpr Entry listOf<R>[] = {
    table("DetRole", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetailOrientation> R>
constexpr Entry listOf<R>[] = {
    table("DetailOrientation", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetObjSelectionStrategy> R>
constexpr Entry listOf<R>[] = {
    table("DetObjSelectionStrategy", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetLeaderStyle> R>
constexpr Entry listOf<R>[] = {
    table("DetLeaderStyle", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetViewArrangeDirection> R>
constexpr Entry listOf<R>[] = {
    table("DetViewArrangeDirection", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetViewSelectMode> R>
constexpr Entry listOf<R>[] = {
    table("DetViewSelectMode", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetRequestLinearDirection> R>
constexpr Entry listOf<R>[] = {
    table("DetRequestLinearDirection", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetViewDimPointtype> R>
constexpr Entry listOf<R>[] = {
    table("DetViewDimPointtype", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetVwDimGeomRestrictions> R>
constexpr Entry listOf<R>[] = {
    table("DetVwDimGeomRestrictions", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetViewSystemSource> R>
constexpr Entry listOf<R>[] = {
    table("DetViewSystemSources", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetailDepthPosition> R>
constexpr Entry listOf<R>[] = {
    table("DetailDepthPosition", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructBeamPositionCalculation> R>
constexpr Entry listOf<R>[] = {
    table("BeamPositionCalculation", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructClippingType> R>
constexpr Entry listOf<R>[] = {
    table("ClippingType", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructDetObjQualifier> R>
constexpr Entry listOf<R>[] = {
    table("DetObjQualifier", inDetailCatalogue),
    key(&R::key, "Key"),
    lookup<StructDetModelType>(&R::modelType, "ModelType"),
    lookup<StructDetRole>(&R::role, "Role"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructAnnotationTypeContents> R>
constexpr Entry listOf<R>[] = {
    table("DetAnnotationTypeContents", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::token, "Token"),
};

template <std::same_as<StructClippingGap> R>
constexpr Entry listOf<R>[] = {
    table("ClippingGap", inDetailCatalogue),
    key(&R::key, "Key"),
    column(&R::gap, "Gap"),
};

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

constinit const Family records::detailCatalogueRecords =
    family<StructDetRequestType, StructDetModelType, StructDetRole, StructDetailOrientation,
           StructDetObjSelectionStrategy, StructDetLeaderStyle, StructDetViewArrangeDirection,
           StructDetViewSelectMode, StructDetRequestLinearDirection, StructDetViewDimPointtype,
           StructDetVwDimGeomRestrictions, StructDetViewSystemSource, StructDetailDepthPosition,
           StructBeamPositionCalculation, StructClippingType, StructDetObjQualifier, StructAnnotationTypeContents,
           StructClippingGap>;
