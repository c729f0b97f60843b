#include <korodbc/records/configuration/BoltAssemblyRecords.h>
#include <korodbc/records/configuration/BoltRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

#include <algorithm>
#include <cmath>
#include <set>

using namespace records;

template <std::same_as<StructTools> R>
constexpr Entry listOf<R>[] = {
    table("Tools", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::diameter, "Diameter"),
    column(&R::acrossFlats, "AcrossFlats"),
    column(&R::outerDiameter, "OuterDiameter"),
    column(&R::height, "Height"),
    column(&R::clearance, "Clearance"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructScrewHoleLocation> R>
constexpr Entry listOf<R>[] = {
    table("ScrewHoleLocation", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructScrewHoleType> R>
constexpr Entry listOf<R>[] = {
    table("ScrewHoleType", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::slotted, "Slotted"),
    column(&R::threaded, "Threaded"),
    column(&R::countersunk, "Countersunk"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructSetBolts> R>
constexpr Entry listOf<R>[] = {
    table("SetBolts", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructStandard>(&R::standard, "Standard"),
    lookup<StructSet>(&R::boltSet, "BoltSet"),
    column(&R::diameter, "Diameter"),
    column(&R::length, "Length"),
    column(&R::minimumGrip, "MinimumGrip"),
    column(&R::maximumGrip, "MaximumGrip"),
    column(&R::mass, "Mass"),
    owner(&R::ownerText, "OwnerText"),
};

int StructToolsMarshal::getByDiameter(double diameter, StructTools& record)
{
    return recordThat([=](const StructTools& tool) { return std::abs(tool.diameter - diameter) <= 1e-6; }, record);
}

int StructSetBoltsMarshal::getByKeyAllSources(const KorString& standard, const KorString& set, double diameter,
                                              double length, StructSetBolts& record)
{
    const auto matchesHere = [&] {
        const int wantedStandard = keyOf<StructStandard>(standard), wantedSet = keyOf<StructSet>(set);
        return [=](const StructSetBolts& assembly) {
            return assembly.standard == wantedStandard && assembly.boltSet == wantedSet &&
                   std::abs(assembly.diameter - diameter) <= 1e-6 && std::abs(assembly.length - length) <= 1e-6;
        };
    };
    return recordThatInAllSources(matchesHere, record);
}

void StructSetBoltsMarshal::addDiameters(const KorString& standard, const KorString& set,
                                         std::set<double>& diameters)
{
    const int wantedStandard = keyOf<StructStandard>(standard), wantedSet = keyOf<StructSet>(set);
    visit([&](const StructSetBolts& assembly) {
        if (assembly.standard == wantedStandard && assembly.boltSet == wantedSet)
            diameters.insert(assembly.diameter);
        return true;
    });
}

int StructSetBoltsMarshal::getDiameters(const KorString& standard, const KorString& set,
                                        KorArray<double>& diameters)
{
    std::set<double> sorted;
    eachSource([&] {
        addDiameters(standard, set, sorted);
        return true;
    });
    KorArray<double> found;
    for (const double diameter : sorted)
        found.append(diameter);
    return foundAny(found, diameters);
}

int StructSetBoltsMarshal::getDiameterList(const KorString& standard, const KorString& set,
                                           KorArray<KorString>& names)
{
    KorArray<KorString> found;
    eachSource([&] {
        std::set<double> wanted;
        addDiameters(standard, set, wanted);
        KorArray<StructScrewDiameter> diameters;
        if (!wanted.empty())
            RecordAccess::readTable(
                descriptionOf<StructScrewDiameter>(), &diameters, RecordAccess::Sources::CurrentElseHome);
        std::stable_sort(diameters.begin(), diameters.end(), [](const auto& a, const auto& b) {
            return a.sortOrder < b.sortOrder;
        });
        KorArray<KorString> here;
        for (const StructScrewDiameter& diameter : diameters)
            if (wanted.contains(diameter.diameter))
                here.append(diameter.runName);
        addNames(here, found);
        return true;
    });
    return foundAny(found, names);
}

constinit const Family records::boltAssemblyRecords =
    family<StructTools, StructScrewHoleLocation, StructScrewHoleType, StructSetBolts>;
