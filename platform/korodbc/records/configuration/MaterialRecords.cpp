#include <korodbc/records/configuration/MaterialRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

#include <cmath>
#include <utility>

using namespace records;

template <std::same_as<StructMaterial> R>
constexpr Entry listOf<R>[] = {
    table("Material", inConfigurationAndAddin),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::standard, "Standard"),
    column(&R::materialNumber, "MaterialNumber"),
    column(&R::yieldStrength, "YieldStrength"),
    column(&R::tensileStrength, "TensileStrength"),
    column(&R::yieldStrengthThick, "YieldStrengthThick"),
    column(&R::tensileStrengthThick, "TensileStrengthThick"),
    column(&R::elasticModulus, "ElasticModulus"),
    column(&R::density, "Density"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructMaterialClass> R>
constexpr Entry listOf<R>[] = {
    table("MaterialClass", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::name, "Name"),
    column(&R::classNumber, "ClassNumber"),
};

template <std::same_as<StructCoating> R>
constexpr Entry listOf<R>[] = {
    table("Coating", inConfigurationAndAddin),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::thickness, "Thickness"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructPlateThickness> R>
constexpr Entry listOf<R>[] = {
    table("PlateThickness", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::thickness, "Thickness"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructScale> R>
constexpr Entry listOf<R>[] = {
    table("Scale", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::factor, "Factor"),
    column(&R::unitType, "UnitType"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

int StructPlateThicknessMarshal::getKeyList(KorArray<double>& thicknesses)
{
    KorArray<double> read;
    const int result = visit([&](const StructPlateThickness& plate) {
        read.append(plate.thickness);
        return true;
    });
    if (result == 1)
        thicknesses = std::move(read);
    return result;
}

int StructPlateThicknessMarshal::getKeyByRunName(const KorString& runName, double& thickness)
{
    StructPlateThickness plate;
    const int result = getStructByRunName(runName, plate);
    if (result == 1)
        thickness = plate.thickness;
    return result;
}

int StructPlateThicknessMarshal::getRunNameByKey(double thickness, KorString& runName)
{
    StructPlateThickness found;
    const int result =
        recordThat([=](const StructPlateThickness& plate) { return plate.thickness == thickness; }, found);
    if (result == 1)
        runName = found.runName;
    return result;
}

int StructScaleMarshal::getScaleTable(StructScale::ScaleUnitType unitType, KorArray<StructScale>& scales)
{
    KorArray<StructScale> found;
    const int result = getWhere<&StructScale::unitType>(unitType, found);
    if (result == 1)
        scales = std::move(found);
    return result;
}

int StructScaleMarshal::getScaleList(StructScale::ScaleUnitType unitType, KorArray<KorString>& names)
{
    KorArray<KorString> found;
    const int result = visit([&](const StructScale& scale) {
        if (scale.unitType == unitType)
            found.append(scale.runName);
        return true;
    });
    if (result != 1)
        return -1;
    if (found.isEmpty())
        return 0;
    names = std::move(found);
    return 1;
}

int StructScaleMarshal::getSpecificScale(const KorString& runName, StructScale::ScaleUnitType unitType,
                                         StructScale& scale)
{
    // the same name may stand for a scale of each unit type
    return recordThat([&](const StructScale& row) { return row.unitType == unitType && row.runName == runName; },
                      scale);
}

int StructScaleMarshal::getScaleDescription(double factor, KorString& text, StructScale::ScaleUnitType unitType,
                                            bool anyUnit)
{
    KorString found;
    int result = 0;
    visit([&](const StructScale& scale) {
        if (std::abs(scale.factor - factor) > 1e-6 * std::abs(factor))
            return true;
        const bool sameUnit = scale.unitType == unitType;
        if (sameUnit || (anyUnit && result == 0)) {
            found = scale.runName;
            result = 1;
        }
        return !sameUnit;
    });
    if (result == 1)
        text = found;
    return result;
}

int StructScaleMarshal::getListScaleDescription(const KorArray<double>& factors, KorArray<KorString>& texts,
                                                StructScale::ScaleUnitType unitType, bool anyUnit)
{
    KorArray<KorString> found;
    int result = 0;
    for (const double factor : factors) {
        KorString text;
        if (getScaleDescription(factor, text, unitType, anyUnit) == 1)
            result = 1;
        found.append(text);
    }
    if (result == 1)
        texts = std::move(found);
    return result;
}

constinit const Family records::materialRecords =
    family<StructMaterial, StructMaterialClass, StructCoating, StructPlateThickness, StructScale>;
