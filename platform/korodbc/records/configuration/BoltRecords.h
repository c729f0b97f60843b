#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A form of bolt. Table "ScrewTypes".
struct StructScrewType {
    int key = -1;
    KorString runName;
    int headForm = 0; // 0 hexagon, 1 socket, 2 countersunk
    int fullThread = 0;
};
struct StructScrewTypeMarshal : RecordMarshal<StructScrewType> {};

/// A bolt standard. Table "Standard".
struct StructStandard {
    int key = -1;
    KorString runName;
    int screwType = -1;
    KorString description;
    int sortOrder = 0;
    KorString ownerText;
};
struct StructStandardMarshal : RecordMarshal<StructStandard> {};

/// A standard of nuts or washers. Table "StandardNuts".
struct StructStandardNuts {
    int key = -1;
    KorString runName;
    int component = 0;       // 0 nut, 1 washer
    KorString strengthClass; // of nuts: property class, of washers: hardness
    KorString description;
    KorString ownerText;
};
struct StructStandardNutsMarshal : RecordMarshal<StructStandardNuts> {};

/// A strength class of bolts. Strengths in N/mm2. Table "StrengthClass".
struct StructStrengthClass {
    int key = -1;
    KorString runName;
    double yieldStrength = 0;
    double tensileStrength = 0;
    int sortOrder = 0;
    KorString ownerText;
};
struct StructStrengthClassMarshal : RecordMarshal<StructStrengthClass> {};

/// What comes with a bolt. Table "Sets".
struct StructSet {
    int key = -1;
    KorString runName;
    int nuts = 0;
    int headWashers = 0;
    int nutWashers = 0;
    int sortOrder = 0;
    KorString ownerText;
};
struct StructSetMarshal : RecordMarshal<StructSet> {};

/// A bolt diameter. Lengths in mm, areas in mm2. Table "BoltsDiameters".
struct StructScrewDiameter {
    int key = -1;
    KorString runName;
    double diameter = 0;
    double holeDiameter = 0; // normal hole
    double shankArea = 0;
    double stressArea = 0;
    int sortOrder = 0;
    KorString ownerText;
};
struct StructScrewDiameterMarshal : RecordMarshal<StructScrewDiameter> {};

/// A bolt of one standard, strength class, set and diameter. Lengths in mm. Table "ScrewNew".
struct StructScrew {
    int key = -1;
    int standard = -1;
    int strengthClass = -1;
    int boltSet = -1;
    double diameter = 0;
    double headHeight = 0;
    double acrossFlats = 0;
    double pitch = 0;
    double minimumLength = 0;
    double maximumLength = 0;
    KorString ownerText;
};
struct StructScrewMarshal : RecordMarshal<StructScrew> {
    /// The bolt with these run names of standard, strength class and set, and this diameter within 1e-6 mm.
    static int getByKeyAllSources(const KorString& standard, const KorString& strengthClass, const KorString& set,
                                  double diameter, StructScrew& record);
};

/// A nut or washer of a set, for one diameter. Lengths in mm. Table "SetNutsBolts".
struct StructSetNutsBolts {
    int key = -1;
    int boltSet = -1;
    int standard = -1;
    int position = 0; // counted from the head
    int quantity = 1;
    int headSide = 0;
    double diameter = 0;
    double height = 0;
    double outerDiameter = 0; // of nuts: across flats
    double holeDiameter = 0;
};
struct StructSetNutsBoltsMarshal : RecordMarshal<StructSetNutsBolts> {};

/// A coating of bolts. Table "BoltsCoating".
struct StructScrewCoating {
    int key = -1;
    KorString runName;
    double thickness = 0; // micrometres
    KorString ownerText;
};
struct StructScrewCoatingMarshal : RecordMarshal<StructScrewCoating> {};

/// A bolt with its set, as offered in lists. Table "SetOfBolts".
struct StructSetOfBolts {
    int key = -1;
    KorString runName;
    int standard = -1;
    int strengthClass = -1;
    int boltSet = -1;
    int coating = -1;
    KorString ownerText;
};

struct StructSetOfBoltsMarshal : RecordMarshal<StructSetOfBolts> {
    /// Strength classes that a standard comes in, and sets that it comes with in a strength class: run names,
    /// each in the order of its own table. Standard and strength class go by their run names.
    static int getStrengthClassList(const KorString& standard, KorArray<KorString>& names);
    static int getSetList(const KorString& standard, const KorString& strengthClass, KorArray<KorString>& names);
};
