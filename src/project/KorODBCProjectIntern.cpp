#include "foundation/TableCatalogue.h"

#include <korodbc/project/KorODBCProjectIntern.h>
#include <korodbc/records/Registry.h>
#include <korodbc/repository/KorDatabaseAccess.h>

// Reading.

namespace {

using Intern = KorODBCProjectIntern;

template <class Marshal, class Record>
int read(const long& key, Record& record, eIndex index, eDSN dsn)
{
    const KorDSNRequest request(dsn, index);
    return Marshal::getStructByKey(key, record);
}

template <class Marshal, class Record>
int read(const KorString& runName, Record& record, eIndex index, eDSN dsn)
{
    const KorDSNRequest request(dsn, index);
    return Marshal::getStructByRunName(runName, record);
}

/// Reads a record and the XML document that it names, which is kept where the record is. What fails gives its
/// result.
template <class Marshal, class Which, class Record>
int readWithXml(const Which& which, Record& record, eIndex index, eDSN dsn)
{
    Record found;
    if (const int result = read<Marshal>(which, found, index, dsn); result != 1)
        return result;
    StructProjXMLData xml;
    xml.key = found.xmlData;
    const eIndex slot = found.dataSource == dsn ? index : KorDSNDefinitions::kBase;
    if (const int result = Intern::loadXMLDataByKey(xml, slot, found.dataSource); result != 1)
        return result;
    found.xmlText = xml.xmlText;
    record = found;
    return 1;
}

template <class Which>
int readTemplate(const Which& which, StructProjTemplate& record, int withXml, eIndex index, eDSN dsn)
{
    return withXml != 0 ? readWithXml<StructProjTemplateMarshal>(which, record, index, dsn)
                        : read<StructProjTemplateMarshal>(which, record, index, dsn);
}

template <class Marshal>
int names(KorArray<KorString>& out, eIndex index, eDSN dsn)
{
    const KorDSNRequest request(dsn, index);
    return Marshal::getOrderedRunNameList(out);
}

int categoryNames(KorArray<KorString>& out, eIndex index, eDSN dsn)
{
    const KorDSNRequest request(dsn, index);
    return StructProjReportCategoryMarshal::getRunNameList(out);
}

template <class Child>
int numberOf(int (*fetch)(const long&, KorArray<Child>&), long parent, int& count, eIndex index, eDSN dsn)
{
    const KorDSNRequest request(dsn, index);
    KorArray<Child> children;
    if (fetch(parent, children) != 1)
        return -1;
    count = static_cast<int>(children.length());
    return 1;
}

} // namespace

int Intern::getReport(const long& key, StructProjReport& report, eIndex index, eDSN dsn)
{
    return read<StructProjReportMarshal>(key, report, index, dsn);
}
int Intern::getReport(const KorString& runName, StructProjReport& report, eIndex index, eDSN dsn)
{
    return read<StructProjReportMarshal>(runName, report, index, dsn);
}
int Intern::getTemplate(const long& key, StructProjTemplate& record, int withXml, eIndex index, eDSN dsn)
{
    return readTemplate(key, record, withXml, index, dsn);
}
int Intern::getTemplate(const KorString& runName, StructProjTemplate& record, int withXml, eIndex index, eDSN dsn)
{
    return readTemplate(runName, record, withXml, index, dsn);
}
int Intern::getModelSelection(const long& key, StructProjModelSelection& selection, eIndex index, eDSN dsn)
{
    return readWithXml<StructProjModelSelectionMarshal>(key, selection, index, dsn) == 1 ? 1 : -1;
}
int Intern::getModelSelection(const KorString& runName, StructProjModelSelection& selection, eIndex index,
                              eDSN dsn)
{
    return readWithXml<StructProjModelSelectionMarshal>(runName, selection, index, dsn) == 1 ? 1 : -1;
}
int Intern::getModelSelectionApplication(const long& key, StructProjModelSelectionApplication& application,
                                         eIndex index, eDSN dsn)
{
    return read<StructProjModelSelectionApplicationMarshal>(key, application, index, dsn);
}
int Intern::getModelSelectionApplication(const KorString& runName,
                                         StructProjModelSelectionApplication& application, eIndex index, eDSN dsn)
{
    return read<StructProjModelSelectionApplicationMarshal>(runName, application, index, dsn);
}
int Intern::getModelExtract(const long& key, StructProjModelExtract& extract, eIndex index, eDSN dsn)
{
    return read<StructProjModelExtractMarshal>(key, extract, index, dsn);
}
int Intern::getModelExtract(const KorString& runName, StructProjModelExtract& extract, eIndex index, eDSN dsn)
{
    return read<StructProjModelExtractMarshal>(runName, extract, index, dsn);
}
int Intern::getModelExtractUpdateInfo(const long& key, StructProjModelExtractUpdateInfo& info, eIndex index,
                                      eDSN dsn)
{
    return read<StructProjModelExtractUpdateInfoMarshal>(key, info, index, dsn);
}
int Intern::getModelExtractUpdateInfo(const KorString& runName, StructProjModelExtractUpdateInfo& info,
                                      eIndex index, eDSN dsn)
{
    return read<StructProjModelExtractUpdateInfoMarshal>(runName, info, index, dsn);
}
int Intern::getReportType(const long& key, StructProjReportType& type, eIndex index, eDSN dsn)
{
    return read<StructProjReportTypeMarshal>(key, type, index, dsn);
}
int Intern::getReportType(const KorString& runName, StructProjReportType& type, eIndex index, eDSN dsn)
{
    return read<StructProjReportTypeMarshal>(runName, type, index, dsn);
}
int Intern::getReportCategory(const long& key, StructProjReportCategory& category, eIndex index, eDSN dsn)
{
    return read<StructProjReportCategoryMarshal>(key, category, index, dsn);
}
int Intern::getReportCategory(const KorString& runName, StructProjReportCategory& category, eIndex index, eDSN dsn)
{
    return read<StructProjReportCategoryMarshal>(runName, category, index, dsn);
}
int Intern::getCategory(const long& key, StructProjReportCategory& category, eIndex index, eDSN dsn)
{
    return getReportCategory(key, category, index, dsn);
}
int Intern::getCategory(const KorString& runName, StructProjReportCategory& category, eIndex index, eDSN dsn)
{
    return getReportCategory(runName, category, index, dsn);
}
int Intern::getMapInternToExtern(const KorString& runName, StructMapInternToExtern& map, eIndex index, eDSN dsn)
{
    return read<StructMapInternToExternMarshal>(runName, map, index, dsn);
}
int Intern::loadXMLDataByKey(StructProjXMLData& xml, eIndex index, eDSN dsn)
{
    return read<StructProjXMLDataMarshal>(xml.key, xml, index, dsn);
}

int Intern::getModelSelectionList(KorArray<KorString>& out, eIndex index, eDSN dsn)
{
    return names<StructProjModelSelectionMarshal>(out, index, dsn);
}
int Intern::getModelSelectionApplicationList(KorArray<KorString>& out, eIndex index, eDSN dsn)
{
    return names<StructProjModelSelectionApplicationMarshal>(out, index, dsn);
}
int Intern::getReportList(KorArray<KorString>& out, eIndex index, eDSN dsn)
{
    return names<StructProjReportMarshal>(out, index, dsn);
}
int Intern::getModelExtractList(KorArray<KorString>& out, eIndex index, eDSN dsn)
{
    return names<StructProjModelExtractMarshal>(out, index, dsn);
}
int Intern::getModelExtractUpdateInfoList(KorArray<KorString>& out, eIndex index, eDSN dsn)
{
    return names<StructProjModelExtractUpdateInfoMarshal>(out, index, dsn);
}
int Intern::getTemplateList(KorArray<KorString>& out, eIndex index, eDSN dsn)
{
    return names<StructProjTemplateMarshal>(out, index, dsn);
}
int Intern::getReportTypeList(KorArray<KorString>& out, eIndex index, eDSN dsn)
{
    return names<StructProjReportTypeMarshal>(out, index, dsn);
}
int Intern::getReportCategoriesList(KorArray<KorString>& out, eIndex index, eDSN dsn)
{
    return categoryNames(out, index, dsn);
}
int Intern::getCategoriesList(KorArray<KorString>& out, eIndex index, eDSN dsn)
{
    return categoryNames(out, index, dsn);
}

int Intern::getTemplateKeyList(KorArray<long>& keys, eIndex index, eDSN dsn)
{
    const KorDSNRequest request(dsn, index);
    KorArray<StructProjTemplate> templates;
    StructProjTemplateMarshal::getTable(templates);
    keys.setLogicalLength(templates.length()); // the keys stand behind as many entries
    for (const StructProjTemplate& record : templates)
        keys.append(record.key);
    return static_cast<int>(keys.length());
}

int Intern::getReportsOf(const StructProjTemplate& record, int& count, eIndex index, eDSN dsn)
{
    return numberOf(StructProjReportMarshal::getByTemplateKey, record.key, count, index, dsn);
}
int Intern::getTemplatesOf(const StructProjReportType& type, int& count, eIndex index, eDSN dsn)
{
    return numberOf(StructProjTemplateMarshal::getByReportTypeKey, type.key, count, index, dsn);
}
int Intern::getModelApplicationsOf(const StructProjModelSelection& selection, int& count, eIndex index, eDSN dsn)
{
    return numberOf(StructProjModelSelectionApplicationMarshal::getByModelSelectionKey, selection.key, count,
                    index, dsn);
}
int Intern::getExtractsOf(const StructProjModelSelectionApplication& application, int& count, eIndex index,
                          eDSN dsn)
{
    return numberOf(StructProjModelExtractMarshal::getByModelSelectionApplicationKey, application.key, count,
                    index, dsn);
}

bool Intern::isDrawingTemplate(StructProjTemplate record, eIndex index, eDSN dsn)
{
    StructProjReportType type;
    StructProjReportCategory category;
    return getReportType(record.reportType, type, index, dsn) == 1 &&
           getReportCategory(type.category, category, index, dsn) == 1 && category.runName == L"Details";
}

int Intern::canBeDeleted(const StructProjModelSelection& selection, eIndex index, eDSN dsn)
{
    StructProjModelSelection stored;
    int applications = 0;
    return read<StructProjModelSelectionMarshal>(selection.key, stored, index, dsn) != 1 ||
                   stored.dataSource != dsn || getModelApplicationsOf(stored, applications, index, dsn) != 1 ||
                   applications == 0
               ? 1
               : 0;
}

int Intern::reopenDatabase(eIndex index, eDSN dsn)
{
    const KorDSNRequest request(dsn, index);
    for (const unsigned id : {133u, 154u, 155u, 156u, 157u, 158u, 159u, 160u, 168u, 138u}) {
        const KorString table = korodbc::tableNameOfId(id);
        KorDatabaseAccess::resetCachedTable(dsn, table);
        // no record type describes the elongations
        if (const RecordDescription* type = records::ofTable(table.toUtf8()))
            RecordAccess::resetCache(*type);
    }
    return 1;
}
