#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A class of sections and the table that holds them. Table "ProfileMasterTable".
struct StructProfileClass {
    enum eShape { kIShape = 0, kChannel = 1, kAngle = 2, kRoundTube = 3, kRectangularTube = 4 };

    KorString key;
    KorString runName;
    KorString typeName;
    KorString material;
    KorString tableName; // of the sections
    KorString subtypeName;
    KorString standard;
    int shape = 0; // eShape
    int sortOrder = 0;
    KorString ownerText;
};
struct StructProfileClassMarshal : RecordMarshal<StructProfileClass> {
    /// The class whose sections are in this table.
    static int getStructByTableName(const KorString& tableName, StructProfileClass& record);
};
// Their names after the table.
using StructProfileMasterTable = StructProfileClass;
using StructProfileMasterTableMarshal = StructProfileClassMarshal;

/// A section. The tables that hold sections are named by their classes; they all have these columns.
struct StructSection {
    int key = -1;
    KorString sectionName;
    double height = 0;          // mm
    double width = 0;           // mm
    double webThickness = 0;    // mm; angles: leg; tubes: wall
    double flangeThickness = 0; // mm
    double radius = 0;          // mm, root or outer corner
    double area = 0;            // cm2
    double mass = 0;            // kg/m
    double alpha = 0;           // degrees from the y axis to the strong principal axis
    double inertiaY = 0;        // cm4
    double inertiaZ = 0;        // cm4
    double elasticModulusY = 0; // cm3
    double elasticModulusZ = 0; // cm3
    double plasticModulusY = 0; // cm3
    double plasticModulusZ = 0; // cm3
    double radiusY = 0;         // cm, of gyration
    double radiusZ = 0;         // cm
    double torsionConstant = 0; // cm4
    double warpingConstant = 0; // cm6
};
struct StructSectionMarshal : RecordMarshal<StructSection> {};

/// A kind of cross-section that classes of sections name. Table "ProfileSubtypes".
struct StructProfileSubtype {
    int key = -1;
    KorString runName;
    int shape = -1; // StructProfileClass::eShape; -1: none of them
    int sortOrder = 0;
};
struct StructProfileSubtypeMarshal : RecordMarshal<StructProfileSubtype> {};

/// A class of compound sections and the table that holds them: key, run name, section name. Table
/// "CompoundMasterTable".
struct StructCompoundMaster {
    int key = -1;
    KorString compoundClass;
    KorString compoundClassName;
    KorString compoundTable;
    KorString ownerText;
};
struct StructCompoundMasterMarshal : RecordMarshal<StructCompoundMaster> {};
