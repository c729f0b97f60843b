#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// Kind of a dimension request, for example a running dimension. Table "DetRequestTypes".
struct StructDetRequestType {
    int key = -1;
    KorString runName;
};
struct StructDetRequestTypeMarshal : RecordMarshal<StructDetRequestType> {};

/// Kind of model object, for example a beam. Table "DetModelType".
struct StructDetModelType {
    int key = -1;
    KorString runName;
};
struct StructDetModelTypeMarshal : RecordMarshal<StructDetModelType> {};

/// Part that an object plays in a drawing, for example its main part. Table "DetRole".
struct StructDetRole {
    int key = -1;
    KorString runName;
};
struct StructDetRoleMarshal : RecordMarshal<StructDetRole> {};

/// Model objects of one type in one role. Table "DetObjQualifier".
struct StructDetObjQualifier {
    int key = -1;
    int modelType = -1;
    int role = -1;
    KorString runName;
};
struct StructDetObjQualifierMarshal : RecordMarshal<StructDetObjQualifier> {};

/// How an object is turned before it is drawn. Table "DetailOrientation".
struct StructDetailOrientation {
    int key = -1;
    KorString runName;
};
struct StructDetailOrientationMarshal : RecordMarshal<StructDetailOrientation> {};

/// Which objects a detail takes in. Table "DetObjSelectionStrategy".
struct StructDetObjSelectionStrategy {
    int key = -1;
    KorString runName;
};
struct StructDetObjSelectionStrategyMarshal : RecordMarshal<StructDetObjSelectionStrategy> {};

/// Shape of the line from a label to its object. Table "DetLeaderStyle".
struct StructDetLeaderStyle {
    int key = -1;
    KorString runName;
};
struct StructDetLeaderStyleMarshal : RecordMarshal<StructDetLeaderStyle> {};

/// A value that a label can show. Table "DetAnnotationTypeContents".
struct StructAnnotationTypeContents {
    int key = -1;
    KorString runName;
    KorString token; // as written in label templates
};
struct StructAnnotationTypeContentsMarshal : RecordMarshal<StructAnnotationTypeContents> {};

/// Order in which views fill the sheet. Table "DetViewArrangeDirection".
struct StructDetViewArrangeDirection {
    int key = -1;
    KorString runName;
};
struct StructDetViewArrangeDirectionMarshal : RecordMarshal<StructDetViewArrangeDirection> {};

/// When a requested view is drawn. Table "DetViewSelectMode".
struct StructDetViewSelectMode {
    int key = -1;
    KorString runName;
};
struct StructDetViewSelectModeMarshal : RecordMarshal<StructDetViewSelectMode> {};

/// Direction of a chain of dimensions. Table "DetRequestLinearDirection".
struct StructDetRequestLinearDirection {
    int key = -1;
    KorString runName;
};
struct StructDetRequestLinearDirectionMarshal : RecordMarshal<StructDetRequestLinearDirection> {};

/// Kind of point that a dimension ends at. Table "DetViewDimPointtype".
struct StructDetViewDimPointtype {
    int key = -1;
    KorString runName;
};
struct StructDetViewDimPointtypeMarshal : RecordMarshal<StructDetViewDimPointtype> {};

/// Position that an object must have in the view. Table "DetVwDimGeomRestrictions".
struct StructDetVwDimGeomRestrictions {
    int key = -1;
    KorString runName;
};
struct StructDetVwDimGeomRestrictionsMarshal : RecordMarshal<StructDetVwDimGeomRestrictions> {};

/// Coordinate system that a view looks along. Table "DetViewSystemSources".
struct StructDetViewSystemSource {
    int key = -1;
    KorString runName;
};
struct StructDetViewSystemSourceMarshal : RecordMarshal<StructDetViewSystemSource> {};

/// Place of an object in the depth of a view. Table "DetailDepthPosition".
struct StructDetailDepthPosition {
    int key = -1;
    KorString runName;
};
struct StructDetailDepthPositionMarshal : RecordMarshal<StructDetailDepthPosition> {};

/// How the position of a beam in the structure is told. Table "BeamPositionCalculation".
struct StructBeamPositionCalculation {
    int key = -1;
    KorString runName;
};
struct StructBeamPositionCalculationMarshal : RecordMarshal<StructBeamPositionCalculation> {};

/// Distance left between the clipped ends of an object. Table "ClippingGap".
struct StructClippingGap {
    int key = -1;
    double gap = 0; // mm on paper
};
struct StructClippingGapMarshal : RecordMarshal<StructClippingGap> {
    /// The first record with this gap.
    static int getByValue(double gap, StructClippingGap& record);
};

/// How clipped ends are drawn. Table "ClippingType".
struct StructClippingType {
    int key = -1;
    KorString runName;
};
struct StructClippingTypeMarshal : RecordMarshal<StructClippingType> {};
