#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A toolbar as the user has it. Table "Toolbars".
struct StructToolbarsTable {
    int key = -1;
    KorString runName;
    KorString toolTip;
    int parent = -1; // key of the toolbar this one opens from
    int position = 0;
    int visible = 0;
    int docking = 0; // 0 floating, 1 top, 2 bottom, 3 left, 4 right
};
struct StructToolbarsTableMarshal : RecordMarshal<StructToolbarsTable> {};

/// A toolbar as it is delivered; the same columns, since rows are copied over as they are. Table
/// "ToolbarsDefault".
struct StructToolbarsDefault {
    int key = -1;
    KorString runName;
    KorString toolTip;
    int parent = -1; // key of the toolbar this one opens from
    int position = 0;
    int visible = 0;
    int docking = 0; // 0 floating, 1 top, 2 bottom, 3 left, 4 right
};
struct StructToolbarsDefaultMarshal : RecordMarshal<StructToolbarsDefault> {};
