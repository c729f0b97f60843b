#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A program or format that models are exchanged with; 1 is this application. Table "QXT_Application".
struct StructQXT_Application {
    int key = -1;
    KorString runName;
    KorString description;
};
struct StructQXT_ApplicationMarshal : RecordMarshal<StructQXT_Application> {};

/// A kind of object that conversions tell apart; 1 are straight members. Table "Object_Type".
struct StructObject_Type {
    int key = -1;
    KorString runName;
};
struct StructObject_TypeMarshal : RecordMarshal<StructObject_Type> {};

/// How sections of an application are called in the neutral names. `section` is a regular expression for whole
/// names, or a plain name; in `qxtSection` "%1" stands for its first group, "%2" for its second and so on. Table
/// "QXT_Profile_Conversion".
struct StructQXT_Profile_Conversion {
    int key = -1;
    KorString profileClass;
    KorString section;
    int application = -1;
    int objectType = -1;
    KorString qxtClass;
    KorString qxtSection;
    int family = -1; // of sections, as other applications have them; -1: for none in particular
    int source = -1; // of the sections' sizes; -1: for none in particular
    KorString ownerText;
};
struct StructQXT_Profile_ConversionMarshal : RecordMarshal<StructQXT_Profile_Conversion> {};

/// How an application calls sections that have neutral names. `qxtSection` is what `section` is above, and
/// `exportSection` what `qxtSection` is. Table "Profile_Exports_Conversion".
struct StructProfile_Exports_Conversion {
    int key = -1;
    KorString qxtClass;
    KorString qxtSection;
    int application = -1;
    int objectType = -1;
    KorString exportClass;
    KorString exportSection;
    int family = -1;
    int source = -1;
    KorString ownerText;
};
struct StructProfile_Exports_ConversionMarshal : RecordMarshal<StructProfile_Exports_Conversion> {};

/// The neutral name of an application's material. Table "QXT_Material_Conversion".
struct StructQXT_Material_Conversion {
    int key = -1;
    KorString material;
    int application = -1;
    KorString qxtMaterial;
    KorString ownerText;
};
struct StructQXT_Material_ConversionMarshal : RecordMarshal<StructQXT_Material_Conversion> {
    /// The first row of an application's material.
    static int getQXTMaterials(const KorString& material, int application, StructQXT_Material_Conversion& record);
    /// The first row of an application with that neutral material.
    static int getAppMaterials(int application, const KorString& qxtMaterial,
                               StructQXT_Material_Conversion& record);
};
