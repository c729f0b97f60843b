#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A way to write dates and times. Table "DateTimeFormat".
struct StructDateTimeFormat {
    int key = -1;
    KorString runName;
    KorString format; // as strftime has it
};
struct StructDateTimeFormatMarshal : RecordMarshal<StructDateTimeFormat> {};

/// A height of texts in drawings. Table "TextSizes".
struct StructTextSizes {
    int key = -1;
    KorString runName;
    double height = 0; // mm on paper
    int sortOrder = 0;
};
struct StructTextSizesMarshal : RecordMarshal<StructTextSizes> {};

/// A group of tokens. Table "GenericStringTokenGroup".
struct StructGenericStringTokenGroup {
    int key = -1;
    KorString runName;
    int objectType = -1;
    int sortOrder = 0;
};

struct StructGenericStringTokenGroupMarshal : RecordMarshal<StructGenericStringTokenGroup> {
    /// The groups for objects of a type, in table order.
    static int getByObjectType(long objectType, KorArray<StructGenericStringTokenGroup>& records)
    {
        return recordsWith<&StructGenericStringTokenGroup::objectType>(objectType, records);
    }
};

/// A placeholder for a value of an object. Table "GenericStringToken".
struct StructGenericStringToken {
    int key = -1;
    KorString runName;
    int group = -1;
    KorString token; // as written in texts
    int sortOrder = 0;
};

struct StructGenericStringTokenMarshal : RecordMarshal<StructGenericStringToken> {
    /// The tokens of a group, in table order.
    static int getByGroup(long group, KorArray<StructGenericStringToken>& records)
    {
        return recordsWith<&StructGenericStringToken::group>(group, records);
    }
};

/// A column that a bill of material in a drawing can have. Table "BomDwgTokens".
struct StructBOMDwgTokens {
    int key = -1;
    KorString runName;
    KorString token;
    double width = 0; // mm on paper
    int sortOrder = 0;
};
struct StructBOMDwgTokensMarshal : RecordMarshal<StructBOMDwgTokens> {};

/// The objects that a report template lists. Table "TemplateReportObjects".
struct StructTemplateReportObjects {
    int key = -1;
    KorString runName;
    KorString selection;
    int grouped = 0; // equal objects on one line
};
struct StructTemplateReportObjectsMarshal : RecordMarshal<StructTemplateReportObjects> {};

/// A standard view of the model; the key is its internal name. Angles in degrees. Table "CameraTypes".
struct StructCameraType {
    KorString key;
    KorString runName;
    int perspective = 0;
    double azimuth = 0;   // of the eye, from the x axis
    double elevation = 0; // of the eye above the ground
    int sortOrder = 0;
};
struct StructCameraTypeMarshal : RecordMarshal<StructCameraType> {};
