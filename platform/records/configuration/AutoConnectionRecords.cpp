#include "records/configuration/AutoConnectionRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructAutoConnectionCategories>()
{
    using R = StructAutoConnectionCategories;
    static constexpr auto list = describe<R>("StructAutoConnectionCategories",
                                             "AutoConnectionCategories",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionCategoriesItemsDesc>()
{
    using R = StructAutoConnectionCategoriesItemsDesc;
    static constexpr auto list = describe<R>("StructAutoConnectionCategoriesItemsDesc",
                                             "AutoConnectionCategoriesItemsDesc",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::description>("Description"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionCategoriesItems>()
{
    using R = StructAutoConnectionCategoriesItems;
    static constexpr auto list =
        describe<R>("StructAutoConnectionCategoriesItems",
                    "AutoConnectionCategoriesItems",
                    inConfiguration,
                    key<&R::key>("Key"),
                    lookup<&R::category, StructAutoConnectionCategories>("Category"),
                    lookup<&R::description, StructAutoConnectionCategoriesItemsDesc>("Description"),
                    column<&R::jointName>("JointName"),
                    column<&R::position>("Position"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionConfig>()
{
    using R = StructAutoConnectionConfig;
    static constexpr auto list =
        describe<R>("StructAutoConnectionConfig",
                    "AutoConnectionConfig",
                    inConfiguration,
                    key<&R::key>("Key"),
                    runName<&R::runName>("RunName"),
                    lookup<&R::inputSet, StructAutoConnectionInputSet>("InputSet"),
                    lookup<&R::filtering, StructAutoFilteringConfig>("Filtering").noneAllowed(),
                    column<&R::active>("Active"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoFilteringConfig>()
{
    using R = StructAutoFilteringConfig;
    static constexpr auto list = describe<R>("StructAutoFilteringConfig",
                                             "AutoFilteringConfig",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::maximumDistance>("MaximumDistance"),
                                             column<&R::sameAssemblyOnly>("SameAssemblyOnly"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionInputObjectCondItems>()
{
    using R = StructAutoConnectionInputObjectCondItems;
    static constexpr auto list =
        describe<R>("StructAutoConnectionInputObjectCondItems",
                    "AutoConnectionInputObjectCondItems",
                    inConfiguration,
                    key<&R::key>("Key"),
                    lookup<&R::conditionSet, StructAutoConnectionInputObjectCondSet>("ConditionSet"),
                    column<&R::propertyName>("PropertyName"),
                    column<&R::relation>("Relation"),
                    column<&R::value>("Value"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionInputObjectCondSet>()
{
    using R = StructAutoConnectionInputObjectCondSet;
    static constexpr auto list = describe<R>("StructAutoConnectionInputObjectCondSet",
                                             "AutoConnectionInputObjectCondSet",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionInputObjects>()
{
    using R = StructAutoConnectionInputObjects;
    static constexpr auto list = describe<R>(
        "StructAutoConnectionInputObjects",
        "AutoConnectionInputObjects",
        inConfiguration,
        key<&R::key>("Key"),
        lookup<&R::inputSet, StructAutoConnectionInputSet>("InputSet"),
        column<&R::position>("Position"),
        lookup<&R::modelRoles, StructAutoConnectionModelRoles>("ModelRoles"),
        lookup<&R::conditionSet, StructAutoConnectionInputObjectCondSet>("ConditionSet").noneAllowed());
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionInputSet>()
{
    using R = StructAutoConnectionInputSet;
    static constexpr auto list = describe<R>("StructAutoConnectionInputSet",
                                             "AutoConnectionInputSet",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::objectCount>("ObjectCount"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionModelRoles>()
{
    using R = StructAutoConnectionModelRoles;
    static constexpr auto list = describe<R>("StructAutoConnectionModelRoles",
                                             "AutoConnectionModelRoles",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionModelRolesItems>()
{
    using R = StructAutoConnectionModelRolesItems;
    static constexpr auto list = describe<R>("StructAutoConnectionModelRolesItems",
                                             "AutoConnectionModelRolesItems",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             lookup<&R::modelRoles, StructAutoConnectionModelRoles>("ModelRoles"),
                                             column<&R::roleName>("RoleName"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionObjectsOrderForJoints>()
{
    using R = StructAutoConnectionObjectsOrderForJoints;
    static constexpr auto list = describe<R>("StructAutoConnectionObjectsOrderForJoints",
                                             "AutoConnectionObjectsOrderForJoints",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             column<&R::jointName>("JointName"),
                                             column<&R::objectIndex>("ObjectIndex"),
                                             column<&R::orderNumber>("OrderNumber"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionRuleSettingsGeneral>()
{
    using R = StructAutoConnectionRuleSettingsGeneral;
    static constexpr auto list = describe<R>("StructAutoConnectionRuleSettingsGeneral",
                                             "AutoConnectionRuleSettingsGeneral",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::jointName>("JointName"),
                                             column<&R::priority>("Priority"),
                                             column<&R::active>("Active"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionRuleSettingsProfiles>()
{
    using R = StructAutoConnectionRuleSettingsProfiles;
    static constexpr auto list =
        describe<R>("StructAutoConnectionRuleSettingsProfiles",
                    "AutoConnectionRuleSettingsProfiles",
                    inConfiguration,
                    key<&R::key>("Key"),
                    lookup<&R::ruleSettings, StructAutoConnectionRuleSettingsGeneral>("RuleSettings"),
                    column<&R::profileClass>("ProfileClass"),
                    column<&R::sectionFrom>("SectionFrom"),
                    column<&R::sectionTo>("SectionTo"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionRuleSettingsCategories>()
{
    using R = StructAutoConnectionRuleSettingsCategories;
    static constexpr auto list =
        describe<R>("StructAutoConnectionRuleSettingsCategories",
                    "AutoConnectionRuleSettingsCategories",
                    inConfiguration,
                    key<&R::key>("Key"),
                    lookup<&R::ruleSettings, StructAutoConnectionRuleSettingsGeneral>("RuleSettings"),
                    lookup<&R::category, StructAutoConnectionCategories>("Category"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionRuleSettingsConfigurations>()
{
    using R = StructAutoConnectionRuleSettingsConfigurations;
    static constexpr auto list =
        describe<R>("StructAutoConnectionRuleSettingsConfigurations",
                    "AutoConnectionRuleSettingsConfigurations",
                    inConfiguration,
                    key<&R::key>("Key"),
                    lookup<&R::ruleSettings, StructAutoConnectionRuleSettingsGeneral>("RuleSettings"),
                    lookup<&R::configuration, StructAutoConnectionConfig>("Configuration"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionProfiles>()
{
    using R = StructAutoConnectionProfiles;
    static constexpr auto list = describe<R>("StructAutoConnectionProfiles",
                                             "AutoConnectionProfiles",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::selected>("Selected"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionParamSetItems>()
{
    using R = StructAutoConnectionParamSetItems;
    static constexpr auto list = describe<R>("StructAutoConnectionParamSetItems",
                                             "AutoConnectionParamSetItems",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             column<&R::situation>("Situation"),
                                             column<&R::intValue1>("IntValue1"),
                                             column<&R::name>("Name"),
                                             column<&R::intValue2>("IntValue2"),
                                             column<&R::textValue>("TextValue"),
                                             column<&R::intValue3>("IntValue3"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructAutoConnectionGeomConditions>()
{
    using R = StructAutoConnectionGeomConditions;
    static constexpr auto list = describe<R>("StructAutoConnectionGeomConditions",
                                             "AutoConnectionGeomConditions",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::minimumAngle>("MinimumAngle"),
                                             column<&R::maximumAngle>("MaximumAngle"),
                                             column<&R::eccentricity>("Eccentricity"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
