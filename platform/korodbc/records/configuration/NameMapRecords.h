#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// What other programs call something. Table "MapInternToExtern".
struct StructMapInternToExtern {
    int key = -1;
    KorString runName; // internal name
    KorString externalName;
    KorString ownerText;
};
struct StructMapInternToExternMarshal : RecordMarshal<StructMapInternToExtern> {};
