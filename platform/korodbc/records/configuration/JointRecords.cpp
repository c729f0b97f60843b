#include <korodbc/records/configuration/JointRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

static constexpr DataSources inDefinitionsAndAddin{KorDSNDefinitions::kDefinitions, KorDSNDefinitions::kAddin};

template <>
const RecordDescription& descriptionOf<StructJointGroups>()
{
    using R = StructJointGroups;
    return described([] {
        return describe<R>("StructJointGroups",
                           "JointGroups",
                           DataSources{KorDSNDefinitions::kRules},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructGroupsJointAssignment>()
{
    using R = StructGroupsJointAssignment;
    return described([] {
        return describe<R>("StructGroupsJointAssignment",
                           "GroupsJointAssignment",
                           DataSources{KorDSNDefinitions::kRules},
                           key<&R::key>("Key"),
                           column<&R::jointName>("JointName"),
                           lookup<&R::group, StructJointGroups>("GroupID"),
                           column<&R::position>("Position"));
    });
}

template <>
const RecordDescription& descriptionOf<StructPagesGroupAssignment>()
{
    using R = StructPagesGroupAssignment;
    return described([] {
        return describe<R>("StructPagesGroupAssignment",
                           "PagesGroupAssignment",
                           DataSources{KorDSNDefinitions::kRules},
                           key<&R::key>("Key"),
                           lookup<&R::group, StructJointGroups>("GroupID"),
                           column<&R::page>("Page"),
                           column<&R::position>("Position"));
    });
}

template <>
const RecordDescription& descriptionOf<StructHRLDefinition>()
{
    using R = StructHRLDefinition;
    return described([] {
        return describe<R>("StructHRLDefinition",
                           "HRLDefinition",
                           inDefinitionsAndAddin,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::internalName>("InternalName"),
                           column<&R::category>("Category"),
                           column<&R::classID>("ClassID"),
                           column<&R::libraryName>("LibraryName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructConvertHRLToCOMJoints>()
{
    using R = StructConvertHRLToCOMJoints;
    return described([] {
        return describe<R>("StructConvertHRLToCOMJoints",
                           "ConvertHRLToCOMJoints",
                           DataSources{KorDSNDefinitions::kRules},
                           key<&R::key>("Key"),
                           column<&R::oldName>("OldName"),
                           column<&R::newName>("NewName"),
                           column<&R::classID>("ClassID"));
    });
}

std::span<const DescriptionFunction> records::jointRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructJointGroups>,
                                                   descriptionOf<StructGroupsJointAssignment>,
                                                   descriptionOf<StructPagesGroupAssignment>,
                                                   descriptionOf<StructHRLDefinition>,
                                                   descriptionOf<StructConvertHRLToCOMJoints>};
    return list;
}
