#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// How the sections of a class are worked. Table "SectionBehaviour".
struct StructSectionBehaviour {
    int key = -1;
    KorString runName;
    int unwind = 0; // 0 not, 1 along the outer face, 2 along the middle of the wall
};
struct StructSectionBehaviourMarshal : RecordMarshal<StructSectionBehaviour> {};

/// The behaviour of a class of sections; the run name is the class key. Table "SectionBehaviourAssignment".
struct StructSectionBehaviourAssignment {
    int key = -1;
    KorString runName;
    int behaviour = -1;
};
struct StructSectionBehaviourAssignmentMarshal : RecordMarshal<StructSectionBehaviourAssignment> {
    /// Key of the behaviour of a class, given by its key.
    static int getBehaviourKey(const KorString& profileClass, long& behaviour);
};
