#include <korodbc/records/configuration/BoltRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

#include <cmath>

using namespace records;

template <std::same_as<StructScrewType> R>
constexpr Entry listOf<R>[] = {
    table("ScrewTypes", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::headForm, "HeadForm"),
    column(&R::fullThread, "FullThread"),
};

template <std::same_as<StructStandard> R>
constexpr Entry listOf<R>[] = {
    table("Standard", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructScrewType>(&R::screwType, "ScrewType"),
    column(&R::description, "Description"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructStandardNuts> R>
constexpr Entry listOf<R>[] = {
    table("StandardNuts", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::component, "Component"),
    column(&R::strengthClass, "StrengthClass"),
    column(&R::description, "Description"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructStrengthClass> R>
constexpr Entry listOf<R>[] = {
    table("StrengthClass", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::yieldStrength, "YieldStrength"),
    column(&R::tensileStrength, "TensileStrength"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructSet> R>
constexpr Entry listOf<R>[] = {
    table("Sets", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::nuts, "Nuts"),
    column(&R::headWashers, "HeadWashers"),
    column(&R::nutWashers, "NutWashers"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructScrewDiameter> R>
constexpr Entry listOf<R>[] = {
    table("BoltsDiameters", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::diameter, "Diameter"),
    column(&R::holeDiameter, "HoleDiameter"),
    column(&R::shankArea, "ShankArea"),
    column(&R::stressArea, "StressArea"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructScrew> R>
constexpr Entry listOf<R>[] = {
    table("ScrewNew", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructStandard>(&R::standard, "Standard"),
    lookup<StructStrengthClass>(&R::strengthClass, "StrengthClass"),
    lookup<StructSet>(&R::boltSet, "BoltSet"),
    column(&R::diameter, "Diameter"),
    column(&R::headHeight, "HeadHeight"),
    column(&R::acrossFlats, "AcrossFlats"),
    column(&R::pitch, "Pitch"),
    column(&R::minimumLength, "MinimumLength"),
    column(&R::maximumLength, "MaximumLength"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructSetNutsBolts> R>
constexpr Entry listOf<R>[] = {
    table("SetNutsBolts", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructSet>(&R::boltSet, "BoltSet"),
    lookup<StructStandardNuts>(&R::standard, "Standard"),
    column(&R::position, "Position"),
    column(&R::quantity, "Quantity"),
    column(&R::headSide, "HeadSide"),
    column(&R::diameter, "Diameter"),
    column(&R::height, "Height"),
    column(&R::outerDiameter, "OuterDiameter"),
    column(&R::holeDiameter, "HoleDiameter"),
};

template <std::same_as<StructScrewCoating> R>
constexpr Entry listOf<R>[] = {
    table("BoltsCoating", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::thickness, "Thickness"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructSetOfBolts> R>
constexpr Entry listOf<R>[] = {
    table("SetOfBolts", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructStandard>(&R::standard, "Standard"),
    lookup<StructStrengthClass>(&R::strengthClass, "StrengthClass"),
    lookup<StructSet>(&R::boltSet, "BoltSet"),
    lookup<StructScrewCoating>(&R::coating, "Coating").noneAllowed(),
    owner(&R::ownerText, "OwnerText"),
};

int StructScrewMarshal::getByKeyAllSources(const KorString& standard, const KorString& strengthClass,
                                           const KorString& set, double diameter, StructScrew& record)
{
    const auto matchesHere = [&] {
        const int wantedStandard = keyOf<StructStandard>(standard);
        const int wantedClass = keyOf<StructStrengthClass>(strengthClass), wantedSet = keyOf<StructSet>(set);
        return [=](const StructScrew& screw) {
            return screw.standard == wantedStandard && screw.strengthClass == wantedClass &&
                   screw.boltSet == wantedSet && std::abs(screw.diameter - diameter) <= 1e-6;
        };
    };
    return recordThatInAllSources(matchesHere, record);
}

int StructSetOfBoltsMarshal::getStrengthClassList(const KorString& standard, KorArray<KorString>& names)
{
    KorArray<KorString> found;
    eachSource([&] {
        const int wanted = keyOf<StructStandard>(standard);
        addNamesReferredTo<&StructSetOfBolts::strengthClass, StructStrengthClass>(
            [=](const StructSetOfBolts& row) { return row.standard == wanted; }, found);
        return true;
    });
    return foundAny(found, names);
}

int StructSetOfBoltsMarshal::getSetList(const KorString& standard, const KorString& strengthClass,
                                        KorArray<KorString>& names)
{
    KorArray<KorString> found;
    eachSource([&] {
        const int wantedStandard = keyOf<StructStandard>(standard);
        const int wantedClass = keyOf<StructStrengthClass>(strengthClass);
        addNamesReferredTo<&StructSetOfBolts::boltSet, StructSet>(
            [=](const StructSetOfBolts& row) {
                return row.standard == wantedStandard && row.strengthClass == wantedClass;
            },
            found);
        return true;
    });
    return foundAny(found, names);
}

constinit const Family records::boltRecords =
    family<StructScrewType, StructStandard, StructStandardNuts, StructStrengthClass, StructSet,
           StructScrewDiameter, StructScrew, StructSetNutsBolts, StructScrewCoating, StructSetOfBolts>;
