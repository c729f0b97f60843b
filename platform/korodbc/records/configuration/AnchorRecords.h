#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A standard or product family of anchors. Table "AnchorsStandard".
struct StructAnchorsStandard {
    int key = -1;
    KorString runName;
    KorString description;
    int sortOrder = 0;
    KorString ownerText;
};
struct StructAnchorsStandardMarshal : RecordMarshal<StructAnchorsStandard> {};

/// How an anchor stands in the concrete. Table "AnchorsOrientation".
struct StructAnchorsOrientation {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
};
struct StructAnchorsOrientationMarshal : RecordMarshal<StructAnchorsOrientation> {};

/// An anchor: one standard, material, set and diameter. Table "AnchorsName".
struct StructAnchorsName {
    int key = -1;
    KorString runName;
    int standard = -1;
    int material = -1;
    int boltSet = -1;
    int diameter = -1;
    KorString ownerText;
};

struct StructAnchorsNameMarshal : RecordMarshal<StructAnchorsName> {
    /// Materials of the anchors of a standard, sets of those in a material, diameters of those with a set: run
    /// names, each in the order of its own table. The standards, materials and sets go by their run names.
    static int getMaterialList(const KorString& standard, KorArray<KorString>& names);
    static int getSetList(const KorString& standard, const KorString& material, KorArray<KorString>& names);
    static int getDiameterList(const KorString& standard, const KorString& material, const KorString& set,
                               KorArray<KorString>& names);
};

/// A length that an anchor comes in. Lengths in mm, mass in kg. Table "AnchorsDefinition".
struct StructAnchorsDefinition {
    int key = -1;
    int anchorName = -1;
    double length = 0;
    double threadLength = 0;
    double embedment = 0;
    int orientation = -1;
    double mass = 0;
    KorString ownerText;
};

struct StructAnchorsDefinitionMarshal : RecordMarshal<StructAnchorsDefinition> {
    /// Lengths of an anchor, rising.
    static int getAvailableLengths(long anchorName, KorArray<double>& lengths);
};

/// The holes that an anchor needs. Diameters and depths in mm. Table "AnchorsHoleDefinition".
struct StructAnchorsHoleDefinition {
    int key = -1;
    int anchorName = -1;
    double plateHole = 0; // in the base plate
    double drillHole = 0; // in the concrete, 0 when cast in
    double drillDepth = 0;
    double washerHole = 0; // of a plate washer over the hole
    KorString ownerText;
};

struct StructAnchorsHoleDefinitionMarshal : RecordMarshal<StructAnchorsHoleDefinition> {
    static int getByAnchorNameID(long anchorName, StructAnchorsHoleDefinition& record)
    {
        return recordWith<&StructAnchorsHoleDefinition::anchorName>(anchorName, record);
    }
};
