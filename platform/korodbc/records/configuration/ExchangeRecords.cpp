#include <korodbc/records/configuration/ExchangeRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/NamedRows.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDSTVNames>()
{
    using R = StructDSTVNames;
    return described([] {
        return describe<R>("StructDSTVNames",
                           "DSTVNames",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::description>("Description"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDSTVStaticInB01>()
{
    using R = StructDSTVStaticInB01;
    return described([] {
        return describe<R>("StructDSTVStaticInB01",
                           "DSTV_Static_In_B01",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::startNode>("StartNode"),
                           column<&R::endNode>("EndNode"),
                           column<&R::profileNumber>("ProfileNumber"),
                           column<&R::material>("Material"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDSTVStaticInB02>()
{
    using R = StructDSTVStaticInB02;
    return described([] {
        return describe<R>("StructDSTVStaticInB02",
                           "DSTV_Static_In_B02",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::x>("X"),
                           column<&R::y>("Y"),
                           column<&R::z>("Z"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDSTVStaticInB03>()
{
    using R = StructDSTVStaticInB03;
    return described([] {
        return describe<R>("StructDSTVStaticInB03",
                           "DSTV_Static_In_B03",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::objectNumber>("ObjectNumber"),
                           column<&R::profileName>("ProfileName"),
                           column<&R::referenceAxis>("ReferenceAxis"),
                           column<&R::rotation>("Rotation"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDSTVStaticInB04>()
{
    using R = StructDSTVStaticInB04;
    return described([] {
        return describe<R>("StructDSTVStaticInB04",
                           "DSTV_Static_In_B04",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::objectNumber>("ObjectNumber"),
                           column<&R::propertyName>("PropertyName"),
                           column<&R::value>("Value"));
    });
}

template <>
const RecordDescription& descriptionOf<StructBeamType>()
{
    return namedRows<StructBeamType>("StructBeamType", "BeamType");
}

template <>
const RecordDescription& descriptionOf<StructNecessaryViewsConfiguration>()
{
    using R = StructNecessaryViewsConfiguration;
    return described([] {
        return describe<R>(
            "StructNecessaryViewsConfiguration",
            "NecessaryViewsConfiguration",
            inDetails,
            key<&R::key>("Key"),
            runName<&R::runName>("RunName"),
            column<&R::viewType>("ViewType"),
            lookup<&R::beamType, StructBeamType>("BeamType"),
            column<&R::notBeamType>("NOTBeamType"),
            column<&R::detObjQualifierSet>("DetObjQualifierSet").names<StructDetObjQualifierSet>().noneAllowed(),
            column<&R::notDetObjQualifierSet>("NOTDetObjQualifierSet"),
            column<&R::rule>("Rule"),
            owner<&R::ownerText>("OwnerText"));
    });
}

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

std::span<const DescriptionFunction> records::exchangeRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructDSTVNames>,
                                                   descriptionOf<StructDSTVStaticInB01>,
                                                   descriptionOf<StructDSTVStaticInB02>,
                                                   descriptionOf<StructDSTVStaticInB03>,
                                                   descriptionOf<StructDSTVStaticInB04>,
                                                   descriptionOf<StructBeamType>,
                                                   descriptionOf<StructNecessaryViewsConfiguration>};
    return list;
}
