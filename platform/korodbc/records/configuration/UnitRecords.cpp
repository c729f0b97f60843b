#include <korodbc/records/configuration/UnitRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

#include <algorithm>

using namespace records;

namespace {

constexpr DataSources inUnits{KorDSNDefinitions::kUnits};

template <UnitKind Kind>
const RecordDescription& unitsOf()
{
    using R = StructUnitsOf<Kind>;
    return described([] {
        return describe<R>(describedBy(Kind).record,
                           describedBy(Kind).table,
                           inUnits,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::symbol>("Symbol"),
                           column<&R::factor>("Factor"),
                           lookup<&R::precision, StructUnits>("Precision"),
                           column<&R::unitSystem>("UnitSystem"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

} // namespace

template <>
const RecordDescription& descriptionOf<StructUnitsOfDistance>()
{
    return unitsOf<UnitKind::Distance>();
}
template <>
const RecordDescription& descriptionOf<StructUnitsOfAngle>()
{
    return unitsOf<UnitKind::Angle>();
}
template <>
const RecordDescription& descriptionOf<StructUnitsOfWeight>()
{
    return unitsOf<UnitKind::Weight>();
}
template <>
const RecordDescription& descriptionOf<StructUnitsOfArea>()
{
    return unitsOf<UnitKind::Area>();
}
template <>
const RecordDescription& descriptionOf<StructUnitsOfStress>()
{
    return unitsOf<UnitKind::Stress>();
}
template <>
const RecordDescription& descriptionOf<StructUnitsOfForce>()
{
    return unitsOf<UnitKind::Force>();
}
template <>
const RecordDescription& descriptionOf<StructUnitsOfWeightPerDistance>()
{
    return unitsOf<UnitKind::WeightPerDistance>();
}
template <>
const RecordDescription& descriptionOf<StructUnitsOfAreaPerDistance>()
{
    return unitsOf<UnitKind::AreaPerDistance>();
}
template <>
const RecordDescription& descriptionOf<StructUnitsOfMoment>()
{
    return unitsOf<UnitKind::Moment>();
}
template <>
const RecordDescription& descriptionOf<StructUnitsOfSectionModulus>()
{
    return unitsOf<UnitKind::SectionModulus>();
}
template <>
const RecordDescription& descriptionOf<StructUnitsOfMomentOfInertia>()
{
    return unitsOf<UnitKind::MomentOfInertia>();
}
template <>
const RecordDescription& descriptionOf<StructUnitsOfVolume>()
{
    return unitsOf<UnitKind::Volume>();
}
template <>
const RecordDescription& descriptionOf<StructUnitsOfDensity>()
{
    return unitsOf<UnitKind::Density>();
}

template <>
const RecordDescription& descriptionOf<StructUnitsType>()
{
    using R = StructUnitsType;
    return described([] {
        return describe<R>("StructUnitsType",
                           "UnitsType",
                           inUnits,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::unitKind>("UnitKind"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructUnits>()
{
    using R = StructUnits;
    return described([] {
        return describe<R>("StructUnits",
                           "Units",
                           inUnits,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::unitType, StructUnitsType>("UnitType"),
                           column<&R::denominator>("Denominator"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

namespace {

/// Run names in sort order; equal ones stay in table order.
template <class T>
int sortedNames(KorArray<T>& records, KorArray<KorString>& names)
{
    std::ranges::stable_sort(records, {}, &T::sortOrder);
    names.removeAll();
    for (const T& record : records)
        names.append(record.runName);
    return 1;
}

} // namespace

int StructUnitsTypeMarshal::getRunNameListOfKind(long kind, KorArray<KorString>& names)
{
    KorArray<StructUnitsType> types;
    const int result = recordsThat(
        [&](const StructUnitsType& type) { return type.unitKind == -1 || type.unitKind == kind; }, types);
    return result == 1 ? sortedNames(types, names) : result;
}

int StructUnitsMarshal::getStructByRunNameAndType(const KorString& runName, long unitType, StructUnits& record)
{
    return recordThat(
        [&](const StructUnits& candidate) {
            return candidate.unitType == unitType && candidate.runName == runName;
        },
        record);
}

int StructUnitsMarshal::getRunNameListOfType(long unitType, KorArray<KorString>& names)
{
    KorArray<StructUnits> precisions;
    const int result = recordsWith<&StructUnits::unitType>(unitType, precisions);
    return result == 1 ? sortedNames(precisions, names) : result;
}

std::span<const DescriptionFunction> records::unitRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructUnitsOfDistance>,
                                                   descriptionOf<StructUnitsOfAngle>,
                                                   descriptionOf<StructUnitsOfWeight>,
                                                   descriptionOf<StructUnitsOfArea>,
                                                   descriptionOf<StructUnitsOfStress>,
                                                   descriptionOf<StructUnitsOfForce>,
                                                   descriptionOf<StructUnitsOfWeightPerDistance>,
                                                   descriptionOf<StructUnitsOfAreaPerDistance>,
                                                   descriptionOf<StructUnitsOfMoment>,
                                                   descriptionOf<StructUnitsOfSectionModulus>,
                                                   descriptionOf<StructUnitsOfMomentOfInertia>,
                                                   descriptionOf<StructUnitsOfVolume>,
                                                   descriptionOf<StructUnitsOfDensity>,
                                                   descriptionOf<StructUnitsType>,
                                                   descriptionOf<StructUnits>};
    return list;
}
