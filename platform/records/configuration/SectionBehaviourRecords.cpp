#include "records/configuration/SectionBehaviourRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructSectionBehaviour>()
{
    using R = StructSectionBehaviour;
    static constexpr auto list = describe<R>("StructSectionBehaviour",
                                             "SectionBehaviour",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::unwind>("Unwind"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructSectionBehaviourAssignment>()
{
    using R = StructSectionBehaviourAssignment;
    static constexpr auto list = describe<R>("StructSectionBehaviourAssignment",
                                             "SectionBehaviourAssignment",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             lookup<&R::behaviour, StructSectionBehaviour>("Behaviour"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

int StructSectionBehaviourAssignmentMarshal::getBehaviourKey(const KorString& profileClass, long& behaviour)
{
    StructSectionBehaviourAssignment record;
    const int result = getStructByRunName(profileClass, record);
    if (result == 1)
        behaviour = record.behaviour;
    return result;
}

std::span<const DescriptionFunction> records::sectionBehaviourRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructSectionBehaviour>,
                                                   descriptionOf<StructSectionBehaviourAssignment>};
    return list;
}
