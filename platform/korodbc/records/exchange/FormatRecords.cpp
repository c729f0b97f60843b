#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/exchange/ConversionRecords.h>
#include <korodbc/records/exchange/FormatRecords.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructKISS_Application>()
{
    using R = StructKISS_Application;
    return described([] {
        return describe<R>("StructKISS_Application",
                           "KISS_Application",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructKISS_Profile_Conversion>()
{
    using R = StructKISS_Profile_Conversion;
    return described([] {
        return describe<R>("StructKISS_Profile_Conversion",
                           "KISS_Profile_Conversion",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::application>("Application").names<StructKISS_Application>(),
                           column<&R::kissShape>("KISSShape"),
                           column<&R::kissSection>("KISSSection"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructKISS_Material_Conversion>()
{
    using R = StructKISS_Material_Conversion;
    return described([] {
        return describe<R>("StructKISS_Material_Conversion",
                           "KISS_Material_Conversion",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::application>("Application").names<StructKISS_Application>(),
                           column<&R::kissMaterial>("KISSMaterial"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructKISSPlate_Material>()
{
    using R = StructKISSPlate_Material;
    return described([] {
        return describe<R>("StructKISSPlate_Material",
                           "KissPlateMaterial",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::kissShape>("KISSShape"),
                           column<&R::kissMaterial>("KISSMaterial"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructSDNF_Profile_Conversion>()
{
    using R = StructSDNF_Profile_Conversion;
    return described([] {
        return describe<R>("StructSDNF_Profile_Conversion",
                           "SDNF_Profile_Conversion",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::application>("Application").names<StructQXT_Application>(),
                           column<&R::sdnfClass>("SDNFClass"),
                           column<&R::sdnfSection>("SDNFSection"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructSDNF_Profile_Definition>()
{
    using R = StructSDNF_Profile_Definition;
    return described([] {
        return describe<R>("StructSDNF_Profile_Definition",
                           "SDNF_Profile_Definition",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::application>("Application").names<StructQXT_Application>(),
                           column<&R::objectType>("ObjectType").names<StructObject_Type>(),
                           column<&R::rotation>("Rotation"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructCIS2_Bolt_Conversion>()
{
    using R = StructCIS2_Bolt_Conversion;
    return described([] {
        return describe<R>("StructCIS2_Bolt_Conversion",
                           "CIS2_Bolt_Conversion",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::application>("Application").names<StructQXT_Application>(),
                           column<&R::cis2Standard>("CIS2Standard"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

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

std::span<const DescriptionFunction> records::formatRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructKISS_Application>,
                                                   descriptionOf<StructKISS_Profile_Conversion>,
                                                   descriptionOf<StructKISS_Material_Conversion>,
                                                   descriptionOf<StructKISSPlate_Material>,
                                                   descriptionOf<StructSDNF_Profile_Conversion>,
                                                   descriptionOf<StructSDNF_Profile_Definition>,
                                                   descriptionOf<StructCIS2_Bolt_Conversion>};
    return list;
}
