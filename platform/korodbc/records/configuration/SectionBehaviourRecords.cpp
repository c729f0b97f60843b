#include <korodbc/records/configuration/SectionBehaviourRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructSectionBehaviour> R>
constexpr Entry listOf<R>[] = {
    table("SectionBehaviour", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::unwind, "Unwind"),
};

template <std::same_as<StructSectionBehaviourAssignment> R>
constexpr Entry listOf<R>[] = {
    table("SectionBehaviourAssignment", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructSectionBehaviour>(&R::behaviour, "Behaviour"),
};

int StructSectionBehaviourAssignmentMarshal::getBehaviourKey(const KorString& profileClass, long& behaviour)
{
    StructSectionBehaviourAssignment record;
    const int result = getStructByRunName(profileClass, record);
    if (result == 1)
        behaviour = record.behaviour;
    return result;
}

constinit const Family records::sectionBehaviourRecords =
    family<StructSectionBehaviour, StructSectionBehaviourAssignment>;
