#include <korodbc/records/configuration/AnchorRecords.h>
#include <korodbc/records/configuration/BoltRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

#include <algorithm>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructAnchorsStandard>()
{
    using R = StructAnchorsStandard;
    return described([] {
        return describe<R>("StructAnchorsStandard",
                           "AnchorsStandard",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::description>("Description"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAnchorsOrientation>()
{
    using R = StructAnchorsOrientation;
    return described([] {
        return describe<R>("StructAnchorsOrientation",
                           "AnchorsOrientation",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAnchorsName>()
{
    using R = StructAnchorsName;
    return described([] {
        return describe<R>("StructAnchorsName",
                           "AnchorsName",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::standard, StructAnchorsStandard>("Standard"),
                           lookup<&R::material, StructStrengthClass>("Material"),
                           lookup<&R::boltSet, StructSet>("BoltSet"),
                           lookup<&R::diameter, StructScrewDiameter>("Diameter"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAnchorsDefinition>()
{
    using R = StructAnchorsDefinition;
    return described([] {
        return describe<R>("StructAnchorsDefinition",
                           "AnchorsDefinition",
                           inConfiguration,
                           key<&R::key>("Key"),
                           lookup<&R::anchorName, StructAnchorsName>("AnchorName"),
                           column<&R::length>("Length"),
                           column<&R::threadLength>("ThreadLength"),
                           column<&R::embedment>("Embedment"),
                           lookup<&R::orientation, StructAnchorsOrientation>("Orientation"),
                           column<&R::mass>("Mass"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructAnchorsHoleDefinition>()
{
    using R = StructAnchorsHoleDefinition;
    return described([] {
        return describe<R>("StructAnchorsHoleDefinition",
                           "AnchorsHoleDefinition",
                           inConfiguration,
                           key<&R::key>("Key"),
                           lookup<&R::anchorName, StructAnchorsName>("AnchorName"),
                           column<&R::plateHole>("PlateHole"),
                           column<&R::drillHole>("DrillHole"),
                           column<&R::drillDepth>("DrillDepth"),
                           column<&R::washerHole>("WasherHole"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

// The steps begin with the standards of the current data source, so they stay in it.

int StructAnchorsNameMarshal::getMaterialList(const KorString& standard, KorArray<KorString>& names)
{
    KorArray<KorString> found;
    inCurrentSource([&] {
        const int wanted = keyOf<StructAnchorsStandard>(standard);
        addNamesReferredTo<&StructAnchorsName::material, StructStrengthClass>(
            [=](const StructAnchorsName& anchor) { return anchor.standard == wanted; }, found);
    });
    return foundAny(found, names);
}

int StructAnchorsNameMarshal::getSetList(const KorString& standard, const KorString& material,
                                         KorArray<KorString>& names)
{
    KorArray<KorString> found;
    inCurrentSource([&] {
        const int wantedStandard = keyOf<StructAnchorsStandard>(standard);
        const int wantedMaterial = keyOf<StructStrengthClass>(material);
        addNamesReferredTo<&StructAnchorsName::boltSet, StructSet>(
            [=](const StructAnchorsName& anchor) {
                return anchor.standard == wantedStandard && anchor.material == wantedMaterial;
            },
            found);
    });
    return foundAny(found, names);
}

int StructAnchorsNameMarshal::getDiameterList(const KorString& standard, const KorString& material,
                                              const KorString& set, KorArray<KorString>& names)
{
    KorArray<KorString> found;
    inCurrentSource([&] {
        const int wantedStandard = keyOf<StructAnchorsStandard>(standard);
        const int wantedMaterial = keyOf<StructStrengthClass>(material);
        const int wantedSet = keyOf<StructSet>(set);
        addNamesReferredTo<&StructAnchorsName::diameter, StructScrewDiameter>(
            [=](const StructAnchorsName& anchor) {
                return anchor.standard == wantedStandard && anchor.material == wantedMaterial &&
                       anchor.boltSet == wantedSet;
            },
            found);
    });
    return foundAny(found, names);
}

int StructAnchorsDefinitionMarshal::getAvailableLengths(long anchorName, KorArray<double>& lengths)
{
    KorArray<StructAnchorsDefinition> rows;
    const int result = recordsWith<&StructAnchorsDefinition::anchorName>(anchorName, rows);
    if (result != 1)
        return result;
    lengths.removeAll();
    for (const StructAnchorsDefinition& row : rows)
        lengths.append(row.length);
    std::sort(lengths.begin(), lengths.end());
    return result;
}

std::span<const DescriptionFunction> records::anchorRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructAnchorsStandard>,
                                                   descriptionOf<StructAnchorsOrientation>,
                                                   descriptionOf<StructAnchorsName>,
                                                   descriptionOf<StructAnchorsDefinition>,
                                                   descriptionOf<StructAnchorsHoleDefinition>};
    return list;
}
