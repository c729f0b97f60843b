#include <korodbc/records/configuration/JointRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

static constexpr DataSources inDefinitionsAndAddin{KorDSNDefinitions::kDefinitions, KorDSNDefinitions::kAddin};

template <std::same_as<StructJointGroups> R>
constexpr Entry listOf<R>[] = {
    table("JointGroups", DataSources{KorDSNDefinitions::kRules}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructGroupsJointAssignment> R>
constexpr Entry listOf<R>[] = {
    table("GroupsJointAssignment", DataSources{KorDSNDefinitions::kRules}),
    key(&R::key, "Key"),
    column(&R::jointName, "JointName"),
    lookup<StructJointGroups>(&R::group, "GroupID"),
    column(&R::position, "Position"),
};

template <std::same_as<StructPagesGroupAssignment> R>
constexpr Entry listOf<R>[] = {
    table("PagesGroupAssignment", DataSources{KorDSNDefinitions::kRules}),
    key(&R::key, "Key"),
    lookup<StructJointGroups>(&R::group, "GroupID"),
    column(&R::page, "Page"),
    column(&R::position, "Position"),
};

template <std::same_as<StructHRLDefinition> R>
constexpr Entry listOf<R>[] = {
    table("HRLDefinition", inDefinitionsAndAddin),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::internalName, "InternalName"),
    column(&R::category, "Category"),
    column(&R::classID, "ClassID"),
    column(&R::libraryName, "LibraryName"),
};

template <std::same_as<StructConvertHRLToCOMJoints> R>
constexpr Entry listOf<R>[] = {
    table("ConvertHRLToCOMJoints", DataSources{KorDSNDefinitions::kRules}),
    key(&R::key, "Key"),
    column(&R::oldName, "OldName"),
    column(&R::newName, "NewName"),
    column(&R::classID, "ClassID"),
};

constinit const Family records::jointRecords =
    family<StructJointGroups, StructGroupsJointAssignment, StructPagesGroupAssignment, StructHRLDefinition,
           StructConvertHRLToCOMJoints>;
