#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A category of joints that connect automatically. Table "AutoConnectionCategories".
struct StructAutoConnectionCategories {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
};
struct StructAutoConnectionCategoriesMarshal : RecordMarshal<StructAutoConnectionCategories> {};

/// What an entry of a category does, as shown to the user. Table "AutoConnectionCategoriesItemsDesc".
struct StructAutoConnectionCategoriesItemsDesc {
    int key = -1;
    KorString runName;
    KorString description;
};
struct StructAutoConnectionCategoriesItemsDescMarshal : RecordMarshal<StructAutoConnectionCategoriesItemsDesc> {};

/// A joint in a category. Table "AutoConnectionCategoriesItems".
struct StructAutoConnectionCategoriesItems {
    int key = -1;
    int category = -1;
    int description = -1;
    KorString jointName;
    int position = 0;
};
struct StructAutoConnectionCategoriesItemsMarshal : RecordMarshal<StructAutoConnectionCategoriesItems> {};

/// A configuration: which objects connect, and which are left out. Table "AutoConnectionConfig".
struct StructAutoConnectionConfig {
    int key = -1;
    KorString runName;
    int inputSet = -1;
    int filtering = -1;
    int active = 0;
};
struct StructAutoConnectionConfigMarshal : RecordMarshal<StructAutoConnectionConfig> {};

/// Which neighbours of an object are left out. Table "AutoFilteringConfig".
struct StructAutoFilteringConfig {
    int key = -1;
    KorString runName;
    double maximumDistance = 0; // mm
    int sameAssemblyOnly = 0;
};
struct StructAutoFilteringConfigMarshal : RecordMarshal<StructAutoFilteringConfig> {};

/// One condition of a set: property, relation, value. Table "AutoConnectionInputObjectCondItems".
struct StructAutoConnectionInputObjectCondItems {
    int key = -1;
    int conditionSet = -1;
    KorString propertyName;
    int relation = 0; // 1 <, 2 <=, 3 >, 4 >=, 5 =, 6 <>
    KorString value;
};
struct StructAutoConnectionInputObjectCondItemsMarshal : RecordMarshal<StructAutoConnectionInputObjectCondItems> {
};

/// Conditions that an object meets all together. Table "AutoConnectionInputObjectCondSet".
struct StructAutoConnectionInputObjectCondSet {
    int key = -1;
    KorString runName;
};
struct StructAutoConnectionInputObjectCondSetMarshal : RecordMarshal<StructAutoConnectionInputObjectCondSet> {};

/// One object of an input set. Table "AutoConnectionInputObjects".
struct StructAutoConnectionInputObjects {
    int key = -1;
    int inputSet = -1;
    int position = 0; // counted from 0
    int modelRoles = -1;
    int conditionSet = -1;
};
struct StructAutoConnectionInputObjectsMarshal : RecordMarshal<StructAutoConnectionInputObjects> {};

/// The objects that a joint takes. Table "AutoConnectionInputSet".
struct StructAutoConnectionInputSet {
    int key = -1;
    KorString runName;
    int objectCount = 0;
};
struct StructAutoConnectionInputSetMarshal : RecordMarshal<StructAutoConnectionInputSet> {};

/// A group of model roles. Table "AutoConnectionModelRoles".
struct StructAutoConnectionModelRoles {
    int key = -1;
    KorString runName;
};
struct StructAutoConnectionModelRolesMarshal : RecordMarshal<StructAutoConnectionModelRoles> {};

/// A model role in a group. Table "AutoConnectionModelRolesItems".
struct StructAutoConnectionModelRolesItems {
    int key = -1;
    int modelRoles = -1;
    KorString roleName;
};
struct StructAutoConnectionModelRolesItemsMarshal : RecordMarshal<StructAutoConnectionModelRolesItems> {};

/// In which order a joint takes its objects. Table "AutoConnectionObjectsOrderForJoints".
struct StructAutoConnectionObjectsOrderForJoints {
    int key = -1;
    KorString jointName;
    int objectIndex = 0;
    int orderNumber = 0;
};
struct StructAutoConnectionObjectsOrderForJointsMarshal
    : RecordMarshal<StructAutoConnectionObjectsOrderForJoints> {};

/// Settings of one automatic rule. Table "AutoConnectionRuleSettingsGeneral".
struct StructAutoConnectionRuleSettingsGeneral {
    int key = -1;
    KorString runName;
    KorString jointName;
    int priority = 0;
    int active = 0;
};
struct StructAutoConnectionRuleSettingsGeneralMarshal : RecordMarshal<StructAutoConnectionRuleSettingsGeneral> {};

/// Sections that a rule is meant for. Table "AutoConnectionRuleSettingsProfiles".
struct StructAutoConnectionRuleSettingsProfiles {
    int key = -1;
    int ruleSettings = -1;
    KorString profileClass; // class key
    KorString sectionFrom;
    KorString sectionTo;
};
struct StructAutoConnectionRuleSettingsProfilesMarshal : RecordMarshal<StructAutoConnectionRuleSettingsProfiles> {
};

/// A category that a rule belongs to. Table "AutoConnectionRuleSettingsCategories".
struct StructAutoConnectionRuleSettingsCategories {
    int key = -1;
    int ruleSettings = -1;
    int category = -1;
};
struct StructAutoConnectionRuleSettingsCategoriesMarshal
    : RecordMarshal<StructAutoConnectionRuleSettingsCategories> {};

/// A configuration that a rule is active in. Table "AutoConnectionRuleSettingsConfigurations".
struct StructAutoConnectionRuleSettingsConfigurations {
    int key = -1;
    int ruleSettings = -1;
    int configuration = -1;
};
struct StructAutoConnectionRuleSettingsConfigurationsMarshal
    : RecordMarshal<StructAutoConnectionRuleSettingsConfigurations> {};

/// A named selection of rules, of which one is the current. Table "AutoConnectionProfiles".
struct StructAutoConnectionProfiles {
    int key = -1;
    KorString runName;
    int selected = 0;
};
struct StructAutoConnectionProfilesMarshal : RecordMarshal<StructAutoConnectionProfiles> {};

/// A named parameter of a connection situation. Table "AutoConnectionParamSetItems".
struct StructAutoConnectionParamSetItems {
    int key = -1;
    int situation = 0;
    int intValue1 = 0;
    KorString name;
    int intValue2 = 0;
    KorString textValue;
    int intValue3 = 0;
};
struct StructAutoConnectionParamSetItemsMarshal : RecordMarshal<StructAutoConnectionParamSetItems> {};

/// How two members must meet. Table "AutoConnectionGeomConditions".
struct StructAutoConnectionGeomConditions {
    int key = -1;
    KorString runName;
    double minimumAngle = 0; // degrees
    double maximumAngle = 0; // degrees
    double eccentricity = 0; // mm, largest
};
struct StructAutoConnectionGeomConditionsMarshal : RecordMarshal<StructAutoConnectionGeomConditions> {};
