#include <korodbc/records/configuration/ConnectorRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructConnectorStandard>()
{
    using R = StructConnectorStandard;
    return described([] {
        return describe<R>("StructConnectorStandard",
                           "ConnectorStandard",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::description>("Description"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructMaterialConnector>()
{
    using R = StructMaterialConnector;
    return described([] {
        return describe<R>("StructMaterialConnector",
                           "ConnectorMaterial",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::yieldStrength>("YieldStrength"),
                           column<&R::tensileStrength>("TensileStrength"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructConnectorDiameter>()
{
    using R = StructConnectorDiameter;
    return described([] {
        return describe<R>("StructConnectorDiameter",
                           "ConnectorDiameters",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::diameter>("Diameter"),
                           column<&R::headDiameter>("HeadDiameter"),
                           column<&R::headHeight>("HeadHeight"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructConnectorDistance>()
{
    using R = StructConnectorDistance;
    return described([] {
        return describe<R>("StructConnectorDistance",
                           "ConnectorDistances",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::distance>("Distance"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructConnectorRelations>()
{
    using R = StructConnectorRelations;
    return described([] {
        return describe<R>("StructConnectorRelations",
                           "ConnectorRelations",
                           inConfiguration,
                           key<&R::key>("Key"),
                           lookup<&R::standard, StructConnectorStandard>("Standard"),
                           lookup<&R::material, StructMaterialConnector>("Material"),
                           lookup<&R::diameter, StructConnectorDiameter>("Diameter"),
                           column<&R::minimumLength>("MinimumLength"),
                           column<&R::maximumLength>("MaximumLength"));
    });
}

std::span<const DescriptionFunction> records::connectorRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructConnectorStandard>,
                                                   descriptionOf<StructMaterialConnector>,
                                                   descriptionOf<StructConnectorDiameter>,
                                                   descriptionOf<StructConnectorDistance>,
                                                   descriptionOf<StructConnectorRelations>};
    return list;
}
