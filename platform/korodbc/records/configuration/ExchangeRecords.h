#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// The short name of a profile family in exchange files. Table "DSTVNames".
struct StructDSTVNames {
    int key = -1;
    KorString runName; // the code
    KorString description;
};
struct StructDSTVNamesMarshal : RecordMarshal<StructDSTVNames> {};

/// A member read from a static analysis. Table "DSTV_Static_In_B01".
struct StructDSTVStaticInB01 {
    int key = -1;
    KorString runName;
    int startNode = -1; // number of a node
    int endNode = -1;
    int profileNumber = -1;
    KorString material;
};
struct StructDSTVStaticInB01Marshal : RecordMarshal<StructDSTVStaticInB01> {
    static int getNumberOfObjects(long& number);
    static int getObject(long objectNumber, StructDSTVStaticInB01& object)
    {
        return getStructByKey(objectNumber, object);
    }
};

/// A node read from a static analysis. Coordinates in mm. Table "DSTV_Static_In_B02".
struct StructDSTVStaticInB02 {
    int key = -1;
    double x = 0;
    double y = 0;
    double z = 0;
};
struct StructDSTVStaticInB02Marshal : RecordMarshal<StructDSTVStaticInB02> {
    static int getNode(long nodeNumber, StructDSTVStaticInB02& node) { return getStructByKey(nodeNumber, node); }
};

/// The section of a member read from a static analysis. Table "DSTV_Static_In_B03".
struct StructDSTVStaticInB03 {
    enum eReferenceAxis { kStrongAxis = 0, kWeakAxis = 1 };

    int key = -1;
    int objectNumber = -1;
    KorString profileName;
    int referenceAxis = 0; // eReferenceAxis
    double rotation = 0;   // degrees
};
struct StructDSTVStaticInB03Marshal : RecordMarshal<StructDSTVStaticInB03> {
    /// Section of an object, and the axis that it is placed by.
    static int getProfile(long objectNumber, KorString& profileName,
                          StructDSTVStaticInB03::eReferenceAxis& referenceAxis);
};

/// A property of a member read from a static analysis. Table "DSTV_Static_In_B04".
struct StructDSTVStaticInB04 {
    int key = -1;
    int objectNumber = -1;
    KorString propertyName;
    KorString value;
};
struct StructDSTVStaticInB04Marshal : RecordMarshal<StructDSTVStaticInB04> {
    /// Value of an object's property with this name.
    static int getObjectProperty(long objectNumber, const KorString& propertyName, KorString& value);
};

/// A type of beams, as the rules for views tell them apart. Table "BeamType".
struct StructBeamType {
    int key = -1;
    KorString runName;
};
struct StructBeamTypeMarshal : RecordMarshal<StructBeamType> {};

/// When a beam needs a view. -1 as view or beam type stands for every type. Table
/// "NecessaryViewsConfiguration".
struct StructNecessaryViewsConfiguration {
    enum eViewType {
        kFrontView = 1,
        kTopView = 2,
        kSideView = 3,
        kSection = 4,
        kBottomView = 5,
        kBackView = 6,
    };
    enum eRule { kAlways = 1, kWhenItShowsDimensions = 2, kWhenPartsAreOnThatSide = 3 };

    int key = -1;
    KorString runName;
    int viewType = -1; // eViewType
    int beamType = -1;
    int notBeamType = 0;           // 1: applies to the other beam types
    int detObjQualifierSet = -1;   // key of the qualifier set
    int notDetObjQualifierSet = 0; // 1: applies to objects that the set does not hold
    int rule = 0;                  // eRule
    KorString ownerText;

    int getViewType() const { return viewType; }
    int getBeamType() const { return beamType; }
    int getNOTBeamType() const { return notBeamType; }
    int getDetObjQualifierSet() const { return detObjQualifierSet; }
    int getNOTDetObjQualifierSet() const { return notDetObjQualifierSet; }
    int getRule() const { return rule; }
};
struct StructNecessaryViewsConfigurationMarshal : RecordMarshal<StructNecessaryViewsConfiguration> {};
