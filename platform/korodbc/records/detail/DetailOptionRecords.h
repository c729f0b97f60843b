#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// Settings of a drawing file that details are made in. Table "DetAcadSettings".
struct StructDetAcadSettings {
    int key = -1;
    KorString runName;
    KorString prototype; // file name
    KorString dimensionStyle;
    KorString textStyle;
    double lineTypeScale = 1;
    KorString ownerText;
};
struct StructDetAcadSettingsMarshal : RecordMarshal<StructDetAcadSettings> {};

/// How the sum of a chain of dimensions is written. Table "DetViewDimSum".
struct StructDetViewDimSum {
    int key = -1;
    KorString runName;
    KorString format; // of the sum's text
    int position = 0; // 0 none, 1 before, 2 behind the chain, 3 in a chain of its own
    KorString ownerText;
};
struct StructDetViewDimSumMarshal : RecordMarshal<StructDetViewDimSum> {};

/// Picture of a point type under a geometric restriction. Table "DetViewDimGeomRestrictionBitmaps".
struct StructDetViewDimGeomRestrictionBitmaps {
    int key = -1;
    int pointType = -1;
    int geometricRestriction = -1;
    int bitmapId = 0;
};

struct StructDetViewDimGeomRestrictionBitmapsMarshal : RecordMarshal<StructDetViewDimGeomRestrictionBitmaps> {
    static int getByPointTypeAndRestriction(long pointType, long restriction,
                                            StructDetViewDimGeomRestrictionBitmaps& record)
    {
        return getFirstWhere<&StructDetViewDimGeomRestrictionBitmaps::pointType,
                             &StructDetViewDimGeomRestrictionBitmaps::geometricRestriction>(
            pointType, restriction, record);
    }
};

/// Position that an object must have beside the part that it belongs to. Table "DetVwDimParentRelaPosRestriction".
struct StructDetVwDimParentRelaPosRestriction {
    int key = -1;
    KorString runName;
};
struct StructDetVwDimParentRelaPosRestrictionMarshal : RecordMarshal<StructDetVwDimParentRelaPosRestriction> {};

/// Where level dimensions stand. Table "DetOrdinatePosition".
struct StructDetOrdinatePosition {
    int key = -1;
    KorString runName;
};
struct StructDetOrdinatePositionMarshal : RecordMarshal<StructDetOrdinatePosition> {};

/// Level that level dimensions count from. Table "DetOrdinateReference".
struct StructDetOrdinateReference {
    int key = -1;
    KorString runName;
};
struct StructDetOrdinateReferenceMarshal : RecordMarshal<StructDetOrdinateReference> {};

/// A kind of level dimension: its place and the level that it counts from. Table "DetOrdinateDimType".
struct StructDetOrdinateDimType {
    int key = -1;
    int position = -1;
    int reference = -1;
    KorString runName;
};
struct StructDetOrdinateDimTypeMarshal : RecordMarshal<StructDetOrdinateDimType> {};

/// Kind of area that a detail shows, for example an opening. Table "DetailAreaType".
struct StructDetailAreaType {
    int key = -1;
    KorString runName;
};
struct StructDetailAreaTypeMarshal : RecordMarshal<StructDetailAreaType> {};

/// Axis of an object that its dimensions refer to. Table "DetailReferenceAxis".
struct StructDetailReferenceAxis {
    int key = -1;
    KorString runName;
};
struct StructDetailReferenceAxisMarshal : RecordMarshal<StructDetailReferenceAxis> {};

/// Whether a part of a detail is shown. Table "DetailVisibilityStatus".
struct StructDetailVisibilityStatus {
    int key = -1;
    KorString runName;
};
struct StructDetailVisibilityStatusMarshal : RecordMarshal<StructDetailVisibilityStatus> {};

/// Version that drawing files are written in. Table "DetailOutputFileVersion".
struct StructDetailOutputFileVersion {
    int key = -1;
    KorString runName;
    int fileVersion = 0; // year of the file format
};
struct StructDetailOutputFileVersionMarshal : RecordMarshal<StructDetailOutputFileVersion> {};

/// Version that drawing exchange files for machines are written in. Table "NCDXFOutputFileVersion".
struct StructNCDXFOutputFileVersion {
    int key = -1;
    KorString runName;
    int fileVersion = 0; // release of the file format
};
struct StructNCDXFOutputFileVersionMarshal : RecordMarshal<StructNCDXFOutputFileVersion> {};

/// How the end of a beam is held in the structural analysis. Table "BeamConnectionType".
struct StructBeamConnectionType {
    int key = -1;
    KorString runName;
    double fixity = 0; // part of the bending moment that is transferred, 0 to 1
};
struct StructBeamConnectionTypeMarshal : RecordMarshal<StructBeamConnectionType> {};

/// How a node of the structural analysis is supported. Table "NodeSupportType".
struct StructNodeSupportType {
    int key = -1;
    KorString runName;
    int fixed = 0; // sum of the bits of the fixed degrees of freedom
};
struct StructNodeSupportTypeMarshal : RecordMarshal<StructNodeSupportType> {};

/// A displacement or rotation of a node. Table "DegreeOfFreedom".
struct StructDegreeOfFreedom {
    int key = -1;
    KorString runName;
    KorString symbol;
    int bit = 0; // in node support types
};
struct StructDegreeOfFreedomMarshal : RecordMarshal<StructDegreeOfFreedom> {};

/// Labels of the axes of a grid, in the order in which they are given. Table "GridMultiLang".
struct StructNumberingDataRange {
    int key = -1;
    KorString runName;
    KorString language;
    KorString labels; // one character each; empty: numbers
};
struct StructNumberingDataRangeMarshal : RecordMarshal<StructNumberingDataRange> {};

/// A counter in marks and file names. Table "IncrementalCounter".
struct StructIncrementalCounter {
    int key = -1;
    KorString runName;
    KorString first; // its first value, number or letter
    int step = 1;
};
struct StructIncrementalCounterMarshal : RecordMarshal<StructIncrementalCounter> {};
