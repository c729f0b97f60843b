#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/project/ProjectRecords.h>
#include <korodbc/records/Registry.h>

using namespace records;

namespace {

constexpr DataSources inProjects{KorDSNDefinitions::kProject,
                                 KorDSNDefinitions::kProjectAdvance,
                                 KorDSNDefinitions::kConfiguration,
                                 KorDSNDefinitions::kAddin};

} // namespace

template <>
const RecordDescription& descriptionOf<StructProjXMLData>()
{
    using R = StructProjXMLData;
    return described([] {
        return describe<R>("StructProjXMLData",
                           "XMLData",
                           inProjects,
                           key<&R::key>("Key"),
                           column<&R::version>("Version"),
                           column<&R::xmlText>("XMLText"),
                           unstored<&R::dataSource>());
    });
}

template <>
const RecordDescription& descriptionOf<StructProjReportCategory>()
{
    using R = StructProjReportCategory;
    return described([] {
        return describe<R>("StructProjReportCategory",
                           "ReportCategories",
                           inProjects,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::description>("Description"),
                           owner<&R::ownerText>("OwnerText"),
                           unstored<&R::dataSource>());
    });
}

template <>
const RecordDescription& descriptionOf<StructProjReportType>()
{
    using R = StructProjReportType;
    return described([] {
        return describe<R>("StructProjReportType",
                           "ReportTypes",
                           inProjects,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::category, StructProjReportCategory>("Category"),
                           column<&R::fileExtension>("FileExtension"),
                           owner<&R::ownerText>("OwnerText"),
                           unstored<&R::dataSource>());
    });
}

template <>
const RecordDescription& descriptionOf<StructProjTemplate>()
{
    using R = StructProjTemplate;
    return described([] {
        return describe<R>("StructProjTemplate",
                           "ReportTemplates",
                           inProjects,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::reportType, StructProjReportType>("ReportType"),
                           reference<&R::xmlData, StructProjXMLData>("XMLData").noneAllowed(),
                           column<&R::fileName>("FileName"),
                           column<&R::description>("Description"),
                           owner<&R::ownerText>("OwnerText"),
                           unstored<&R::xmlText>(),
                           unstored<&R::dataSource>());
    });
}

template <>
const RecordDescription& descriptionOf<StructProjModelSelection>()
{
    using R = StructProjModelSelection;
    return described([] {
        return describe<R>("StructProjModelSelection",
                           "ModelSelections",
                           inProjects,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::description>("Description"),
                           reference<&R::xmlData, StructProjXMLData>("XMLData").noneAllowed(),
                           owner<&R::ownerText>("OwnerText"),
                           unstored<&R::xmlText>(),
                           unstored<&R::dataSource>());
    });
}

template <>
const RecordDescription& descriptionOf<StructProjModelSelectionApplication>()
{
    using R = StructProjModelSelectionApplication;
    return described([] {
        return describe<R>("StructProjModelSelectionApplication",
                           "ModelSelectionApplications",
                           inProjects,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::modelSelection, StructProjModelSelection>("ModelSelection"),
                           column<&R::description>("Description"),
                           owner<&R::ownerText>("OwnerText"),
                           unstored<&R::dataSource>());
    });
}

template <>
const RecordDescription& descriptionOf<StructProjModelExtractUpdateInfo>()
{
    using R = StructProjModelExtractUpdateInfo;
    return described([] {
        return describe<R>("StructProjModelExtractUpdateInfo",
                           "ModelExtractUpdateInfo",
                           inProjects,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::onOpening>("OnOpening"),
                           column<&R::beforeReport>("BeforeReport"),
                           column<&R::asksFirst>("AsksFirst"),
                           column<&R::lastUpdate>("LastUpdate"),
                           owner<&R::ownerText>("OwnerText"),
                           unstored<&R::dataSource>());
    });
}

template <>
const RecordDescription& descriptionOf<StructProjModelExtract>()
{
    using R = StructProjModelExtract;
    return described([] {
        return describe<R>("StructProjModelExtract",
                           "ModelExtracts",
                           inProjects,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::modelSelectionApplication, StructProjModelSelectionApplication>(
                               "ModelSelectionApplication"),
                           reference<&R::updateInfo, StructProjModelExtractUpdateInfo>("UpdateInfo").noneAllowed(),
                           column<&R::fileName>("FileName"),
                           owner<&R::ownerText>("OwnerText"),
                           unstored<&R::dataSource>());
    });
}

template <>
const RecordDescription& descriptionOf<StructProjReport>()
{
    using R = StructProjReport;
    return described([] {
        return describe<R>("StructProjReport",
                           "Reports",
                           inProjects,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::templateKey, StructProjTemplate>("Template"),
                           reference<&R::modelExtract, StructProjModelExtract>("ModelExtract").noneAllowed(),
                           column<&R::fileName>("FileName"),
                           column<&R::description>("Description"),
                           owner<&R::ownerText>("OwnerText"),
                           unstored<&R::dataSource>());
    });
}

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

std::span<const DescriptionFunction> records::projectRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructProjXMLData>,
                                                   descriptionOf<StructProjReportCategory>,
                                                   descriptionOf<StructProjReportType>,
                                                   descriptionOf<StructProjTemplate>,
                                                   descriptionOf<StructProjModelSelection>,
                                                   descriptionOf<StructProjModelSelectionApplication>,
                                                   descriptionOf<StructProjModelExtractUpdateInfo>,
                                                   descriptionOf<StructProjModelExtract>,
                                                   descriptionOf<StructProjReport>};
    return list;
}
