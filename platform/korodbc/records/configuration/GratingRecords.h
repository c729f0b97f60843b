#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A series of bar gratings; the key is its internal name. Table "BarGratingSeries".
struct StructBarGratingSeries {
    KorString standardName;
    KorString runName;
    KorString ownerText;
};
struct StructBarGratingSeriesMarshal : RecordMarshal<StructBarGratingSeries> {};

/// A spacing of bearing bars. Table "BearingBarSpacing".
struct StructBearingBarSpacing {
    int standardName = -1;
    KorString runName;
    double distance = 0; // mm
    KorString ownerText;
};
struct StructBearingBarSpacingMarshal : RecordMarshal<StructBearingBarSpacing> {};

/// A spacing of cross bars. Table "CrossBarSpacing".
struct StructCrossBarSpacing {
    int standardName = -1;
    KorString runName;
    double distance = 0; // mm
    KorString ownerText;
};
struct StructCrossBarSpacingMarshal : RecordMarshal<StructCrossBarSpacing> {};

/// Depth of a grating and thickness of its bearing bars. Table "BearingBarThickness".
struct StructBearingBarThickness {
    KorString standardName;
    double gratingThickness = 0; // mm
    double barThickness = 0;     // mm
    KorString runName;
    KorString ownerText;
};
struct StructBearingBarThicknessMarshal : RecordMarshal<StructBearingBarThickness> {};

/// Width of a grating panel. Table "BearingBarWidth".
struct StructBearingBarWidth {
    KorString standardName;
    KorString runName;
    int barQuantity = 0; // bearing bars in the panel
    KorString ownerText;
};
struct StructBearingBarWidthMarshal : RecordMarshal<StructBearingBarWidth> {};

/// A cross bar. Table "CrossBar".
struct StructCrossBar {
    KorString standardName;
    KorString runName;
    double barThickness = 0; // mm
    KorString ownerText;
};
struct StructCrossBarMarshal : RecordMarshal<StructCrossBar> {};

/// A valid combination of the components of a bar grating. Table "BarGrating".
struct StructBarGrating {
    int key = -1;
    KorString seriesName;
    int bearingBarSpacing = -1;
    int crossBarSpacing = -1;
    KorString bearingBarThicknessName;
    KorString bearingBarWidthName;
    KorString crossBarName;
    KorString ownerText;
};
struct StructBarGratingMarshal : RecordMarshal<StructBarGrating> {
    /// The row of one combination, given by the keys of its components.
    static int getByKey(const KorString& series, long bearingBarSpacing, long crossBarSpacing,
                        const KorString& thickness, const KorString& width, const KorString& crossBar,
                        StructBarGrating& record);
};

/// A class of gratings of fixed size and the table that holds them. Table "GratingStandardMaster".
struct StructGratingStandardMaster {
    int key = -1;
    KorString runName;
    KorString tableName;
    KorString material;
    KorString ownerText;
};
struct StructGratingStandardMasterMarshal : RecordMarshal<StructGratingStandardMaster> {};

/// A class of gratings cut to size and the table that holds them. Table "GratingVariableMaster".
struct StructGratingVariableMaster {
    int key = -1;
    KorString runName;
    KorString tableName;
    KorString material;
    KorString ownerText;
};
struct StructGratingVariableMasterMarshal : RecordMarshal<StructGratingVariableMaster> {};

/// A grating of fixed size. The tables that hold them are named by their classes. Table "Gratings_P30".
struct StructGratingStandardItem {
    int key = -1;
    KorString runName;
    double length = 0;    // mm, along the bearing bars
    double width = 0;     // mm
    double thickness = 0; // mm
    double mass = 0;      // kg
};
struct StructGratingStandardItemMarshal : RecordMarshal<StructGratingStandardItem> {};

/// A grating cut to size. The tables that hold them are named by their classes. Table "Gratings_G30".
struct StructGratingVariableItem {
    int key = -1;
    KorString runName;
    double thickness = 0;    // mm
    double barThickness = 0; // mm
    double massPerArea = 0;  // kg/m2
    double maximumWidth = 0; // mm
};
struct StructGratingVariableItemMarshal : RecordMarshal<StructGratingVariableItem> {};
