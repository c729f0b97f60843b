#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A program that KISS files are exchanged with; 1 is this application. Table "KISS_Application".
struct StructKISS_Application {
    int key = -1;
    KorString runName;
};
struct StructKISS_ApplicationMarshal : RecordMarshal<StructKISS_Application> {};

/// How a section is called in KISS files. Table "KISS_Profile_Conversion".
struct StructKISS_Profile_Conversion {
    int key = -1;
    KorString runName; // native name of the section
    int application = -1;
    KorString kissShape;
    KorString kissSection;
    KorString ownerText;
};
struct StructKISS_Profile_ConversionMarshal : RecordMarshal<StructKISS_Profile_Conversion> {
    static int getKISSProfiles(const KorString& section, int application, StructKISS_Profile_Conversion& record);
};

/// How a material is called in KISS files. Table "KISS_Material_Conversion".
struct StructKISS_Material_Conversion {
    int key = -1;
    KorString runName; // native name of the material
    int application = -1;
    KorString kissMaterial;
    KorString ownerText;
};
struct StructKISS_Material_ConversionMarshal : RecordMarshal<StructKISS_Material_Conversion> {
    static int getKISSMaterials(const KorString& material, int application,
                                StructKISS_Material_Conversion& record);
};

/// How plates of a model role are called in KISS files. Table "KissPlateMaterial".
struct StructKISSPlate_Material {
    int key = -1;
    KorString runName; // model role
    KorString kissShape;
    KorString kissMaterial;
    KorString ownerText;
};
struct StructKISSPlate_MaterialMarshal : RecordMarshal<StructKISSPlate_Material> {};

/// How a section is called in SDNF files. Table "SDNF_Profile_Conversion".
struct StructSDNF_Profile_Conversion {
    int key = -1;
    KorString runName; // native name of the section
    int application = -1;
    KorString sdnfClass;
    KorString sdnfSection;
    KorString ownerText;
};
struct StructSDNF_Profile_ConversionMarshal : RecordMarshal<StructSDNF_Profile_Conversion> {
    static int getSDNFProfiles(const KorString& section, int application, StructSDNF_Profile_Conversion& record);
    /// The first row with that name in SDNF files.
    static int getHSProfiles(const KorString& sdnfSection, StructSDNF_Profile_Conversion& record);
};

/// How far the sections of a class are turned in SDNF files against the model. Table "SDNF_Profile_Definition".
struct StructSDNF_Profile_Definition {
    int key = -1;
    KorString runName; // key of the class
    int application = -1;
    int objectType = -1;
    double rotation = 0; // degrees
    KorString ownerText;
};
struct StructSDNF_Profile_DefinitionMarshal : RecordMarshal<StructSDNF_Profile_Definition> {
    static int getClassRotation(const KorString& profileClass, int application, int objectType,
                                StructSDNF_Profile_Definition& record);
};

/// How a bolt standard is called in CIS/2 files. Table "CIS2_Bolt_Conversion".
struct StructCIS2_Bolt_Conversion {
    int key = -1;
    KorString runName; // native name of the standard
    int application = -1;
    KorString cis2Standard;
    KorString ownerText;
};
struct StructCIS2_Bolt_ConversionMarshal : RecordMarshal<StructCIS2_Bolt_Conversion> {
    static int getCIS2Standards(const KorString& standard, int application, StructCIS2_Bolt_Conversion& record);
    /// The first row with that CIS/2 standard.
    static int getKRStandards(const KorString& cis2Standard, StructCIS2_Bolt_Conversion& record);
};
