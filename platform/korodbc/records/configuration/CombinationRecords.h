#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// Where bolts are put in. Table "AssemblyLocation".
struct StructAssemblyLocation {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
};
struct StructAssemblyLocationMarshal : RecordMarshal<StructAssemblyLocation> {};

/// Distances of the bolts of one diameter, in mm. Table "BoltsDistances".
struct StructScrewDistance {
    int key = -1;
    KorString runName;
    double diameter = 0;
    double edgeDistance = 0; // smallest, in the direction of force
    double sideDistance = 0; // smallest, across it
    double pitch = 0;        // smallest, in the direction of force
    double gauge = 0;        // smallest, across it
    KorString ownerText;
};
struct StructScrewDistanceMarshal : RecordMarshal<StructScrewDistance> {};

/// Properties of bolts that go together, by their run names. Table "ValidCombinations".
struct StructValidCombinations {
    int key = -1;
    KorString standard;
    KorString strengthClass;
    KorString boltSet;
    KorString diameter;
    KorString coating;
    KorString assemblyLocation;
};
struct StructValidCombinationsMarshal : RecordMarshal<StructValidCombinations> {
    /// Key of the first row with these properties.
    static int getKey(const KorString& standard, const KorString& strengthClass, const KorString& boltSet,
                      const KorString& diameter, const KorString& coating, const KorString& assemblyLocation,
                      int& key);
};
