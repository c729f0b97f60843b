#include <korodbc/records/configuration/BoltRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

#include <cmath>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructScrewType>()
{
    using R = StructScrewType;
    return described([] {
        return describe<R>("StructScrewType",
                           "ScrewTypes",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::headForm>("HeadForm"),
                           column<&R::fullThread>("FullThread"));
    });
}

template <>
const RecordDescription& descriptionOf<StructStandard>()
{
    using R = StructStandard;
    return described([] {
        return describe<R>("StructStandard",
                           "Standard",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::screwType, StructScrewType>("ScrewType"),
                           column<&R::description>("Description"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructStandardNuts>()
{
    using R = StructStandardNuts;
    return described([] {
        return describe<R>("StructStandardNuts",
                           "StandardNuts",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::component>("Component"),
                           column<&R::strengthClass>("StrengthClass"),
                           column<&R::description>("Description"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructStrengthClass>()
{
    using R = StructStrengthClass;
    return described([] {
        return describe<R>("StructStrengthClass",
                           "StrengthClass",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::yieldStrength>("YieldStrength"),
                           column<&R::tensileStrength>("TensileStrength"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructSet>()
{
    using R = StructSet;
    return described([] {
        return describe<R>("StructSet",
                           "Sets",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::nuts>("Nuts"),
                           column<&R::headWashers>("HeadWashers"),
                           column<&R::nutWashers>("NutWashers"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructScrewDiameter>()
{
    using R = StructScrewDiameter;
    return described([] {
        return describe<R>("StructScrewDiameter",
                           "BoltsDiameters",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::diameter>("Diameter"),
                           column<&R::holeDiameter>("HoleDiameter"),
                           column<&R::shankArea>("ShankArea"),
                           column<&R::stressArea>("StressArea"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructScrew>()
{
    using R = StructScrew;
    return described([] {
        return describe<R>("StructScrew",
                           "ScrewNew",
                           inConfiguration,
                           key<&R::key>("Key"),
                           lookup<&R::standard, StructStandard>("Standard"),
                           lookup<&R::strengthClass, StructStrengthClass>("StrengthClass"),
                           lookup<&R::boltSet, StructSet>("BoltSet"),
                           column<&R::diameter>("Diameter"),
                           column<&R::headHeight>("HeadHeight"),
                           column<&R::acrossFlats>("AcrossFlats"),
                           column<&R::pitch>("Pitch"),
                           column<&R::minimumLength>("MinimumLength"),
                           column<&R::maximumLength>("MaximumLength"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructSetNutsBolts>()
{
    using R = StructSetNutsBolts;
    return described([] {
        return describe<R>("StructSetNutsBolts",
                           "SetNutsBolts",
                           inConfiguration,
                           key<&R::key>("Key"),
                           lookup<&R::boltSet, StructSet>("BoltSet"),
                           lookup<&R::standard, StructStandardNuts>("Standard"),
                           column<&R::position>("Position"),
                           column<&R::quantity>("Quantity"),
                           column<&R::headSide>("HeadSide"),
                           column<&R::diameter>("Diameter"),
                           column<&R::height>("Height"),
                           column<&R::outerDiameter>("OuterDiameter"),
                           column<&R::holeDiameter>("HoleDiameter"));
    });
}

template <>
const RecordDescription& descriptionOf<StructScrewCoating>()
{
    using R = StructScrewCoating;
    return described([] {
        return describe<R>("StructScrewCoating",
                           "BoltsCoating",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::thickness>("Thickness"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructSetOfBolts>()
{
    using R = StructSetOfBolts;
    return described([] {
        return describe<R>("StructSetOfBolts",
                           "SetOfBolts",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::standard, StructStandard>("Standard"),
                           lookup<&R::strengthClass, StructStrengthClass>("StrengthClass"),
                           lookup<&R::boltSet, StructSet>("BoltSet"),
                           lookup<&R::coating, StructScrewCoating>("Coating").noneAllowed(),
                           owner<&R::ownerText>("OwnerText"));
    });
}

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

std::span<const DescriptionFunction> records::boltRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructScrewType>,
                                                   descriptionOf<StructStandard>,
                                                   descriptionOf<StructStandardNuts>,
                                                   descriptionOf<StructStrengthClass>,
                                                   descriptionOf<StructSet>,
                                                   descriptionOf<StructScrewDiameter>,
                                                   descriptionOf<StructScrew>,
                                                   descriptionOf<StructSetNutsBolts>,
                                                   descriptionOf<StructScrewCoating>,
                                                   descriptionOf<StructSetOfBolts>};
    return list;
}
