#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A group of materials. Table "MaterialGroups".
struct StructMaterialGroups {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
    KorString ownerText;
};
struct StructMaterialGroupsMarshal : RecordMarshal<StructMaterialGroups> {};

/// Class of a member by its depth, for hot-dip galvanizing. Table "GalvanizingConstructionClass".
struct StructGalvanizingConstructionClass {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
};
struct StructGalvanizingConstructionClassMarshal : RecordMarshal<StructGalvanizingConstructionClass> {};

/// Class of a detail by its notch effect, for hot-dip galvanizing. Table "GalvanizingDetailClass".
struct StructGalvanizingDetailClass {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
};
struct StructGalvanizingDetailClassMarshal : RecordMarshal<StructGalvanizingDetailClass> {};

/// How far a member is safe from cracks in the zinc bath. Table "GalvanizingConfidence".
struct StructGalvanizingConfidence {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
};
struct StructGalvanizingConfidenceMarshal : RecordMarshal<StructGalvanizingConfidence> {};

/// A kind of area in the model. Table "AreaObjectType".
struct StructAreaObjectType {
    int key = -1;
    KorString runName;
};
struct StructAreaObjectTypeMarshal : RecordMarshal<StructAreaObjectType> {};

/// A kind of opening in an area. Table "OpeningObjectType".
struct StructOpeningObjectType {
    int key = -1;
    KorString runName;
};
struct StructOpeningObjectTypeMarshal : RecordMarshal<StructOpeningObjectType> {};

/// What the drawing of an object is made of. Table "ObjectSubType".
struct StructObjectSubType {
    int key = -1;
    KorString runName;
};
struct StructObjectSubTypeMarshal : RecordMarshal<StructObjectSubType> {};

/// A range of cold-rolled sections. Table "ColdRolledOwner".
struct StructColdRolledOwner {
    int key = -1;
    KorString runName;
    KorString country;
    KorString ownerText;
};
struct StructColdRolledOwnerMarshal : RecordMarshal<StructColdRolledOwner> {};

/// How equal numbers are told apart after numbering. Table "PostNumberSolution".
struct StructPostNumberSolution {
    int key = -1;
    KorString runName;
    KorString separator;
    int sortOrder = 0;
};
struct StructPostNumberSolutionMarshal : RecordMarshal<StructPostNumberSolution> {};

/// The layer that the objects of a table are drawn on. Table "ObjectLayerAssignment".
struct StructObjectLayerAssignment {
    int key = -1;
    KorString objectTable;
    KorString layer;
    int color = 0; // colour number, 256: of the layer
    KorString lineType;
    KorString ownerText;
};

struct StructObjectLayerAssignmentMarshal : RecordMarshal<StructObjectLayerAssignment> {
    /// Every assignment, sorted by table name and layer.
    static int fillTablesRelation(KorArray<StructObjectLayerAssignment>& relation);
};

/// What an object is in the model. Table "ModelRole".
struct StructModelRole {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
    KorString ownerText;
};
struct StructModelRoleMarshal : RecordMarshal<StructModelRole> {};

/// What may not be done with objects of a model role. Table "ModelRolesRules".
struct StructModelRolesRules {
    enum eAction { kNumber = 0, kDetail = 1, kList = 2, kExport = 3, kCheckCollisions = 4 };

    int key = -1;
    KorString modelRole;
    int action = 0; // eAction
    int forbidden = 0;
};
struct StructModelRolesRulesMarshal : RecordMarshal<StructModelRolesRules> {};
