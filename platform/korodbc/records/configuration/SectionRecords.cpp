#include <korodbc/records/configuration/SectionRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructProfileClass> R>
constexpr Entry listOf<R>[] = {
    table("ProfileMasterTable", DataSources{KorDSNDefinitions::kProfiles}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::typeName, "TypeName"),
    column(&R::material, "Material"),
    column(&R::tableName, "TableName"),
    column(&R::subtypeName, "SubtypeName"),
    column(&R::standard, "Standard"),
    column(&R::shape, "Shape"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructSection> R>
constexpr Entry listOf<R>[] = {
    table("Profiles_IPE", DataSources{KorDSNDefinitions::kProfiles}),
    key(&R::key, "Key"),
    runName(&R::sectionName, "SectionName"),
    column(&R::height, "h"),
    column(&R::width, "b"),
    column(&R::webThickness, "tw"),
    column(&R::flangeThickness, "tf"),
    column(&R::radius, "r"),
    column(&R::area, "Area"),
    column(&R::mass, "Mass"),
    column(&R::alpha, "Alpha"),
    column(&R::inertiaY, "Iy"),
    column(&R::inertiaZ, "Iz"),
    column(&R::elasticModulusY, "Wely"),
    column(&R::elasticModulusZ, "Welz"),
    column(&R::plasticModulusY, "Wply"),
    column(&R::plasticModulusZ, "Wplz"),
    column(&R::radiusY, "RadiusY"),
    column(&R::radiusZ, "RadiusZ"),
    column(&R::torsionConstant, "It"),
    column(&R::warpingConstant, "Iw"),
};

template <std::same_as<StructProfileSubtype> R>
constexpr Entry listOf<R>[] = {
    table("ProfileSubtypes", DataSources{KorDSNDefinitions::kProfiles}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::shape, "Shape"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructCompoundMaster> R>
constexpr Entry listOf<R>[] = {
    table("CompoundMasterTable", DataSources{KorDSNDefinitions::kUserSections}),
    key(&R::key, "Key"),
    runName(&R::compoundClass, "CompoundClass"),
    column(&R::compoundClassName, "CompoundClassName"),
    column(&R::compoundTable, "CompoundTable"),
    owner(&R::ownerText, "OwnerText"),
};

int StructProfileClassMarshal::getStructByTableName(const KorString& tableName, StructProfileClass& record)
{
    return recordWith<&StructProfileClass::tableName>(tableName, record);
}

constinit const Family records::sectionRecords =
    family<StructProfileClass, StructSection, StructProfileSubtype, StructCompoundMaster>;
