#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailSettingRecords.h>

#include <utility>

using namespace records;

template <std::same_as<StructDepthStatus> R>
constexpr Entry listOf<R>[] = {
    table("DepthStatus", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructDetGeometricRestrictions> R>
constexpr Entry listOf<R>[] = {
    table("DetGeometricRestrictions", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructDetRunningDimensionTextAlignment> R>
constexpr Entry listOf<R>[] = {
    table("DetRunningDimensionTextAlignment", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructGridReferenceTokenFormat> R>
constexpr Entry listOf<R>[] = {
    table("GridReferenceTokenFormat", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::script, "Script"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetailProcessScaleOverride> R>
constexpr Entry listOf<R>[] = {
    table("DetailProcessScaleOverride", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::factor, "Factor"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructChangePrototypeScaleTo> R>
constexpr Entry listOf<R>[] = {
    table("ChangePrototypeScaleTo", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::prototype, "Prototype"),
    column(&R::scale, "Scale"),
};

template <std::same_as<StructHatchesMap> R>
constexpr Entry listOf<R>[] = {
    table("HatchesMap", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::hatch, "Hatch"),
    column(&R::correspondentHatch, "CorrespondentHatch"),
};

template <std::same_as<StructDetExternalObject> R>
constexpr Entry listOf<R>[] = {
    table("DetExternalObject", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::className, "ClassName"),
    lookup<StructDetModelType>(&R::modelType, "ModelType"),
};

template <std::same_as<StructDetExternalObjectPropertyMap> R>
constexpr Entry listOf<R>[] = {
    table("DetExternalObjectPropertyMap", inDetailCatalogue),
    key(&R::key, "Key"),
    lookup<StructDetExternalObject>(&R::externalObject, "ExternalObject"),
    column(&R::propertyName, "PropertyName"),
    column(&R::token, "Token"),
};

int StructDetExternalObjectPropertyMapMarshal::getTables(KorArray<StructDetExternalObject>& objects,
                                                         KorArray<StructDetExternalObjectPropertyMap>& properties)
{
    KorArray<StructDetExternalObject> read;
    const int result = StructDetExternalObjectMarshal::getTable(read);
    if (result != 1)
        return result;
    const int propertiesResult = getTable(properties);
    if (propertiesResult == 1)
        objects = std::move(read);
    return propertiesResult;
}

constinit const Family records::detailSettingRecords =
    family<StructDepthStatus, StructDetGeometricRestrictions, StructDetRunningDimensionTextAlignment,
           StructGridReferenceTokenFormat, StructDetailProcessScaleOverride, StructChangePrototypeScaleTo,
           StructHatchesMap, StructDetExternalObject, StructDetExternalObjectPropertyMap>;
