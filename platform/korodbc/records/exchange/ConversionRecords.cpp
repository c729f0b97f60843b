#include <korodbc/records/configuration/PresentationRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/exchange/ConversionRecords.h>
#include <korodbc/records/exchange/ProfileFamilyRecords.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructQXT_Application>()
{
    using R = StructQXT_Application;
    return described([] {
        return describe<R>("StructQXT_Application",
                           "QXT_Application",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::description>("Description"));
    });
}

template <>
const RecordDescription& descriptionOf<StructObject_Type>()
{
    using R = StructObject_Type;
    return described([] {
        return describe<R>("StructObject_Type",
                           "Object_Type",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructQXT_Profile_Conversion>()
{
    using R = StructQXT_Profile_Conversion;
    return described([] {
        return describe<R>("StructQXT_Profile_Conversion",
                           "QXT_Profile_Conversion",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::profileClass>("Class"),
                           column<&R::section>("Section"),
                           column<&R::application>("Application").names<StructQXT_Application>(),
                           column<&R::objectType>("ObjectType").names<StructObject_Type>(),
                           column<&R::qxtClass>("QXTClass"),
                           column<&R::qxtSection>("QXTSection"),
                           column<&R::family>("Family").names<StructProfileFamily>().noneAllowed(),
                           column<&R::source>("Source").names<StructSource>().noneAllowed(),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructProfile_Exports_Conversion>()
{
    using R = StructProfile_Exports_Conversion;
    return described([] {
        return describe<R>("StructProfile_Exports_Conversion",
                           "Profile_Exports_Conversion",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::qxtClass>("QXTClass"),
                           column<&R::qxtSection>("QXTSection"),
                           column<&R::application>("Application").names<StructQXT_Application>(),
                           column<&R::objectType>("ObjectType").names<StructObject_Type>(),
                           column<&R::exportClass>("ExportClass"),
                           column<&R::exportSection>("ExportSection"),
                           column<&R::family>("Family").names<StructProfileFamily>().noneAllowed(),
                           column<&R::source>("Source").names<StructSource>().noneAllowed(),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructQXT_Material_Conversion>()
{
    using R = StructQXT_Material_Conversion;
    return described([] {
        return describe<R>("StructQXT_Material_Conversion",
                           "QXT_Material_Conversion",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::material>("Material"),
                           column<&R::application>("Application").names<StructQXT_Application>(),
                           column<&R::qxtMaterial>("QXTMaterial"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

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

std::span<const DescriptionFunction> records::conversionRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructQXT_Application>,
                                                   descriptionOf<StructObject_Type>,
                                                   descriptionOf<StructQXT_Profile_Conversion>,
                                                   descriptionOf<StructProfile_Exports_Conversion>,
                                                   descriptionOf<StructQXT_Material_Conversion>};
    return list;
}
