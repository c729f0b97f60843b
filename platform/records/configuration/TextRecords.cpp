#include "records/configuration/TextRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDateTimeFormat>()
{
    using R = StructDateTimeFormat;
    static constexpr auto list = describe<R>("StructDateTimeFormat",
                                             "DateTimeFormat",
                                             DataSources{KorDSNDefinitions::kUnits},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::format>("Format"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructTextSizes>()
{
    using R = StructTextSizes;
    static constexpr auto list = describe<R>("StructTextSizes",
                                             "TextSizes",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::height>("Height"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructGenericStringTokenGroup>()
{
    using R = StructGenericStringTokenGroup;
    static constexpr auto list = describe<R>("StructGenericStringTokenGroup",
                                             "GenericStringTokenGroup",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::objectType>("ObjectType"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructGenericStringToken>()
{
    using R = StructGenericStringToken;
    static constexpr auto list = describe<R>("StructGenericStringToken",
                                             "GenericStringToken",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             lookup<&R::group, StructGenericStringTokenGroup>("GroupID"),
                                             column<&R::token>("Token"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructBOMDwgTokens>()
{
    using R = StructBOMDwgTokens;
    static constexpr auto list = describe<R>("StructBOMDwgTokens",
                                             "BomDwgTokens",
                                             DataSources{KorDSNDefinitions::kReports},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::token>("Token"),
                                             column<&R::width>("Width"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructTemplateReportObjects>()
{
    using R = StructTemplateReportObjects;
    static constexpr auto list = describe<R>("StructTemplateReportObjects",
                                             "TemplateReportObjects",
                                             DataSources{KorDSNDefinitions::kReports},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::selection>("Selection"),
                                             column<&R::grouped>("Grouped"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructCameraType>()
{
    using R = StructCameraType;
    static constexpr auto list = describe<R>("StructCameraType",
                                             "CameraTypes",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::perspective>("Perspective"),
                                             column<&R::azimuth>("Azimuth"),
                                             column<&R::elevation>("Elevation"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

std::span<const DescriptionFunction> records::textRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructDateTimeFormat>,
                                                   descriptionOf<StructTextSizes>,
                                                   descriptionOf<StructGenericStringTokenGroup>,
                                                   descriptionOf<StructGenericStringToken>,
                                                   descriptionOf<StructBOMDwgTokens>,
                                                   descriptionOf<StructTemplateReportObjects>,
                                                   descriptionOf<StructCameraType>};
    return list;
}
