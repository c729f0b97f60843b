#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/exchange/FormatRecords.h>

// Names in files of the formats KISS, SDNF and CIS/2. They are compared exactly; of several rows the first counts.

/// Programs that KISS files are exchanged with.
class KorODBCKISS_Application : public CatalogueReader<StructKISS_Application> {
public:
    static int getApplicationsList(KorArray<KorString>& names) { return runNames(names); }
};

/// Sections in KISS files.
class KorODBCKISS_Profile_Conversion : public CatalogueReader<StructKISS_Profile_Conversion> {
public:
    /// By the native name and the key of the application.
    static int getKISSProfiles(KorString section, int application, StructKISS_Profile_Conversion& record)
    {
        return StructKISS_Profile_ConversionMarshal::getKISSProfiles(section, application, record);
    }
};

/// Materials in KISS files.
class KorODBCKISS_Material_Conversion : public CatalogueReader<StructKISS_Material_Conversion> {
public:
    /// By the native name and the key of the application.
    static int getKISSMaterials(KorString material, int application, StructKISS_Material_Conversion& record)
    {
        return StructKISS_Material_ConversionMarshal::getKISSMaterials(material, application, record);
    }
};

/// Plates in KISS files.
class KorODBCKISS_Plate_Material : public CatalogueReader<StructKISSPlate_Material> {
public:
    /// By the model role.
    static int getKissPlateMaterial(KorString role, StructKISSPlate_Material& record)
    {
        return byRunName(role, record);
    }
};

/// Sections in SDNF files.
class KorODBCSDNF_Profile_Conversion : public CatalogueReader<StructSDNF_Profile_Conversion> {
public:
    /// By the native name and the key of the application.
    static int getSDNFProfiles(KorString section, int application, StructSDNF_Profile_Conversion& record)
    {
        return StructSDNF_Profile_ConversionMarshal::getSDNFProfiles(section, application, record);
    }
    /// By the name in SDNF files.
    static int getHSProfiles(KorString sdnfSection, StructSDNF_Profile_Conversion& record)
    {
        return StructSDNF_Profile_ConversionMarshal::getHSProfiles(sdnfSection, record);
    }
};

/// Rotations in SDNF files.
class KorODBCSDNF_Profile_Definition : public CatalogueReader<StructSDNF_Profile_Definition> {
public:
    /// By the key of the class, and the keys of the application and the object type.
    static int getClassRotation(KorString profileClass, int application, int objectType,
                                StructSDNF_Profile_Definition& record)
    {
        return StructSDNF_Profile_DefinitionMarshal::getClassRotation(profileClass, application, objectType,
                                                                      record);
    }
};

/// Bolt standards in CIS/2 files.
class KorODBCCIS2_Bolt_Conversion : public CatalogueReader<StructCIS2_Bolt_Conversion> {
public:
    /// By the native name and the key of the application.
    static int getCIS2Standards(KorString nativeName, int application, StructCIS2_Bolt_Conversion& record)
    {
        return StructCIS2_Bolt_ConversionMarshal::getCIS2Standards(nativeName, application, record);
    }
    /// By the name in CIS/2 files.
    static int getKRStandards(KorString cisName, StructCIS2_Bolt_Conversion& record)
    {
        return StructCIS2_Bolt_ConversionMarshal::getKRStandards(cisName, record);
    }
};
