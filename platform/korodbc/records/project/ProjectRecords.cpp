#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/project/ProjectRecords.h>

using namespace records;

namespace {

constexpr DataSources inProjects{KorDSNDefinitions::kProject,
                                 KorDSNDefinitions::kProjectAdvance,
                                 KorDSNDefinitions::kConfiguration,
                                 KorDSNDefinitions::kAddin};

} // namespace

template <std::same_as<StructProjXMLData> R>
constexpr Entry listOf<R>[] = {
    table("XMLData", inProjects),
    key(&R::key, "Key"),
    column(&R::version, "Version"),
    column(&R::xmlText, "XMLText"),
    unstored(&R::dataSource),
};

template <std::same_as<StructProjReportCategory> R>
constexpr Entry listOf<R>[] = {
    table("ReportCategories", inProjects),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::description, "Description"),
    owner(&R::ownerText, "OwnerText"),
    unstored(&R::dataSource),
};

template <std::same_as<StructProjReportType> R>
constexpr Entry listOf<R>[] = {
    table("ReportTypes", inProjects),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructProjReportCategory>(&R::category, "Category"),
    column(&R::fileExtension, "FileExtension"),
    owner(&R::ownerText, "OwnerText"),
    unstored(&R::dataSource),
};

template <std::same_as<StructProjTemplate> R>
constexpr Entry listOf<R>[] = {
    table("ReportTemplates", inProjects),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructProjReportType>(&R::reportType, "ReportType"),
    reference<StructProjXMLData>(&R::xmlData, "XMLData").noneAllowed(),
    column(&R::fileName, "FileName"),
    column(&R::description, "Description"),
    owner(&R::ownerText, "OwnerText"),
    unstored(&R::xmlText),
    unstored(&R::dataSource),
};

template <std::same_as<StructProjModelSelection> R>
constexpr Entry listOf<R>[] = {
    table("ModelSelections", inProjects),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::description, "Description"),
    reference<StructProjXMLData>(&R::xmlData, "XMLData").noneAllowed(),
    owner(&R::ownerText, "OwnerText"),
    unstored(&R::xmlText),
    unstored(&R::dataSource),
};

template <std::same_as<StructProjModelSelectionApplication> R>
constexpr Entry listOf<R>[] = {
    table("ModelSelectionApplications", inProjects),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructProjModelSelection>(&R::modelSelection, "ModelSelection"),
    column(&R::description, "Description"),
    owner(&R::ownerText, "OwnerText"),
    unstored(&R::dataSource),
};

template <std::same_as<StructProjModelExtractUpdateInfo> R>
constexpr Entry listOf<R>[] = {
    table("ModelExtractUpdateInfo", inProjects),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::onOpening, "OnOpening"),
    column(&R::beforeReport, "BeforeReport"),
    column(&R::asksFirst, "AsksFirst"),
    column(&R::lastUpdate, "LastUpdate"),
    owner(&R::ownerText, "OwnerText"),
    unstored(&R::dataSource),
};

template <std::same_as<StructProjModelExtract> R>
constexpr Entry listOf<R>[] = {
    table("ModelExtracts", inProjects),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructProjModelSelectionApplication>(&R::modelSelectionApplication, "ModelSelectionApplication"),
    reference<StructProjModelExtractUpdateInfo>(&R::updateInfo, "UpdateInfo").noneAllowed(),
    column(&R::fileName, "FileName"),
    owner(&R::ownerText, "OwnerText"),
    unstored(&R::dataSource),
};

template <std::same_as<StructProjReport> R>
constexpr Entry listOf<R>[] = {
    table("Reports", inProjects),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructProjTemplate>(&R::templateKey, "Template"),
    reference<StructProjModelExtract>(&R::modelExtract, "ModelExtract").noneAllowed(),
    column(&R::fileName, "FileName"),
    column(&R::description, "Description"),
    owner(&R::ownerText, "OwnerText"),
    unstored(&R::dataSource),
};

int StructProjTemplateMarshal::getByReportTypeKey(const long& key, KorArray<StructProjTemplate>& templates)
{
    return getChildren<&StructProjTemplate::reportType>(key, templates);
}

int StructProjModelSelectionApplicationMarshal::getByModelSelectionKey(
    const long& key, KorArray<StructProjModelSelectionApplication>& applications)
{
    return getChildren<&StructProjModelSelectionApplication::modelSelection>(key, applications);
}

int StructProjModelExtractMarshal::getByModelSelectionApplicationKey(const long& key,
                                                                     KorArray<StructProjModelExtract>& extracts)
{
    return getChildren<&StructProjModelExtract::modelSelectionApplication>(key, extracts);
}

int StructProjReportMarshal::getByTemplateKey(const long& key, KorArray<StructProjReport>& reports)
{
    return getChildren<&StructProjReport::templateKey>(key, reports);
}

constinit const Family records::projectRecords =
    family<StructProjXMLData, StructProjReportCategory, StructProjReportType, StructProjTemplate,
           StructProjModelSelection, StructProjModelSelectionApplication, StructProjModelExtractUpdateInfo,
           StructProjModelExtract, StructProjReport>;
