#pragma once

#include <korodbc/repository/RecordMarshal.h>

#include <set>

/// The room that tightening a bolt takes. Lengths in mm. Table "Tools".
struct StructTools {
    int key = -1;
    KorString runName;
    double diameter = 0; // of the bolt
    double acrossFlats = 0;
    double outerDiameter = 0; // of the socket
    double height = 0;        // of the socket
    double clearance = 0;     // from the axis to a wall
    KorString ownerText;
};

struct StructToolsMarshal : RecordMarshal<StructTools> {
    /// The tool for bolts of a diameter, within 1e-6 mm.
    static int getByDiameter(double diameter, StructTools& record);
};

/// Which parts of a connection get a hole. Table "ScrewHoleLocation".
struct StructScrewHoleLocation {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
};
struct StructScrewHoleLocationMarshal : RecordMarshal<StructScrewHoleLocation> {};

/// A shape of holes for bolts. Table "ScrewHoleType".
struct StructScrewHoleType {
    int key = -1;
    KorString runName;
    int slotted = 0;
    int threaded = 0;
    int countersunk = 0;
    int sortOrder = 0;
};
struct StructScrewHoleTypeMarshal : RecordMarshal<StructScrewHoleType> {};

/// A bolt of one length with its set. Lengths in mm, mass in kg. Table "SetBolts".
struct StructSetBolts {
    int key = -1;
    int standard = -1;
    int boltSet = -1;
    double diameter = 0;
    double length = 0;
    double minimumGrip = 0;
    double maximumGrip = 0;
    double mass = 0; // of the bolt
    KorString ownerText;
};

struct StructSetBoltsMarshal : RecordMarshal<StructSetBolts> {
    /// The assembly with these run names of standard and set, and this diameter and length within 1e-6 mm.
    static int getByKeyAllSources(const KorString& standard, const KorString& set, double diameter, double length,
                                  StructSetBolts& record);
    /// Diameters that there are assemblies of, in the order of the table of diameters.
    static int getDiameterList(const KorString& standard, const KorString& set, KorArray<KorString>& names);
    /// The same in mm, rising.
    static int getDiameters(const KorString& standard, const KorString& set, KorArray<double>& diameters);

private:
    static void addDiameters(const KorString& standard, const KorString& set, std::set<double>& diameters);
};
