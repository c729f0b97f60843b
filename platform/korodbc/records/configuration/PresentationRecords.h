#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// How a material looks. Colours and shares from 0 to 255 and from 0 to 1. Table "RenderMaterial".
struct StructRenderMaterial {
    int key = -1;
    KorString runName;
    int red = 0;
    int green = 0;
    int blue = 0;
    double transparency = 0;
    double shininess = 0;
    KorString texture; // file name
    KorString ownerText;
};
struct StructRenderMaterialMarshal : RecordMarshal<StructRenderMaterial> {};

/// A symbol for drawings. Table "Symbols".
struct StructSymbols {
    int key = -1;
    KorString runName;
    KorString fileName;
    double height = 0;   // mm on paper
    double rotation = 0; // degrees
    KorString ownerText;
};
struct StructSymbolsMarshal : RecordMarshal<StructSymbols> {};

/// Where the figures of a catalogue come from. Table "Sources".
struct StructSource {
    int key = -1;
    KorString runName;
    KorString description;
    KorString ownerText;
};
struct StructSourceMarshal : RecordMarshal<StructSource> {};
