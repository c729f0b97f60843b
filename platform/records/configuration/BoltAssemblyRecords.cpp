#include "records/configuration/BoltAssemblyRecords.h"

#include "records/configuration/BoltRecords.h"
#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

#include <algorithm>
#include <cmath>
#include <set>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructTools>()
{
    using R = StructTools;
    return described([] {
        return describe<R>("StructTools",
                           "Tools",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::diameter>("Diameter"),
                           column<&R::acrossFlats>("AcrossFlats"),
                           column<&R::outerDiameter>("OuterDiameter"),
                           column<&R::height>("Height"),
                           column<&R::clearance>("Clearance"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructScrewHoleLocation>()
{
    using R = StructScrewHoleLocation;
    return described([] {
        return describe<R>("StructScrewHoleLocation",
                           "ScrewHoleLocation",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructScrewHoleType>()
{
    using R = StructScrewHoleType;
    return described([] {
        return describe<R>("StructScrewHoleType",
                           "ScrewHoleType",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::slotted>("Slotted"),
                           column<&R::threaded>("Threaded"),
                           column<&R::countersunk>("Countersunk"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructSetBolts>()
{
    using R = StructSetBolts;
    return described([] {
        return describe<R>("StructSetBolts",
                           "SetBolts",
                           inConfiguration,
                           key<&R::key>("Key"),
                           lookup<&R::standard, StructStandard>("Standard"),
                           lookup<&R::boltSet, StructSet>("BoltSet"),
                           column<&R::diameter>("Diameter"),
                           column<&R::length>("Length"),
                           column<&R::minimumGrip>("MinimumGrip"),
                           column<&R::maximumGrip>("MaximumGrip"),
                           column<&R::mass>("Mass"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

int StructToolsMarshal::getByDiameter(double diameter, StructTools& record)
{
    return recordThat([=](const StructTools& tool) { return std::abs(tool.diameter - diameter) <= 1e-6; }, record);
}

int StructSetBoltsMarshal::getByKeyAllSources(const KorString& standard, const KorString& set, double diameter,
                                              double length, StructSetBolts& record)
{
    StructStandard standardRow;
    StructSet setRow;
    if (StructStandardMarshal::getStructByRunNameAllSources(standard, standardRow) != 1 ||
        StructSetMarshal::getStructByRunNameAllSources(set, setRow) != 1)
        return 0;
    return recordThat(
        [&](const StructSetBolts& assembly) {
            return assembly.standard == standardRow.key && assembly.boltSet == setRow.key &&
                   std::abs(assembly.diameter - diameter) <= 1e-6 && std::abs(assembly.length - length) <= 1e-6;
        },
        record,
        RecordAccess::Sources::All);
}

int StructSetBoltsMarshal::getDiameters(const KorString& standard, const KorString& set,
                                        KorArray<double>& diameters)
{
    const int wantedStandard = keyOf<StructStandard>(standard), wantedSet = keyOf<StructSet>(set);
    std::set<double> found;
    visit([&](const StructSetBolts& assembly) {
        if (assembly.standard == wantedStandard && assembly.boltSet == wantedSet)
            found.insert(assembly.diameter);
        return true;
    });
    if (found.empty())
        return 0;
    diameters.removeAll();
    for (const double diameter : found)
        diameters.append(diameter);
    return 1;
}

int StructSetBoltsMarshal::getDiameterList(const KorString& standard, const KorString& set,
                                           KorArray<KorString>& names)
{
    KorArray<double> found;
    KorArray<StructScrewDiameter> diameters;
    const int result = getDiameters(standard, set, found);
    if (result != 1)
        return result;
    if (StructScrewDiameterMarshal::getTable(diameters) != 1)
        return 0;
    std::stable_sort(diameters.begin(), diameters.end(), [](const auto& a, const auto& b) {
        return a.sortOrder < b.sortOrder;
    });
    names.removeAll();
    for (const StructScrewDiameter& diameter : diameters)
        if (std::find(found.begin(), found.end(), diameter.diameter) != found.end())
            names.append(diameter.runName);
    return 1;
}

std::span<const DescriptionFunction> records::boltAssemblyRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructTools>,
                                                   descriptionOf<StructScrewHoleLocation>,
                                                   descriptionOf<StructScrewHoleType>,
                                                   descriptionOf<StructSetBolts>};
    return list;
}
