#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A shape of sections that are made from dimensions. Table "ProfileDynamicSubtypes".
struct StructProfileDynamicSubtype {
    int key = -1;
    KorString runName;
    KorString profileSubtype;
    int sortOrder = 0;
};
struct StructProfileDynamicSubtypeMarshal : RecordMarshal<StructProfileDynamicSubtype> {};

/// The dimensions that a shape takes. Table "ProfileDynamicClassDesc".
struct StructProfileDynamicClassDesc {
    int key = -1;
    KorString runName;
    int subtype = -1;
    KorString dimensions; // names, separated by semicolons
};
struct StructProfileDynamicClassDescMarshal : RecordMarshal<StructProfileDynamicClassDesc> {};

/// A section made from dimensions. Lengths in mm. Table "ProfileDynamic".
struct StructProfileDynamic {
    int key = -1;
    KorString runName;
    int classDesc = -1;
    double height = 0;
    double width = 0;
    double webThickness = 0;
    double flangeThickness = 0;
    KorString material;
    KorString ownerText;
};
struct StructProfileDynamicMarshal : RecordMarshal<StructProfileDynamic> {};
