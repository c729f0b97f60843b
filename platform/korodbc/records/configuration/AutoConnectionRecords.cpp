#include <korodbc/records/configuration/AutoConnectionRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructAutoConnectionCategories> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionCategories", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructAutoConnectionCategoriesItemsDesc> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionCategoriesItemsDesc", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::description, "Description"),
};

template <std::same_as<StructAutoConnectionCategoriesItems> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionCategoriesItems", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructAutoConnectionCategories>(&R::category, "Category"),
    lookup<StructAutoConnectionCategoriesItemsDesc>(&R::description, "Description"),
    column(&R::jointName, "JointName"),
    column(&R::position, "Position"),
};

template <std::same_as<StructAutoConnectionConfig> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionConfig", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructAutoConnectionInputSet>(&R::inputSet, "InputSet"),
    lookup<StructAutoFilteringConfig>(&R::filtering, "Filtering").noneAllowed(),
    column(&R::active, "Active"),
};

template <std::same_as<StructAutoFilteringConfig> R>
constexpr Entry listOf<R>[] = {
    table("AutoFilteringConfig", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::maximumDistance, "MaximumDistance"),
    column(&R::sameAssemblyOnly, "SameAssemblyOnly"),
};

template <std::same_as<StructAutoConnectionInputObjectCondItems> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionInputObjectCondItems", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructAutoConnectionInputObjectCondSet>(&R::conditionSet, "ConditionSet"),
    column(&R::propertyName, "PropertyName"),
    column(&R::relation, "Relation"),
    column(&R::value, "Value"),
};

template <std::same_as<StructAutoConnectionInputObjectCondSet> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionInputObjectCondSet", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructAutoConnectionInputObjects> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionInputObjects", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructAutoConnectionInputSet>(&R::inputSet, "InputSet"),
    column(&R::position, "Position"),
    lookup<StructAutoConnectionModelRoles>(&R::modelRoles, "ModelRoles"),
    lookup<StructAutoConnectionInputObjectCondSet>(&R::conditionSet, "ConditionSet").noneAllowed(),
};

template <std::same_as<StructAutoConnectionInputSet> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionInputSet", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::objectCount, "ObjectCount"),
};

template <std::same_as<StructAutoConnectionModelRoles> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionModelRoles", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructAutoConnectionModelRolesItems> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionModelRolesItems", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructAutoConnectionModelRoles>(&R::modelRoles, "ModelRoles"),
    column(&R::roleName, "RoleName"),
};

template <std::same_as<StructAutoConnectionObjectsOrderForJoints> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionObjectsOrderForJoints", inConfiguration),
    key(&R::key, "Key"),
    column(&R::jointName, "JointName"),
    column(&R::objectIndex, "ObjectIndex"),
    column(&R::orderNumber, "OrderNumber"),
};

template <std::same_as<StructAutoConnectionRuleSettingsGeneral> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionRuleSettingsGeneral", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::jointName, "JointName"),
    column(&R::priority, "Priority"),
    column(&R::active, "Active"),
};

template <std::same_as<StructAutoConnectionRuleSettingsProfiles> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionRuleSettingsProfiles", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructAutoConnectionRuleSettingsGeneral>(&R::ruleSettings, "RuleSettings"),
    column(&R::profileClass, "ProfileClass"),
    column(&R::sectionFrom, "SectionFrom"),
    column(&R::sectionTo, "SectionTo"),
};

template <std::same_as<StructAutoConnectionRuleSettingsCategories> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionRuleSettingsCategories", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructAutoConnectionRuleSettingsGeneral>(&R::ruleSettings, "RuleSettings"),
    lookup<StructAutoConnectionCategories>(&R::category, "Category"),
};

template <std::same_as<StructAutoConnectionRuleSettingsConfigurations> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionRuleSettingsConfigurations", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructAutoConnectionRuleSettingsGeneral>(&R::ruleSettings, "RuleSettings"),
    lookup<StructAutoConnectionConfig>(&R::configuration, "Configuration"),
};

template <std::same_as<StructAutoConnectionProfiles> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionProfiles", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::selected, "Selected"),
};

template <std::same_as<StructAutoConnectionParamSetItems> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionParamSetItems", inConfiguration),
    key(&R::key, "Key"),
    column(&R::situation, "Situation"),
    column(&R::intValue1, "IntValue1"),
    column(&R::name, "Name"),
    column(&R::intValue2, "IntValue2"),
    column(&R::textValue, "TextValue"),
    column(&R::intValue3, "IntValue3"),
};

template <std::same_as<StructAutoConnectionGeomConditions> R>
constexpr Entry listOf<R>[] = {
    table("AutoConnectionGeomConditions", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::minimumAngle, "MinimumAngle"),
    column(&R::maximumAngle, "MaximumAngle"),
    column(&R::eccentricity, "Eccentricity"),
};

constinit const Family records::autoConnectionRecords =
    family<StructAutoConnectionCategories, StructAutoConnectionCategoriesItemsDesc,
           StructAutoConnectionCategoriesItems, StructAutoConnectionConfig, StructAutoFilteringConfig,
           StructAutoConnectionInputObjectCondItems, StructAutoConnectionInputObjectCondSet,
           StructAutoConnectionInputObjects, StructAutoConnectionInputSet, StructAutoConnectionModelRoles,
           StructAutoConnectionModelRolesItems, StructAutoConnectionObjectsOrderForJoints,
           StructAutoConnectionRuleSettingsGeneral, StructAutoConnectionRuleSettingsProfiles,
           StructAutoConnectionRuleSettingsCategories, StructAutoConnectionRuleSettingsConfigurations,
           StructAutoConnectionProfiles, StructAutoConnectionParamSetItems, StructAutoConnectionGeomConditions>;
