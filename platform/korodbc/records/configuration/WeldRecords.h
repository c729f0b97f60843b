#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A basic weld. Keys up to 1000. Table "WeldType".
struct StructWeldSeamBasic {
    int key = -1;
    KorString runName;
    KorString symbol; // as in ISO 2553
    int filletWeld = 0;
    int sortOrder = 0;
};
struct StructWeldSeamBasicMarshal : RecordMarshal<StructWeldSeamBasic> {};

/// Two basic welds on both sides of a joint. Keys from 1001 up. Table "CombiWelding".
struct StructWeldSeam {
    int key = -1;
    KorString runName;
    int firstWeld = -1;
    int secondWeld = -1;
    int sortOrder = 0;
};
struct StructWeldSeamMarshal : RecordMarshal<StructWeldSeam> {
    /// Key of the first weld that these two basic welds make, in this order; -1 stands for no second weld.
    static int getKeyOfWelds(long firstWeld, long secondWeld, int& key);
};

/// The shape of a weld's face. Table "WeldShape".
struct StructFaceShape {
    int key = -1;
    KorString runName;
    KorString symbol;
};
struct StructFaceShapeMarshal : RecordMarshal<StructFaceShape> {};

/// How a weld is made. Table "WeldDesign".
struct StructSeamExecuting {
    int key = -1;
    KorString runName;
    int siteWeld = 0;
    int allAround = 0;
};
struct StructSeamExecutingMarshal : RecordMarshal<StructSeamExecuting> {};

/// A text beside a weld symbol; the key is what drawings show in short. Table "Texts".
struct StructWeldSeamText {
    KorString key;
    KorString runName;
};
struct StructWeldSeamTextMarshal : RecordMarshal<StructWeldSeamText> {};
