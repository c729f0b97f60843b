#include <korodbc/records/configuration/ClassificationRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

#include <algorithm>
#include <tuple>

using namespace records;

template <std::same_as<StructMaterialGroups> R>
constexpr Entry listOf<R>[] = {
    table("MaterialGroups", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructGalvanizingConstructionClass> R>
constexpr Entry listOf<R>[] = {
    table("GalvanizingConstructionClass", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructGalvanizingDetailClass> R>
constexpr Entry listOf<R>[] = {
    table("GalvanizingDetailClass", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructGalvanizingConfidence> R>
constexpr Entry listOf<R>[] = {
    table("GalvanizingConfidence", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructAreaObjectType> R>
constexpr Entry listOf<R>[] = {
    table("AreaObjectType", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructOpeningObjectType> R>
constexpr Entry listOf<R>[] = {
    table("OpeningObjectType", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructObjectSubType> R>
constexpr Entry listOf<R>[] = {
    table("ObjectSubType", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructColdRolledOwner> R>
constexpr Entry listOf<R>[] = {
    table("ColdRolledOwner", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::country, "Country"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructPostNumberSolution> R>
constexpr Entry listOf<R>[] = {
    table("PostNumberSolution", DataSources{KorDSNDefinitions::kNumbering}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::separator, "Separator"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructObjectLayerAssignment> R>
constexpr Entry listOf<R>[] = {
    table("ObjectLayerAssignment", inConfiguration),
    key(&R::key, "Key"),
    column(&R::objectTable, "ObjectTable"),
    column(&R::layer, "Layer"),
    column(&R::color, "Color"),
    column(&R::lineType, "LineType"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructModelRole> R>
constexpr Entry listOf<R>[] = {
    table("ModelRole", inConfigurationAndAddin),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructModelRolesRules> R>
constexpr Entry listOf<R>[] = {
    table("ModelRolesRules", inConfigurationAndAddin),
    key(&R::key, "Key"),
    column(&R::modelRole, "ModelRole"),
    column(&R::action, "Action"),
    column(&R::forbidden, "Forbidden"),
};

int StructObjectLayerAssignmentMarshal::fillTablesRelation(KorArray<StructObjectLayerAssignment>& relation)
{
    const int result = getTable(relation);
    if (result == 1)
        std::stable_sort(relation.begin(), relation.end(), [](const auto& a, const auto& b) {
            return std::tie(a.objectTable, a.layer) < std::tie(b.objectTable, b.layer);
        });
    return result;
}

constinit const Family records::classificationRecords =
    family<StructMaterialGroups, StructGalvanizingConstructionClass, StructGalvanizingDetailClass,
           StructGalvanizingConfidence, StructAreaObjectType, StructOpeningObjectType, StructObjectSubType,
           StructColdRolledOwner, StructPostNumberSolution, StructObjectLayerAssignment, StructModelRole,
           StructModelRolesRules>;
