#include "records/configuration/ConnectorRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructConnectorStandard>()
{
    using R = StructConnectorStandard;
    static constexpr auto list = describe<R>("StructConnectorStandard",
                                             "ConnectorStandard",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::description>("Description"),
                                             sortOrder<&R::sortOrder>("SortOrder"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructMaterialConnector>()
{
    using R = StructMaterialConnector;
    static constexpr auto list = describe<R>("StructMaterialConnector",
                                             "ConnectorMaterial",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::yieldStrength>("YieldStrength"),
                                             column<&R::tensileStrength>("TensileStrength"),
                                             sortOrder<&R::sortOrder>("SortOrder"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructConnectorDiameter>()
{
    using R = StructConnectorDiameter;
    static constexpr auto list = describe<R>("StructConnectorDiameter",
                                             "ConnectorDiameters",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::diameter>("Diameter"),
                                             column<&R::headDiameter>("HeadDiameter"),
                                             column<&R::headHeight>("HeadHeight"),
                                             sortOrder<&R::sortOrder>("SortOrder"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructConnectorDistance>()
{
    using R = StructConnectorDistance;
    static constexpr auto list = describe<R>("StructConnectorDistance",
                                             "ConnectorDistances",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::distance>("Distance"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructConnectorRelations>()
{
    using R = StructConnectorRelations;
    static constexpr auto list = describe<R>("StructConnectorRelations",
                                             "ConnectorRelations",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             lookup<&R::standard, StructConnectorStandard>("Standard"),
                                             lookup<&R::material, StructMaterialConnector>("Material"),
                                             lookup<&R::diameter, StructConnectorDiameter>("Diameter"),
                                             column<&R::minimumLength>("MinimumLength"),
                                             column<&R::maximumLength>("MaximumLength"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
