#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// Whether an object behind others is drawn. Table "DepthStatus".
struct StructDepthStatus {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
};
struct StructDepthStatusMarshal : RecordMarshal<StructDepthStatus> {};

/// Which part of an object a label or dimension may belong to. Table "DetGeometricRestrictions".
struct StructDetGeometricRestrictions {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
};
struct StructDetGeometricRestrictionsMarshal : RecordMarshal<StructDetGeometricRestrictions> {};

/// Where the texts of running dimensions stand. Table "DetRunningDimensionTextAlignment".
struct StructDetRunningDimensionTextAlignment {
    int key = -1;
    KorString runName;
};
struct StructDetRunningDimensionTextAlignmentMarshal : RecordMarshal<StructDetRunningDimensionTextAlignment> {};

/// How the grid position of an object is written. Table "GridReferenceTokenFormat".
struct StructGridReferenceTokenFormat {
    int key = -1;
    KorString runName;
    KorString script;
    KorString ownerText;
};
struct StructGridReferenceTokenFormatMarshal : RecordMarshal<StructGridReferenceTokenFormat> {};

/// How a view request takes the scale of its process. Table "DetailProcessScaleOverride".
struct StructDetailProcessScaleOverride {
    int key = -1;
    KorString runName;
    double factor = 0; // of the process's scale
    int sortOrder = 0;
};
struct StructDetailProcessScaleOverrideMarshal : RecordMarshal<StructDetailProcessScaleOverride> {};

/// The scale that the texts of a drawing prototype are made for. Table "ChangePrototypeScaleTo".
struct StructChangePrototypeScaleTo {
    int key = -1;
    KorString prototype; // file name
    double scale = 0;    // paper over model
};
struct StructChangePrototypeScaleToMarshal : RecordMarshal<StructChangePrototypeScaleTo> {};

/// The hatch pattern in drawings for one of the model. Table "HatchesMap".
struct StructHatchesMap {
    int key = -1;
    KorString hatch;
    KorString correspondentHatch;
};
struct StructHatchesMapMarshal : RecordMarshal<StructHatchesMap> {};

/// A kind of object of another program that details can show. Table "DetExternalObject".
struct StructDetExternalObject {
    int key = -1;
    KorString runName;
    KorString className;
    int modelType = -1;
};
struct StructDetExternalObjectMarshal : RecordMarshal<StructDetExternalObject> {};

/// A property of such an object and the token that shows it. Table "DetExternalObjectPropertyMap".
struct StructDetExternalObjectPropertyMap {
    int key = -1;
    int externalObject = -1;
    KorString propertyName;
    KorString token;
};

struct StructDetExternalObjectPropertyMapMarshal : RecordMarshal<StructDetExternalObjectPropertyMap> {
    /// The kinds of objects and the properties of all of them; 1 when both could be read.
    static int getTables(KorArray<StructDetExternalObject>& objects,
                         KorArray<StructDetExternalObjectPropertyMap>& properties);
};
