#include "records/configuration/ReportRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructModelExtract>()
{
    using R = StructModelExtract;
    static constexpr auto list = describe<R>("StructModelExtract",
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
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructReportType>()
{
    using R = StructReportType;
    static constexpr auto list = describe<R>("StructReportType",
                                             "ReportTypes",
                                             DataSources{KorDSNDefinitions::kProject,
                                                         KorDSNDefinitions::kProjectAdvance,
                                                         KorDSNDefinitions::kConfiguration,
                                                         KorDSNDefinitions::kAddin},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::category>("Category"),
                                             column<&R::fileExtension>("FileExtension"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructReportTemplate>()
{
    using R = StructReportTemplate;
    static constexpr auto list = describe<R>("StructReportTemplate",
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
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructXMLData>()
{
    using R = StructXMLData;
    static constexpr auto list = describe<R>("StructXMLData",
                                             "XMLData",
                                             DataSources{KorDSNDefinitions::kProject,
                                                         KorDSNDefinitions::kProjectAdvance,
                                                         KorDSNDefinitions::kConfiguration,
                                                         KorDSNDefinitions::kAddin},
                                             key<&R::key>("Key"),
                                             column<&R::version>("Version"),
                                             column<&R::xmlText>("XMLText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

std::span<const DescriptionFunction> records::reportRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructModelExtract>,
                                                   descriptionOf<StructReportType>,
                                                   descriptionOf<StructReportTemplate>,
                                                   descriptionOf<StructXMLData>};
    return list;
}
