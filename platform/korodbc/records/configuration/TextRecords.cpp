#include <korodbc/records/configuration/TextRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/NumberingRecords.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDateTimeFormat>()
{
    using R = StructDateTimeFormat;
    return described([] {
        return describe<R>("StructDateTimeFormat",
                           "DateTimeFormat",
                           DataSources{KorDSNDefinitions::kUnits},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::format>("Format"));
    });
}

template <>
const RecordDescription& descriptionOf<StructTextSizes>()
{
    using R = StructTextSizes;
    return described([] {
        return describe<R>("StructTextSizes",
                           "TextSizes",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::height>("Height"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructGenericStringTokenGroup>()
{
    using R = StructGenericStringTokenGroup;
    return described([] {
        return describe<R>("StructGenericStringTokenGroup",
                           "GenericStringTokenGroup",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::objectType, StructObjectType>("ObjectType"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructGenericStringToken>()
{
    using R = StructGenericStringToken;
    return described([] {
        return describe<R>("StructGenericStringToken",
                           "GenericStringToken",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::group, StructGenericStringTokenGroup>("GroupID"),
                           column<&R::token>("Token"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructBOMDwgTokens>()
{
    using R = StructBOMDwgTokens;
    return described([] {
        return describe<R>("StructBOMDwgTokens",
                           "BomDwgTokens",
                           DataSources{KorDSNDefinitions::kReports},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::token>("Token"),
                           column<&R::width>("Width"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructTemplateReportObjects>()
{
    using R = StructTemplateReportObjects;
    return described([] {
        return describe<R>("StructTemplateReportObjects",
                           "TemplateReportObjects",
                           DataSources{KorDSNDefinitions::kReports},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::selection>("Selection"),
                           column<&R::grouped>("Grouped"));
    });
}

template <>
const RecordDescription& descriptionOf<StructCameraType>()
{
    using R = StructCameraType;
    return described([] {
        return describe<R>("StructCameraType",
                           "CameraTypes",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::perspective>("Perspective"),
                           column<&R::azimuth>("Azimuth"),
                           column<&R::elevation>("Elevation"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
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
