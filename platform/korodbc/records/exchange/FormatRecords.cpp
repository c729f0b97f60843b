#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/exchange/ConversionRecords.h>
#include <korodbc/records/exchange/FormatRecords.h>

using namespace records;

template <std::same_as<StructKISS_Application> R>
constexpr Entry listOf<R>[] = {
    table("KISS_Application", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructKISS_Profile_Conversion> R>
constexpr Entry listOf<R>[] = {
    table("KISS_Profile_Conversion", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    names<StructKISS_Application>(&R::application, "Application"),
    column(&R::kissShape, "KISSShape"),
    column(&R::kissSection, "KISSSection"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructKISS_Material_Conversion> R>
constexpr Entry listOf<R>[] = {
    table("KISS_Material_Conversion", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    names<StructKISS_Application>(&R::application, "Application"),
    column(&R::kissMaterial, "KISSMaterial"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructKISSPlate_Material> R>
constexpr Entry listOf<R>[] = {
    table("KissPlateMaterial", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::kissShape, "KISSShape"),
    column(&R::kissMaterial, "KISSMaterial"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructSDNF_Profile_Conversion> R>
constexpr Entry listOf<R>[] = {
    table("SDNF_Profile_Conversion", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    names<StructQXT_Application>(&R::application, "Application"),
    column(&R::sdnfClass, "SDNFClass"),
    column(&R::sdnfSection, "SDNFSection"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructSDNF_Profile_Definition> R>
constexpr Entry listOf<R>[] = {
    table("SDNF_Profile_Definition", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    names<StructQXT_Application>(&R::application, "Application"),
    names<StructObject_Type>(&R::objectType, "ObjectType"),
    column(&R::rotation, "Rotation"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructCIS2_Bolt_Conversion> R>
constexpr Entry listOf<R>[] = {
    table("CIS2_Bolt_Conversion", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    names<StructQXT_Application>(&R::application, "Application"),
    column(&R::cis2Standard, "CIS2Standard"),
    owner(&R::ownerText, "OwnerText"),
};

int StructKISS_Profile_ConversionMarshal::getKISSProfiles(const KorString& section, int application,
                                                          StructKISS_Profile_Conversion& record)
{
    return recordThat(
        [&](const StructKISS_Profile_Conversion& row) {
            return row.application == application && row.runName == section;
        },
        record);
}

int StructKISS_Material_ConversionMarshal::getKISSMaterials(const KorString& material, int application,
                                                            StructKISS_Material_Conversion& record)
{
    return recordThat(
        [&](const StructKISS_Material_Conversion& row) {
            return row.application == application && row.runName == material;
        },
        record);
}

int StructSDNF_Profile_ConversionMarshal::getSDNFProfiles(const KorString& section, int application,
                                                          StructSDNF_Profile_Conversion& record)
{
    return recordThat(
        [&](const StructSDNF_Profile_Conversion& row) {
            return row.application == application && row.runName == section;
        },
        record);
}

int StructSDNF_Profile_ConversionMarshal::getHSProfiles(const KorString& sdnfSection,
                                                        StructSDNF_Profile_Conversion& record)
{
    return recordWith<&StructSDNF_Profile_Conversion::sdnfSection>(sdnfSection, record);
}

int StructSDNF_Profile_DefinitionMarshal::getClassRotation(const KorString& profileClass, int application,
                                                           int objectType, StructSDNF_Profile_Definition& record)
{
    return recordThat(
        [&](const StructSDNF_Profile_Definition& row) {
            return row.application == application && row.objectType == objectType && row.runName == profileClass;
        },
        record);
}

int StructCIS2_Bolt_ConversionMarshal::getCIS2Standards(const KorString& standard, int application,
                                                        StructCIS2_Bolt_Conversion& record)
{
    return recordThat(
        [&](const StructCIS2_Bolt_Conversion& row) {
            return row.application == application && row.runName == standard;
        },
        record);
}

int StructCIS2_Bolt_ConversionMarshal::getKRStandards(const KorString& cis2Standard,
                                                      StructCIS2_Bolt_Conversion& record)
{
    return recordWith<&StructCIS2_Bolt_Conversion::cis2Standard>(cis2Standard, record);
}

constinit const Family records::formatRecords =
    family<StructKISS_Application, StructKISS_Profile_Conversion, StructKISS_Material_Conversion,
           StructKISSPlate_Material, StructSDNF_Profile_Conversion, StructSDNF_Profile_Definition,
           StructCIS2_Bolt_Conversion>;
