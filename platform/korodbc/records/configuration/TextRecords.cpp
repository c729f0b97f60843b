#include <korodbc/records/configuration/TextRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/NumberingRecords.h>

using namespace records;

template <std::same_as<StructDateTimeFormat> R>
constexpr Entry listOf<R>[] = {
    table("DateTimeFormat", DataSources{KorDSNDefinitions::kUnits}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::format, "Format"),
};

template <std::same_as<StructTextSizes> R>
constexpr Entry listOf<R>[] = {
    table("TextSizes", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::height, "Height"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructGenericStringTokenGroup> R>
constexpr Entry listOf<R>[] = {
    table("GenericStringTokenGroup", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructObjectType>(&R::objectType, "ObjectType"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructGenericStringToken> R>
constexpr Entry listOf<R>[] = {
    table("GenericStringToken", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructGenericStringTokenGroup>(&R::group, "GroupID"),
    column(&R::token, "Token"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructBOMDwgTokens> R>
constexpr Entry listOf<R>[] = {
    table("BomDwgTokens", DataSources{KorDSNDefinitions::kReports}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::token, "Token"),
    column(&R::width, "Width"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructTemplateReportObjects> R>
constexpr Entry listOf<R>[] = {
    table("TemplateReportObjects", DataSources{KorDSNDefinitions::kReports}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::selection, "Selection"),
    column(&R::grouped, "Grouped"),
};

template <std::same_as<StructCameraType> R>
constexpr Entry listOf<R>[] = {
    table("CameraTypes", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::perspective, "Perspective"),
    column(&R::azimuth, "Azimuth"),
    column(&R::elevation, "Elevation"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

constinit const Family records::textRecords =
    family<StructDateTimeFormat, StructTextSizes, StructGenericStringTokenGroup, StructGenericStringToken,
           StructBOMDwgTokens, StructTemplateReportObjects, StructCameraType>;
