#include <korodbc/records/configuration/AnchorRecords.h>
#include <korodbc/records/configuration/BoltRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

#include <algorithm>

using namespace records;

template <std::same_as<StructAnchorsStandard> R>
constexpr Entry listOf<R>[] = {
    table("AnchorsStandard", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::description, "Description"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructAnchorsOrientation> R>
constexpr Entry listOf<R>[] = {
    table("AnchorsOrientation", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructAnchorsName> R>
constexpr Entry listOf<R>[] = {
    table("AnchorsName", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructAnchorsStandard>(&R::standard, "Standard"),
    lookup<StructStrengthClass>(&R::material, "Material"),
    lookup<StructSet>(&R::boltSet, "BoltSet"),
    lookup<StructScrewDiameter>(&R::diameter, "Diameter"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructAnchorsDefinition> R>
constexpr Entry listOf<R>[] = {
    table("AnchorsDefinition", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructAnchorsName>(&R::anchorName, "AnchorName"),
    column(&R::length, "Length"),
    column(&R::threadLength, "ThreadLength"),
    column(&R::embedment, "Embedment"),
    lookup<StructAnchorsOrientation>(&R::orientation, "Orientation"),
    column(&R::mass, "Mass"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructAnchorsHoleDefinition> R>
constexpr Entry listOf<R>[] = {
    table("AnchorsHoleDefinition", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructAnchorsName>(&R::anchorName, "AnchorName"),
    column(&R::plateHole, "PlateHole"),
    column(&R::drillHole, "DrillHole"),
    column(&R::drillDepth, "DrillDepth"),
    column(&R::washerHole, "WasherHole"),
    owner(&R::ownerText, "OwnerText"),
};

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

constinit const Family records::anchorRecords =
    family<StructAnchorsStandard, StructAnchorsOrientation, StructAnchorsName, StructAnchorsDefinition,
           StructAnchorsHoleDefinition>;
