#include <korodbc/records/configuration/PresentationRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/exchange/ConversionRecords.h>
#include <korodbc/records/exchange/ProfileFamilyRecords.h>

using namespace records;

template <std::same_as<StructQXT_Application> R>
constexpr Entry listOf<R>[] = {
    table("QXT_Application", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::description, "Description"),
};

template <std::same_as<StructObject_Type> R>
constexpr Entry listOf<R>[] = {
    table("Object_Type", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructQXT_Profile_Conversion> R>
constexpr Entry listOf<R>[] = {
    table("QXT_Profile_Conversion", inConfiguration),
    key(&R::key, "Key"),
    column(&R::profileClass, "Class"),
    column(&R::section, "Section"),
    names<StructQXT_Application>(&R::application, "Application"),
    names<StructObject_Type>(&R::objectType, "ObjectType"),
    column(&R::qxtClass, "QXTClass"),
    column(&R::qxtSection, "QXTSection"),
    names<StructProfileFamily>(&R::family, "Family").noneAllowed(),
    names<StructSource>(&R::source, "Source").noneAllowed(),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructProfile_Exports_Conversion> R>
constexpr Entry listOf<R>[] = {
    table("Profile_Exports_Conversion", inConfiguration),
    key(&R::key, "Key"),
    column(&R::qxtClass, "QXTClass"),
    column(&R::qxtSection, "QXTSection"),
    names<StructQXT_Application>(&R::application, "Application"),
    names<StructObject_Type>(&R::objectType, "ObjectType"),
    column(&R::exportClass, "ExportClass"),
    column(&R::exportSection, "ExportSection"),
    names<StructProfileFamily>(&R::family, "Family").noneAllowed(),
    names<StructSource>(&R::source, "Source").noneAllowed(),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructQXT_Material_Conversion> R>
constexpr Entry listOf<R>[] = {
    table("QXT_Material_Conversion", inConfiguration),
    key(&R::key, "Key"),
    column(&R::material, "Material"),
    names<StructQXT_Application>(&R::application, "Application"),
    column(&R::qxtMaterial, "QXTMaterial"),
    owner(&R::ownerText, "OwnerText"),
};

int StructQXT_Material_ConversionMarshal::getQXTMaterials(const KorString& material, int application,
                                                          StructQXT_Material_Conversion& record)
{
    return recordThat(
        [&](const StructQXT_Material_Conversion& row) {
            return row.application == application && row.material == material;
        },
        record);
}

int StructQXT_Material_ConversionMarshal::getAppMaterials(int application, const KorString& qxtMaterial,
                                                          StructQXT_Material_Conversion& record)
{
    return recordThat(
        [&](const StructQXT_Material_Conversion& row) {
            return row.application == application && row.qxtMaterial == qxtMaterial;
        },
        record);
}

constinit const Family records::conversionRecords =
    family<StructQXT_Application, StructObject_Type, StructQXT_Profile_Conversion,
           StructProfile_Exports_Conversion, StructQXT_Material_Conversion>;
