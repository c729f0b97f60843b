#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A standard of shear studs. Table "ConnectorStandard".
struct StructConnectorStandard {
    int key = -1;
    KorString runName;
    KorString description;
    int sortOrder = 0;
    KorString ownerText;
};
struct StructConnectorStandardMarshal : RecordMarshal<StructConnectorStandard> {};

/// A material of shear studs. Strengths in N/mm2. Table "ConnectorMaterial".
struct StructMaterialConnector {
    int key = -1;
    KorString runName;
    double yieldStrength = 0;
    double tensileStrength = 0;
    int sortOrder = 0;
    KorString ownerText;
};
struct StructMaterialConnectorMarshal : RecordMarshal<StructMaterialConnector> {};

/// A diameter of shear studs. Lengths in mm. Table "ConnectorDiameters".
struct StructConnectorDiameter {
    int key = -1;
    KorString runName;
    double diameter = 0;
    double headDiameter = 0;
    double headHeight = 0;
    int sortOrder = 0;
    KorString ownerText;
};
struct StructConnectorDiameterMarshal : RecordMarshal<StructConnectorDiameter> {};

/// A spacing of shear studs. Table "ConnectorDistances".
struct StructConnectorDistance {
    int key = -1;
    KorString runName;
    double distance = 0; // mm
    int sortOrder = 0;
};
struct StructConnectorDistanceMarshal : RecordMarshal<StructConnectorDistance> {};

/// Shear studs that exist: standard, material and diameter. Lengths in mm. Table "ConnectorRelations".
struct StructConnectorRelations {
    int key = -1;
    int standard = -1;
    int material = -1;
    int diameter = -1;
    double minimumLength = 0;
    double maximumLength = 0;
};
struct StructConnectorRelationsMarshal : RecordMarshal<StructConnectorRelations> {};
