#include <korodbc/records/configuration/UnitRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

#include <algorithm>

using namespace records;

static constexpr DataSources inUnits{KorDSNDefinitions::kUnits};

template <UnitKind Kind>
constexpr Entry listOf<StructUnitsOf<Kind>>[] = {
    table(describedBy(Kind).table, inUnits, describedBy(Kind).record),
    key(&StructUnitsOf<Kind>::key, "Key"),
    runName(&StructUnitsOf<Kind>::runName, "RunName"),
    column(&StructUnitsOf<Kind>::symbol, "Symbol"),
    column(&StructUnitsOf<Kind>::factor, "Factor"),
    lookup<StructUnits>(&StructUnitsOf<Kind>::precision, "Precision"),
    column(&StructUnitsOf<Kind>::unitSystem, "UnitSystem"),
    sortOrder(&StructUnitsOf<Kind>::sortOrder, "SortOrder"),
    owner(&StructUnitsOf<Kind>::ownerText, "OwnerText"),
};

template <std::same_as<StructUnitsType> R>
constexpr Entry listOf<R>[] = {
    table("UnitsType", inUnits),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::unitKind, "UnitKind"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructUnits> R>
constexpr Entry listOf<R>[] = {
    table("Units", inUnits),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructUnitsType>(&R::unitType, "UnitType"),
    column(&R::denominator, "Denominator"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

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

constinit const Family records::unitRecords =
    family<StructUnitsOfDistance, StructUnitsOfAngle, StructUnitsOfWeight, StructUnitsOfArea, StructUnitsOfStress,
           StructUnitsOfForce, StructUnitsOfWeightPerDistance, StructUnitsOfAreaPerDistance, StructUnitsOfMoment,
           StructUnitsOfSectionModulus, StructUnitsOfMomentOfInertia, StructUnitsOfVolume, StructUnitsOfDensity,
           StructUnitsType, StructUnits>;
