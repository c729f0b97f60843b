#include <korodbc/records/configuration/ConnectorRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructConnectorStandard> R>
constexpr Entry listOf<R>[] = {
    table("ConnectorStandard", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::description, "Description"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructMaterialConnector> R>
constexpr Entry listOf<R>[] = {
    table("ConnectorMaterial", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::yieldStrength, "YieldStrength"),
    column(&R::tensileStrength, "TensileStrength"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructConnectorDiameter> R>
constexpr Entry listOf<R>[] = {
    table("ConnectorDiameters", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::diameter, "Diameter"),
    column(&R::headDiameter, "HeadDiameter"),
    column(&R::headHeight, "HeadHeight"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructConnectorDistance> R>
constexpr Entry listOf<R>[] = {
    table("ConnectorDistances", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::distance, "Distance"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructConnectorRelations> R>
constexpr Entry listOf<R>[] = {
    table("ConnectorRelations", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructConnectorStandard>(&R::standard, "Standard"),
    lookup<StructMaterialConnector>(&R::material, "Material"),
    lookup<StructConnectorDiameter>(&R::diameter, "Diameter"),
    column(&R::minimumLength, "MinimumLength"),
    column(&R::maximumLength, "MaximumLength"),
};

constinit const Family records::connectorRecords =
    family<StructConnectorStandard, StructMaterialConnector, StructConnectorDiameter, StructConnectorDistance,
           StructConnectorRelations>;
