#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/JointRecords.h>

/// Groups of dialog pages.
class KorODBCJointGroups : public CatalogueReader<StructJointGroups> {
public:
    static int getJointGroup(const KorOdbcKey& key, StructJointGroups& record) { return byKey(key, record); }
};

/// Groups that joints use.
class KorODBCGroupsJointAssignment : public CatalogueReader<StructGroupsJointAssignment> {
public:
    /// The groups of a joint, in table order.
    static int getGroupsForJoint(const KorString& jointName, KorArray<StructGroupsJointAssignment>& records)
    {
        return StructGroupsJointAssignmentMarshal::getByJoint(jointName, records);
    }
};

/// Pages of groups.
class KorODBCPagesGroupAssignment : public CatalogueReader<StructPagesGroupAssignment> {
public:
    /// The pages of a group, in table order.
    static int getPagesInGroup(const KorOdbcKey& group, KorArray<StructPagesGroupAssignment>& records)
    {
        return StructPagesGroupAssignmentMarshal::getByGroup(group, records);
    }
};

/// Joints that took the place of older ones.
class KorODBCConvertHRLToCOMJoints : public CatalogueReader<StructConvertHRLToCOMJoints> {
public:
    static int getConvertHRLToCOMJointsByOldName(const KorString& oldName, StructConvertHRLToCOMJoints& record)
    {
        return StructConvertHRLToCOMJointsMarshal::getByOldName(oldName, record);
    }
};
