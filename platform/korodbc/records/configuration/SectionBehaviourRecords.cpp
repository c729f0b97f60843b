#include <korodbc/records/configuration/SectionBehaviourRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructSectionBehaviour>()
{
    using R = StructSectionBehaviour;
    return described([] {
        return describe<R>("StructSectionBehaviour",
                           "SectionBehaviour",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::unwind>("Unwind"));
    });
}

template <>
const RecordDescription& descriptionOf<StructSectionBehaviourAssignment>()
{
    using R = StructSectionBehaviourAssignment;
    return described([] {
        return describe<R>("StructSectionBehaviourAssignment",
                           "SectionBehaviourAssignment",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::behaviour, StructSectionBehaviour>("Behaviour"));
    });
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
