#include <korodbc/records/configuration/ClassificationRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

#include <algorithm>
#include <tuple>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructMaterialGroups>()
{
    using R = StructMaterialGroups;
    return described([] {
        return describe<R>("StructMaterialGroups",
                           "MaterialGroups",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructGalvanizingConstructionClass>()
{
    using R = StructGalvanizingConstructionClass;
    return described([] {
        return describe<R>("StructGalvanizingConstructionClass",
                           "GalvanizingConstructionClass",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructGalvanizingDetailClass>()
{
    using R = StructGalvanizingDetailClass;
    return described([] {
        return describe<R>("StructGalvanizingDetailClass",
                           "GalvanizingDetailClass",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructGalvanizingConfidence>()
{
    using R = StructGalvanizingConfidence;
    return described([] {
        return describe<R>("StructGalvanizingConfidence",
                           "GalvanizingConfidence",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAreaObjectType>()
{
    using R = StructAreaObjectType;
    return described([] {
        return describe<R>("StructAreaObjectType",
                           "AreaObjectType",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructOpeningObjectType>()
{
    using R = StructOpeningObjectType;
    return described([] {
        return describe<R>("StructOpeningObjectType",
                           "OpeningObjectType",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructObjectSubType>()
{
    using R = StructObjectSubType;
    return described([] {
        return describe<R>("StructObjectSubType",
                           "ObjectSubType",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructColdRolledOwner>()
{
    using R = StructColdRolledOwner;
    return described([] {
        return describe<R>("StructColdRolledOwner",
                           "ColdRolledOwner",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::country>("Country"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructPostNumberSolution>()
{
    using R = StructPostNumberSolution;
    return described([] {
        return describe<R>("StructPostNumberSolution",
                           "PostNumberSolution",
                           DataSources{KorDSNDefinitions::kNumbering},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::separator>("Separator"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructObjectLayerAssignment>()
{
    using R = StructObjectLayerAssignment;
    return described([] {
        return describe<R>("StructObjectLayerAssignment",
                           "ObjectLayerAssignment",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::objectTable>("ObjectTable"),
                           column<&R::layer>("Layer"),
                           column<&R::color>("Color"),
                           column<&R::lineType>("LineType"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructModelRole>()
{
    using R = StructModelRole;
    return described([] {
        return describe<R>("StructModelRole",
                           "ModelRole",
                           inConfigurationAndAddin,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructModelRolesRules>()
{
    using R = StructModelRolesRules;
    return described([] {
        return describe<R>("StructModelRolesRules",
                           "ModelRolesRules",
                           inConfigurationAndAddin,
                           key<&R::key>("Key"),
                           column<&R::modelRole>("ModelRole"),
                           column<&R::action>("Action"),
                           column<&R::forbidden>("Forbidden"));
    });
}

int StructObjectLayerAssignmentMarshal::fillTablesRelation(KorArray<StructObjectLayerAssignment>& relation)
{
    const int result = getTable(relation);
    if (result == 1)
        std::stable_sort(relation.begin(), relation.end(), [](const auto& a, const auto& b) {
            return std::tie(a.objectTable, a.layer) < std::tie(b.objectTable, b.layer);
        });
    return result;
}

std::span<const DescriptionFunction> records::classificationRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructMaterialGroups>,
                                                   descriptionOf<StructGalvanizingConstructionClass>,
                                                   descriptionOf<StructGalvanizingDetailClass>,
                                                   descriptionOf<StructGalvanizingConfidence>,
                                                   descriptionOf<StructAreaObjectType>,
                                                   descriptionOf<StructOpeningObjectType>,
                                                   descriptionOf<StructObjectSubType>,
                                                   descriptionOf<StructColdRolledOwner>,
                                                   descriptionOf<StructPostNumberSolution>,
                                                   descriptionOf<StructObjectLayerAssignment>,
                                                   descriptionOf<StructModelRole>,
                                                   descriptionOf<StructModelRolesRules>};
    return list;
}
