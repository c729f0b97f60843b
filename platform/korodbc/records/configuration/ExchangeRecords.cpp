#include <korodbc/records/configuration/ExchangeRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailObjectRecords.h>

using namespace records;

template <std::same_as<StructDSTVNames> R>
constexpr Entry listOf<R>[] = {
    table("DSTVNames", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::description, "Description"),
};

template <std::same_as<StructDSTVStaticInB01> R>
constexpr Entry listOf<R>[] = {
    table("DSTV_Static_In_B01", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::startNode, "StartNode"),
    column(&R::endNode, "EndNode"),
    column(&R::profileNumber, "ProfileNumber"),
    column(&R::material, "Material"),
};

template <std::same_as<StructDSTVStaticInB02> R>
constexpr Entry listOf<R>[] = {
    table("DSTV_Static_In_B02", inConfiguration),
    key(&R::key, "Key"),
    column(&R::x, "X"),
    column(&R::y, "Y"),
    column(&R::z, "Z"),
};

template <std::same_as<StructDSTVStaticInB03> R>
constexpr Entry listOf<R>[] = {
    table("DSTV_Static_In_B03", inConfiguration),
    key(&R::key, "Key"),
    column(&R::objectNumber, "ObjectNumber"),
    column(&R::profileName, "ProfileName"),
    column(&R::referenceAxis, "ReferenceAxis"),
    column(&R::rotation, "Rotation"),
};

template <std::same_as<StructDSTVStaticInB04> R>
constexpr Entry listOf<R>[] = {
    table("DSTV_Static_In_B04", inConfiguration),
    key(&R::key, "Key"),
    column(&R::objectNumber, "ObjectNumber"),
    column(&R::propertyName, "PropertyName"),
    column(&R::value, "Value"),
};

template <std::same_as<StructBeamType> R>
constexpr Entry listOf<R>[] = {
    table("BeamType", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructNecessaryViewsConfiguration> R>
constexpr Entry listOf<R>[] = {
    table("NecessaryViewsConfiguration", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::viewType, "ViewType"),
    lookup<StructBeamType>(&R::beamType, "BeamType"),
    column(&R::notBeamType, "NOTBeamType"),
    names<StructDetObjQualifierSet>(&R::detObjQualifierSet, "DetObjQualifierSet").noneAllowed(),
    column(&R::notDetObjQualifierSet, "NOTDetObjQualifierSet"),
    column(&R::rule, "Rule"),
    owner(&R::ownerText, "OwnerText"),
};

int StructDSTVStaticInB01Marshal::getNumberOfObjects(long& number)
{
    long count = 0;
    const int result = visit([&](const StructDSTVStaticInB01&) { return ++count > 0; });
    if (result == 1)
        number = count;
    return result;
}

int StructDSTVStaticInB03Marshal::getProfile(long objectNumber, KorString& profileName,
                                             StructDSTVStaticInB03::eReferenceAxis& referenceAxis)
{
    StructDSTVStaticInB03 profile;
    const int result = recordWith<&StructDSTVStaticInB03::objectNumber>(objectNumber, profile);
    if (result == 1) {
        profileName = profile.profileName;
        referenceAxis = profile.referenceAxis == StructDSTVStaticInB03::kWeakAxis
                            ? StructDSTVStaticInB03::kWeakAxis
                            : StructDSTVStaticInB03::kStrongAxis;
    }
    return result;
}

int StructDSTVStaticInB04Marshal::getObjectProperty(long objectNumber, const KorString& propertyName,
                                                    KorString& value)
{
    StructDSTVStaticInB04 property;
    const int result = recordThat(
        [&](const StructDSTVStaticInB04& row) {
            return row.objectNumber == objectNumber && row.propertyName == propertyName;
        },
        property);
    if (result == 1)
        value = property.value;
    return result;
}

constinit const Family records::exchangeRecords =
    family<StructDSTVNames, StructDSTVStaticInB01, StructDSTVStaticInB02, StructDSTVStaticInB03,
           StructDSTVStaticInB04, StructBeamType, StructNecessaryViewsConfiguration>;
