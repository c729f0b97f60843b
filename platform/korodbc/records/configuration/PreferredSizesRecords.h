#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A region that preferred sizes are made for. Table "Region".
struct StructRegion {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
};
struct StructRegionMarshal : RecordMarshal<StructRegion> {};

/// A country. Table "Country".
struct StructCountry {
    int key = -1;
    KorString runName;
    KorString code;  // two letters, as in ISO 3166-1
    int region = -1; // -1: of none
};
struct StructCountryMarshal : RecordMarshal<StructCountry> {};

/// A choice of preferred sizes. Table "PreferredSizesProfiles" of the add-in.
struct StructPreferredSizesProfiles {
    int key = -1;
    KorString runName;
    int selected = 0;
    int region = -1; // -1: of none
    KorString ownerText;

    int getKey() const { return key; }
    int getSelected() const { return selected; }
    int getRegion() const { return region; }
};
struct StructPreferredSizesProfilesMarshal : RecordMarshal<StructPreferredSizesProfiles> {};

/// A catalogue row that a profile offers in one list. Table "PreferredSizesItems" of the add-in. What type, table
/// and category a list asks for is said in KorOdbcGrouping.
struct StructPreferredSizesItems {
    int key = -1;
    int profileID = -1;
    int typeID = 0;
    int categoryID = 0; // object kind, or what stands for it
    int tableID = 0;
    KorString keyValue;       // key of the row as text
    int masterTableID = 0;    // 0: the row is offered whatever was chosen before
    KorString masterKeyValue; // what the row is offered with: the section's class, the grating's class
};
struct StructPreferredSizesItemsMarshal : RecordMarshal<StructPreferredSizesItems> {};
