#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A group of dialog pages that joints share. Table "JointGroups".
struct StructJointGroups {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
};
struct StructJointGroupsMarshal : RecordMarshal<StructJointGroups> {};

/// A group that a joint uses. Table "GroupsJointAssignment".
struct StructGroupsJointAssignment {
    int key = -1;
    KorString jointName;
    int group = -1;
    int position = 0;
};

struct StructGroupsJointAssignmentMarshal : RecordMarshal<StructGroupsJointAssignment> {
    /// The groups of a joint, in table order.
    static int getByJoint(const KorString& jointName, KorArray<StructGroupsJointAssignment>& records)
    {
        return recordsWith<&StructGroupsJointAssignment::jointName>(jointName, records);
    }
};

/// A page of a group. Table "PagesGroupAssignment".
struct StructPagesGroupAssignment {
    int key = -1;
    int group = -1;
    KorString page;
    int position = 0;
};

struct StructPagesGroupAssignmentMarshal : RecordMarshal<StructPagesGroupAssignment> {
    /// The pages of a group, in table order.
    static int getByGroup(long group, KorArray<StructPagesGroupAssignment>& records)
    {
        return recordsWith<&StructPagesGroupAssignment::group>(group, records);
    }
};

/// A joint of the rule library. Table "HRLDefinition".
struct StructHRLDefinition {
    int key = -1;
    KorString runName;
    KorString internalName;
    int category = 0;
    KorString classID; // as in {6F9619FF-8B86-D011-B42D-00C04FC964FF}
    KorString libraryName;
};

struct StructHRLDefinitionMarshal : RecordMarshal<StructHRLDefinition> {
    static int getByInternalName(const KorString& internalName, StructHRLDefinition& record)
    {
        return recordWith<&StructHRLDefinition::internalName>(internalName, record);
    }
    static int getByClassID(const KorString& classID, StructHRLDefinition& record)
    {
        return recordWith<&StructHRLDefinition::classID>(classID, record);
    }
    /// The joints of a category, in table order.
    static int getArrayByCategory(long category, KorArray<StructHRLDefinition>& records)
    {
        return recordsWith<&StructHRLDefinition::category>(category, records);
    }
};

/// The joint that took the place of an older one. Table "ConvertHRLToCOMJoints".
struct StructConvertHRLToCOMJoints {
    int key = -1;
    KorString oldName;
    KorString newName;
    KorString classID;
};

struct StructConvertHRLToCOMJointsMarshal : RecordMarshal<StructConvertHRLToCOMJoints> {
    static int getByOldName(const KorString& oldName, StructConvertHRLToCOMJoints& record)
    {
        return recordWith<&StructConvertHRLToCOMJoints::oldName>(oldName, record);
    }
};
