#include "records/configuration/SectionRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructProfileClass>()
{
    using R = StructProfileClass;
    static constexpr auto list = describe<R>("StructProfileClass",
                                             "ProfileMasterTable",
                                             DataSources{KorDSNDefinitions::kProfiles},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::typeName>("TypeName"),
                                             column<&R::material>("Material"),
                                             column<&R::tableName>("TableName"),
                                             column<&R::subtypeName>("SubtypeName"),
                                             column<&R::standard>("Standard"),
                                             column<&R::shape>("Shape"),
                                             sortOrder<&R::sortOrder>("SortOrder"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructSection>()
{
    using R = StructSection;
    static constexpr auto list = describe<R>("StructSection",
                                             "Profiles_IPE",
                                             DataSources{KorDSNDefinitions::kProfiles},
                                             key<&R::key>("Key"),
                                             runName<&R::sectionName>("SectionName"),
                                             column<&R::height>("h"),
                                             column<&R::width>("b"),
                                             column<&R::webThickness>("tw"),
                                             column<&R::flangeThickness>("tf"),
                                             column<&R::radius>("r"),
                                             column<&R::area>("Area"),
                                             column<&R::mass>("Mass"),
                                             column<&R::alpha>("Alpha"),
                                             column<&R::inertiaY>("Iy"),
                                             column<&R::inertiaZ>("Iz"),
                                             column<&R::elasticModulusY>("Wely"),
                                             column<&R::elasticModulusZ>("Welz"),
                                             column<&R::plasticModulusY>("Wply"),
                                             column<&R::plasticModulusZ>("Wplz"),
                                             column<&R::radiusY>("RadiusY"),
                                             column<&R::radiusZ>("RadiusZ"),
                                             column<&R::torsionConstant>("It"),
                                             column<&R::warpingConstant>("Iw"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructProfileSubtype>()
{
    using R = StructProfileSubtype;
    static constexpr auto list = describe<R>("StructProfileSubtype",
                                             "ProfileSubtypes",
                                             DataSources{KorDSNDefinitions::kProfiles},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::shape>("Shape"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructCompoundMaster>()
{
    using R = StructCompoundMaster;
    static constexpr auto list = describe<R>("StructCompoundMaster",
                                             "CompoundMasterTable",
                                             DataSources{KorDSNDefinitions::kUserSections},
                                             key<&R::key>("Key"),
                                             runName<&R::compoundClass>("CompoundClass"),
                                             column<&R::compoundClassName>("CompoundClassName"),
                                             column<&R::compoundTable>("CompoundTable"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

int StructProfileClassMarshal::getStructByTableName(const KorString& tableName, StructProfileClass& record)
{
    return recordWith<&StructProfileClass::tableName>(tableName, record);
}

std::span<const DescriptionFunction> records::sectionRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructProfileClass>,
                                                   descriptionOf<StructSection>,
                                                   descriptionOf<StructProfileSubtype>,
                                                   descriptionOf<StructCompoundMaster>};
    return list;
}
