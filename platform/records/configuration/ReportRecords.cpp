#include "records/configuration/ReportRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructModelExtract>()
{
    using R = StructModelExtract;
    return described([] {
        return describe<R>("StructModelExtract",
                           "ModelExtracts",
                           DataSources{KorDSNDefinitions::kProject,
                                       KorDSNDefinitions::kProjectAdvance,
                                       KorDSNDefinitions::kConfiguration,
                                       KorDSNDefinitions::kAddin},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::modelSelectionApplication>("ModelSelectionApplication"),
                           column<&R::updateInfo>("UpdateInfo"),
                           column<&R::fileName>("FileName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructReportType>()
{
    using R = StructReportType;
    return described([] {
        return describe<R>("StructReportType",
                           "ReportTypes",
                           DataSources{KorDSNDefinitions::kProject,
                                       KorDSNDefinitions::kProjectAdvance,
                                       KorDSNDefinitions::kConfiguration,
                                       KorDSNDefinitions::kAddin},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::category>("Category"),
                           column<&R::fileExtension>("FileExtension"));
    });
}

template <>
const RecordDescription& descriptionOf<StructReportTemplate>()
{
    using R = StructReportTemplate;
    return described([] {
        return describe<R>("StructReportTemplate",
                           "ReportTemplates",
                           DataSources{KorDSNDefinitions::kProject,
                                       KorDSNDefinitions::kProjectAdvance,
                                       KorDSNDefinitions::kConfiguration,
                                       KorDSNDefinitions::kAddin},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::reportType, StructReportType>("ReportType"),
                           reference<&R::xmlData, StructXMLData>("XMLData").noneAllowed(),
                           column<&R::fileName>("FileName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructXMLData>()
{
    using R = StructXMLData;
    return described([] {
        return describe<R>("StructXMLData",
                           "XMLData",
                           DataSources{KorDSNDefinitions::kProject,
                                       KorDSNDefinitions::kProjectAdvance,
                                       KorDSNDefinitions::kConfiguration,
                                       KorDSNDefinitions::kAddin},
                           key<&R::key>("Key"),
                           column<&R::version>("Version"),
                           column<&R::xmlText>("XMLText"));
    });
}

std::span<const DescriptionFunction> records::reportRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructModelExtract>,
                                                   descriptionOf<StructReportType>,
                                                   descriptionOf<StructReportTemplate>,
                                                   descriptionOf<StructXMLData>};
    return list;
}
