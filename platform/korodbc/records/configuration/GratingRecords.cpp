#include <korodbc/records/configuration/GratingRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructBarGratingSeries>()
{
    using R = StructBarGratingSeries;
    return described([] {
        return describe<R>("StructBarGratingSeries",
                           "BarGratingSeries",
                           inConfiguration,
                           key<&R::standardName>("StandardName"),
                           runName<&R::runName>("RunName"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructBearingBarSpacing>()
{
    using R = StructBearingBarSpacing;
    return described([] {
        return describe<R>("StructBearingBarSpacing",
                           "BearingBarSpacing",
                           inConfiguration,
                           key<&R::standardName>("StandardName"),
                           runName<&R::runName>("RunName"),
                           column<&R::distance>("Distance"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructCrossBarSpacing>()
{
    using R = StructCrossBarSpacing;
    return described([] {
        return describe<R>("StructCrossBarSpacing",
                           "CrossBarSpacing",
                           inConfiguration,
                           key<&R::standardName>("StandardName"),
                           runName<&R::runName>("RunName"),
                           column<&R::distance>("Distance"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructBearingBarThickness>()
{
    using R = StructBearingBarThickness;
    return described([] {
        return describe<R>("StructBearingBarThickness",
                           "BearingBarThickness",
                           inConfiguration,
                           key<&R::standardName>("StandardName"),
                           column<&R::gratingThickness>("GratingThickness"),
                           column<&R::barThickness>("BarThickness"),
                           runName<&R::runName>("RunName"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructBearingBarWidth>()
{
    using R = StructBearingBarWidth;
    return described([] {
        return describe<R>("StructBearingBarWidth",
                           "BearingBarWidth",
                           inConfiguration,
                           key<&R::standardName>("StandardName"),
                           runName<&R::runName>("RunName"),
                           column<&R::barQuantity>("BarQuantity"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructCrossBar>()
{
    using R = StructCrossBar;
    return described([] {
        return describe<R>("StructCrossBar",
                           "CrossBar",
                           inConfiguration,
                           key<&R::standardName>("StandardName"),
                           runName<&R::runName>("RunName"),
                           column<&R::barThickness>("BarThickness"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructBarGrating>()
{
    using R = StructBarGrating;
    return described([] {
        return describe<R>(
            "StructBarGrating",
            "BarGrating",
            inConfiguration,
            key<&R::key>("Key"),
            lookup<&R::seriesName, StructBarGratingSeries>("SeriesName"),
            lookup<&R::bearingBarSpacing, StructBearingBarSpacing>("BearingBarSpacing"),
            lookup<&R::crossBarSpacing, StructCrossBarSpacing>("CrossBarSpacing"),
            lookup<&R::bearingBarThicknessName, StructBearingBarThickness>("BearingBarThicknessName"),
            lookup<&R::bearingBarWidthName, StructBearingBarWidth>("BearingBarWidthName"),
            lookup<&R::crossBarName, StructCrossBar>("CrossBarName"),
            owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructGratingStandardMaster>()
{
    using R = StructGratingStandardMaster;
    return described([] {
        return describe<R>("StructGratingStandardMaster",
                           "GratingStandardMaster",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::tableName>("TableName"),
                           column<&R::material>("Material"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructGratingVariableMaster>()
{
    using R = StructGratingVariableMaster;
    return described([] {
        return describe<R>("StructGratingVariableMaster",
                           "GratingVariableMaster",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::tableName>("TableName"),
                           column<&R::material>("Material"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructGratingStandardItem>()
{
    using R = StructGratingStandardItem;
    return described([] {
        return describe<R>("StructGratingStandardItem",
                           "Gratings_P30",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::length>("Length"),
                           column<&R::width>("Width"),
                           column<&R::thickness>("Thickness"),
                           column<&R::mass>("Mass"));
    });
}

template <>
const RecordDescription& descriptionOf<StructGratingVariableItem>()
{
    using R = StructGratingVariableItem;
    return described([] {
        return describe<R>("StructGratingVariableItem",
                           "Gratings_G30",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::thickness>("Thickness"),
                           column<&R::barThickness>("BarThickness"),
                           column<&R::massPerArea>("MassPerArea"),
                           column<&R::maximumWidth>("MaximumWidth"));
    });
}

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

std::span<const DescriptionFunction> records::gratingRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructBarGratingSeries>,
                                                   descriptionOf<StructBearingBarSpacing>,
                                                   descriptionOf<StructCrossBarSpacing>,
                                                   descriptionOf<StructBearingBarThickness>,
                                                   descriptionOf<StructBearingBarWidth>,
                                                   descriptionOf<StructCrossBar>,
                                                   descriptionOf<StructBarGrating>,
                                                   descriptionOf<StructGratingStandardMaster>,
                                                   descriptionOf<StructGratingVariableMaster>,
                                                   descriptionOf<StructGratingStandardItem>,
                                                   descriptionOf<StructGratingVariableItem>};
    return list;
}
