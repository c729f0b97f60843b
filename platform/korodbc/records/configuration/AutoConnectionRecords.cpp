#include <korodbc/records/configuration/AutoConnectionRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructAutoConnectionCategories>()
{
    using R = StructAutoConnectionCategories;
    return described([] {
        return describe<R>("StructAutoConnectionCategories",
                           "AutoConnectionCategories",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionCategoriesItemsDesc>()
{
    using R = StructAutoConnectionCategoriesItemsDesc;
    return described([] {
        return describe<R>("StructAutoConnectionCategoriesItemsDesc",
                           "AutoConnectionCategoriesItemsDesc",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::description>("Description"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionCategoriesItems>()
{
    using R = StructAutoConnectionCategoriesItems;
    return described([] {
        return describe<R>("StructAutoConnectionCategoriesItems",
                           "AutoConnectionCategoriesItems",
                           inConfiguration,
                           key<&R::key>("Key"),
                           lookup<&R::category, StructAutoConnectionCategories>("Category"),
                           lookup<&R::description, StructAutoConnectionCategoriesItemsDesc>("Description"),
                           column<&R::jointName>("JointName"),
                           column<&R::position>("Position"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionConfig>()
{
    using R = StructAutoConnectionConfig;
    return described([] {
        return describe<R>("StructAutoConnectionConfig",
                           "AutoConnectionConfig",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::inputSet, StructAutoConnectionInputSet>("InputSet"),
                           lookup<&R::filtering, StructAutoFilteringConfig>("Filtering").noneAllowed(),
                           column<&R::active>("Active"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoFilteringConfig>()
{
    using R = StructAutoFilteringConfig;
    return described([] {
        return describe<R>("StructAutoFilteringConfig",
                           "AutoFilteringConfig",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::maximumDistance>("MaximumDistance"),
                           column<&R::sameAssemblyOnly>("SameAssemblyOnly"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionInputObjectCondItems>()
{
    using R = StructAutoConnectionInputObjectCondItems;
    return described([] {
        return describe<R>("StructAutoConnectionInputObjectCondItems",
                           "AutoConnectionInputObjectCondItems",
                           inConfiguration,
                           key<&R::key>("Key"),
                           lookup<&R::conditionSet, StructAutoConnectionInputObjectCondSet>("ConditionSet"),
                           column<&R::propertyName>("PropertyName"),
                           column<&R::relation>("Relation"),
                           column<&R::value>("Value"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionInputObjectCondSet>()
{
    using R = StructAutoConnectionInputObjectCondSet;
    return described([] {
        return describe<R>("StructAutoConnectionInputObjectCondSet",
                           "AutoConnectionInputObjectCondSet",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionInputObjects>()
{
    using R = StructAutoConnectionInputObjects;
    return described([] {
        return describe<R>(
            "StructAutoConnectionInputObjects",
            "AutoConnectionInputObjects",
            inConfiguration,
            key<&R::key>("Key"),
            lookup<&R::inputSet, StructAutoConnectionInputSet>("InputSet"),
            column<&R::position>("Position"),
            lookup<&R::modelRoles, StructAutoConnectionModelRoles>("ModelRoles"),
            lookup<&R::conditionSet, StructAutoConnectionInputObjectCondSet>("ConditionSet").noneAllowed());
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionInputSet>()
{
    using R = StructAutoConnectionInputSet;
    return described([] {
        return describe<R>("StructAutoConnectionInputSet",
                           "AutoConnectionInputSet",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::objectCount>("ObjectCount"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionModelRoles>()
{
    using R = StructAutoConnectionModelRoles;
    return described([] {
        return describe<R>("StructAutoConnectionModelRoles",
                           "AutoConnectionModelRoles",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionModelRolesItems>()
{
    using R = StructAutoConnectionModelRolesItems;
    return described([] {
        return describe<R>("StructAutoConnectionModelRolesItems",
                           "AutoConnectionModelRolesItems",
                           inConfiguration,
                           key<&R::key>("Key"),
                           lookup<&R::modelRoles, StructAutoConnectionModelRoles>("ModelRoles"),
                           column<&R::roleName>("RoleName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionObjectsOrderForJoints>()
{
    using R = StructAutoConnectionObjectsOrderForJoints;
    return described([] {
        return describe<R>("StructAutoConnectionObjectsOrderForJoints",
                           "AutoConnectionObjectsOrderForJoints",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::jointName>("JointName"),
                           column<&R::objectIndex>("ObjectIndex"),
                           column<&R::orderNumber>("OrderNumber"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionRuleSettingsGeneral>()
{
    using R = StructAutoConnectionRuleSettingsGeneral;
    return described([] {
        return describe<R>("StructAutoConnectionRuleSettingsGeneral",
                           "AutoConnectionRuleSettingsGeneral",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::jointName>("JointName"),
                           column<&R::priority>("Priority"),
                           column<&R::active>("Active"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionRuleSettingsProfiles>()
{
    using R = StructAutoConnectionRuleSettingsProfiles;
    return described([] {
        return describe<R>("StructAutoConnectionRuleSettingsProfiles",
                           "AutoConnectionRuleSettingsProfiles",
                           inConfiguration,
                           key<&R::key>("Key"),
                           lookup<&R::ruleSettings, StructAutoConnectionRuleSettingsGeneral>("RuleSettings"),
                           column<&R::profileClass>("ProfileClass"),
                           column<&R::sectionFrom>("SectionFrom"),
                           column<&R::sectionTo>("SectionTo"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionRuleSettingsCategories>()
{
    using R = StructAutoConnectionRuleSettingsCategories;
    return described([] {
        return describe<R>("StructAutoConnectionRuleSettingsCategories",
                           "AutoConnectionRuleSettingsCategories",
                           inConfiguration,
                           key<&R::key>("Key"),
                           lookup<&R::ruleSettings, StructAutoConnectionRuleSettingsGeneral>("RuleSettings"),
                           lookup<&R::category, StructAutoConnectionCategories>("Category"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionRuleSettingsConfigurations>()
{
    using R = StructAutoConnectionRuleSettingsConfigurations;
    return described([] {
        return describe<R>("StructAutoConnectionRuleSettingsConfigurations",
                           "AutoConnectionRuleSettingsConfigurations",
                           inConfiguration,
                           key<&R::key>("Key"),
                           lookup<&R::ruleSettings, StructAutoConnectionRuleSettingsGeneral>("RuleSettings"),
                           lookup<&R::configuration, StructAutoConnectionConfig>("Configuration"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionProfiles>()
{
    using R = StructAutoConnectionProfiles;
    return described([] {
        return describe<R>("StructAutoConnectionProfiles",
                           "AutoConnectionProfiles",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::selected>("Selected"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionParamSetItems>()
{
    using R = StructAutoConnectionParamSetItems;
    return described([] {
        return describe<R>("StructAutoConnectionParamSetItems",
                           "AutoConnectionParamSetItems",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::situation>("Situation"),
                           column<&R::intValue1>("IntValue1"),
                           column<&R::name>("Name"),
                           column<&R::intValue2>("IntValue2"),
                           column<&R::textValue>("TextValue"),
                           column<&R::intValue3>("IntValue3"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionGeomConditions>()
{
    using R = StructAutoConnectionGeomConditions;
    return described([] {
        return describe<R>("StructAutoConnectionGeomConditions",
                           "AutoConnectionGeomConditions",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::minimumAngle>("MinimumAngle"),
                           column<&R::maximumAngle>("MaximumAngle"),
                           column<&R::eccentricity>("Eccentricity"));
    });
}

std::span<const DescriptionFunction> records::autoConnectionRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructAutoConnectionCategories>,
                                                   descriptionOf<StructAutoConnectionCategoriesItemsDesc>,
                                                   descriptionOf<StructAutoConnectionCategoriesItems>,
                                                   descriptionOf<StructAutoConnectionConfig>,
                                                   descriptionOf<StructAutoFilteringConfig>,
                                                   descriptionOf<StructAutoConnectionInputObjectCondItems>,
                                                   descriptionOf<StructAutoConnectionInputObjectCondSet>,
                                                   descriptionOf<StructAutoConnectionInputObjects>,
                                                   descriptionOf<StructAutoConnectionInputSet>,
                                                   descriptionOf<StructAutoConnectionModelRoles>,
                                                   descriptionOf<StructAutoConnectionModelRolesItems>,
                                                   descriptionOf<StructAutoConnectionObjectsOrderForJoints>,
                                                   descriptionOf<StructAutoConnectionRuleSettingsGeneral>,
                                                   descriptionOf<StructAutoConnectionRuleSettingsProfiles>,
                                                   descriptionOf<StructAutoConnectionRuleSettingsCategories>,
                                                   descriptionOf<StructAutoConnectionRuleSettingsConfigurations>,
                                                   descriptionOf<StructAutoConnectionProfiles>,
                                                   descriptionOf<StructAutoConnectionParamSetItems>,
                                                   descriptionOf<StructAutoConnectionGeomConditions>};
    return list;
}
