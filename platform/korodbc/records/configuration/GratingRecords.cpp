#include <korodbc/records/configuration/GratingRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructBarGratingSeries> R>
constexpr Entry listOf<R>[] = {
    table("BarGratingSeries", inConfiguration),
    key(&R::standardName, "StandardName"),
    runName(&R::runName, "RunName"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructBearingBarSpacing> R>
constexpr Entry listOf<R>[] = {
    table("BearingBarSpacing", inConfiguration),
    key(&R::standardName, "StandardName"),
    runName(&R::runName, "RunName"),
    column(&R::distance, "Distance"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructCrossBarSpacing> R>
constexpr Entry listOf<R>[] = {
    table("CrossBarSpacing", inConfiguration),
    key(&R::standardName, "StandardName"),
    runName(&R::runName, "RunName"),
    column(&R::distance, "Distance"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructBearingBarThickness> R>
constexpr Entry listOf<R>[] = {
    table("BearingBarThickness", inConfiguration),
    key(&R::standardName, "StandardName"),
    column(&R::gratingThickness, "GratingThickness"),
    column(&R::barThickness, "BarThickness"),
    runName(&R::runName, "RunName"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructBearingBarWidth> R>
constexpr Entry listOf<R>[] = {
    table("BearingBarWidth", inConfiguration),
    key(&R::standardName, "StandardName"),
    runName(&R::runName, "RunName"),
    column(&R::barQuantity, "BarQuantity"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructCrossBar> R>
constexpr Entry listOf<R>[] = {
    table("CrossBar", inConfiguration),
    key(&R::standardName, "StandardName"),
    runName(&R::runName, "RunName"),
    column(&R::barThickness, "BarThickness"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructBarGrating> R>
constexpr Entry listOf<R>[] = {
    table("BarGrating", inConfiguration),
    key(&R::key, "Key"),
    lookup<StructBarGratingSeries>(&R::seriesName, "SeriesName"),
    lookup<StructBearingBarSpacing>(&R::bearingBarSpacing, "BearingBarSpacing"),
    lookup<StructCrossBarSpacing>(&R::crossBarSpacing, "CrossBarSpacing"),
    lookup<StructBearingBarThickness>(&R::bearingBarThicknessName, "BearingBarThicknessName"),
    lookup<StructBearingBarWidth>(&R::bearingBarWidthName, "BearingBarWidthName"),
    lookup<StructCrossBar>(&R::crossBarName, "CrossBarName"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructGratingStandardMaster> R>
constexpr Entry listOf<R>[] = {
    table("GratingStandardMaster", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::tableName, "TableName"),
    column(&R::material, "Material"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructGratingVariableMaster> R>
constexpr Entry listOf<R>[] = {
    table("GratingVariableMaster", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::tableName, "TableName"),
    column(&R::material, "Material"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructGratingStandardItem> R>
constexpr Entry listOf<R>[] = {
    table("Gratings_P30", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::length, "Length"),
    column(&R::width, "Width"),
    column(&R::thickness, "Thickness"),
    column(&R::mass, "Mass"),
};

template <std::same_as<StructGratingVariableItem> R>
constexpr Entry listOf<R>[] = {
    table("Gratings_G30", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::thickness, "Thickness"),
    column(&R::barThickness, "BarThickness"),
    column(&R::massPerArea, "MassPerArea"),
    column(&R::maximumWidth, "MaximumWidth"),
};

int StructBarGratingMarshal::getByKey(const KorString& series, long bearingBarSpacing, long crossBarSpacing,
                                      const KorString& thickness, const KorString& width,
                                      const KorString& crossBar, StructBarGrating& record)
{
    return recordThat(
        [&](const StructBarGrating& candidate) {
            return candidate.bearingBarSpacing == bearingBarSpacing &&
                   candidate.crossBarSpacing == crossBarSpacing && candidate.seriesName == series &&
                   candidate.bearingBarThicknessName == thickness && candidate.bearingBarWidthName == width &&
                   candidate.crossBarName == crossBar;
        },
        record);
}

constinit const Family records::gratingRecords =
    family<StructBarGratingSeries, StructBearingBarSpacing, StructCrossBarSpacing, StructBearingBarThickness,
           StructBearingBarWidth, StructCrossBar, StructBarGrating, StructGratingStandardMaster,
           StructGratingVariableMaster, StructGratingStandardItem, StructGratingVariableItem>;
