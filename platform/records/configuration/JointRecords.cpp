#include "records/configuration/JointRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

static constexpr DataSources inDefinitionsAndAddin{KorDSNDefinitions::kDefinitions, KorDSNDefinitions::kAddin};

template <>
const RecordDescription& descriptionOf<StructJointGroups>()
{
    using R = StructJointGroups;
    static constexpr auto list = describe<R>("StructJointGroups",
                                             "JointGroups",
                                             DataSources{KorDSNDefinitions::kRules},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructGroupsJointAssignment>()
{
    using R = StructGroupsJointAssignment;
    static constexpr auto list = describe<R>("StructGroupsJointAssignment",
                                             "GroupsJointAssignment",
                                             DataSources{KorDSNDefinitions::kRules},
                                             key<&R::key>("Key"),
                                             column<&R::jointName>("JointName"),
                                             lookup<&R::group, StructJointGroups>("GroupID"),
                                             column<&R::position>("Position"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructPagesGroupAssignment>()
{
    using R = StructPagesGroupAssignment;
    static constexpr auto list = describe<R>("StructPagesGroupAssignment",
                                             "PagesGroupAssignment",
                                             DataSources{KorDSNDefinitions::kRules},
                                             key<&R::key>("Key"),
                                             lookup<&R::group, StructJointGroups>("GroupID"),
                                             column<&R::page>("Page"),
                                             column<&R::position>("Position"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructHRLDefinition>()
{
    using R = StructHRLDefinition;
    static constexpr auto list = describe<R>("StructHRLDefinition",
                                             "HRLDefinition",
                                             inDefinitionsAndAddin,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::internalName>("InternalName"),
                                             column<&R::category>("Category"),
                                             column<&R::classID>("ClassID"),
                                             column<&R::libraryName>("LibraryName"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructConvertHRLToCOMJoints>()
{
    using R = StructConvertHRLToCOMJoints;
    static constexpr auto list = describe<R>("StructConvertHRLToCOMJoints",
                                             "ConvertHRLToCOMJoints",
                                             DataSources{KorDSNDefinitions::kRules},
                                             key<&R::key>("Key"),
                                             column<&R::oldName>("OldName"),
                                             column<&R::newName>("NewName"),
                                             column<&R::classID>("ClassID"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
