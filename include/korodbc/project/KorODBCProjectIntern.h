#pragma once

#include <korodbc/records/configuration/NameMapRecords.h>
#include <korodbc/records/project/ProjectRecords.h>

/// Reads and writes the project records of one database, which the last two arguments name. Outputs are unchanged
/// when a read fails. Each write is a batch of its own, or a part of the caller's.
/// Threads: one. Needs: an open repository.
class KorODBCProjectIntern {
public:
    virtual ~KorODBCProjectIntern() = default;

    // Records by key or run name: 1 when found, else 0

    static int getReport(const long& key, StructProjReport& report, eIndex index, eDSN dsn);
    static int getReport(const KorString& runName, StructProjReport& report, eIndex index, eDSN dsn);
    /// With `withXml` also reads the XML document into the template; 0 when that is missing.
    static int getTemplate(const long& key, StructProjTemplate& record, int withXml, eIndex index, eDSN dsn);
    static int getTemplate(const KorString& runName, StructProjTemplate& record, int withXml, eIndex index,
                           eDSN dsn);
    /// Reads the XML document into the selection, too; -1 when the selection or its document is missing.
    static int getModelSelection(const long& key, StructProjModelSelection& selection, eIndex index, eDSN dsn);
    static int getModelSelection(const KorString& runName, StructProjModelSelection& selection, eIndex index,
                                 eDSN dsn);
    static int getModelSelectionApplication(const long& key, StructProjModelSelectionApplication& application,
                                            eIndex index, eDSN dsn);
    static int getModelSelectionApplication(const KorString& runName,
                                            StructProjModelSelectionApplication& application, eIndex index,
                                            eDSN dsn);
    static int getModelExtract(const long& key, StructProjModelExtract& extract, eIndex index, eDSN dsn);
    static int getModelExtract(const KorString& runName, StructProjModelExtract& extract, eIndex index, eDSN dsn);
    static int getModelExtractUpdateInfo(const long& key, StructProjModelExtractUpdateInfo& info, eIndex index,
                                         eDSN dsn);
    static int getModelExtractUpdateInfo(const KorString& runName, StructProjModelExtractUpdateInfo& info,
                                         eIndex index, eDSN dsn);
    static int getReportType(const long& key, StructProjReportType& type, eIndex index, eDSN dsn);
    static int getReportType(const KorString& runName, StructProjReportType& type, eIndex index, eDSN dsn);
    static int getReportCategory(const long& key, StructProjReportCategory& category, eIndex index, eDSN dsn);
    static int getReportCategory(const KorString& runName, StructProjReportCategory& category, eIndex index,
                                 eDSN dsn);
    static int getCategory(const long& key, StructProjReportCategory& category, eIndex index, eDSN dsn);
    static int getCategory(const KorString& runName, StructProjReportCategory& category, eIndex index, eDSN dsn);
    static int getMapInternToExtern(const KorString& runName, StructMapInternToExtern& map, eIndex index,
                                    eDSN dsn);
    /// The document with the key in `xml`.
    static int loadXMLDataByKey(StructProjXMLData& xml, eIndex index, eDSN dsn);

    // Run names of all records of the database: 1, or 0 when they cannot be read

    static int getModelSelectionList(KorArray<KorString>& names, eIndex index, eDSN dsn);
    static int getModelSelectionApplicationList(KorArray<KorString>& names, eIndex index, eDSN dsn);
    static int getReportList(KorArray<KorString>& names, eIndex index, eDSN dsn);
    static int getModelExtractList(KorArray<KorString>& names, eIndex index, eDSN dsn);
    static int getModelExtractUpdateInfoList(KorArray<KorString>& names, eIndex index, eDSN dsn);
    static int getTemplateList(KorArray<KorString>& names, eIndex index, eDSN dsn);
    static int getReportTypeList(KorArray<KorString>& names, eIndex index, eDSN dsn);
    /// As in the table.
    static int getReportCategoriesList(KorArray<KorString>& names, eIndex index, eDSN dsn);
    static int getCategoriesList(KorArray<KorString>& names, eIndex index, eDSN dsn);
    /// Lengthens `keys` to the number of templates, whatever these entries hold, and appends the key of every
    /// template in table order behind them. Returns the length.
    static int getTemplateKeyList(KorArray<long>& keys, eIndex index, eDSN dsn);

    // Number of records that refer to one: 1, or -1 and `count` as it was when they cannot be read

    static int getReportsOf(const StructProjTemplate& record, int& count, eIndex index, eDSN dsn);
    static int getTemplatesOf(const StructProjReportType& type, int& count, eIndex index, eDSN dsn);
    static int getModelApplicationsOf(const StructProjModelSelection& selection, int& count, eIndex index,
                                      eDSN dsn);
    static int getExtractsOf(const StructProjModelSelectionApplication& application, int& count, eIndex index,
                             eDSN dsn);

    /// True when the template's report type is of the category named exactly "Details".
    static bool isDrawingTemplate(StructProjTemplate record, eIndex index, eDSN dsn);
    /// 0 when the selection is kept in this database and has applications there; 1 otherwise, also when that
    /// cannot be read.
    static int canBeDeleted(const StructProjModelSelection& selection, eIndex index, eDSN dsn);

    // Writing

    /// Writes all fields of the record. One with a negative key becomes a new row, whose key it gets (a negative
    /// one when no row could be added); one that the database takes over from another gets a row under its key
    /// there, but no document: see putXMLData. 1, also when the stored record or one that it refers to is missing,
    /// or a field cannot be written: each of these raises an assertion. -1 when the row cannot be taken over, 0
    /// when the database could not be stored. In a batch that is undone later a new record keeps its key, which no
    /// row has then.
    static int save(StructProjReportCategory& category, eIndex index, eDSN dsn);
    static int save(StructProjReportType& type, eIndex index, eDSN dsn);
    static int save(StructProjTemplate& record, eIndex index, eDSN dsn);
    static int save(StructProjReport& report, eIndex index, eDSN dsn);
    static int save(StructProjModelSelection& selection, eIndex index, eDSN dsn);
    static int save(StructProjModelSelectionApplication& application, eIndex index, eDSN dsn);
    static int save(StructProjModelExtract& extract, eIndex index, eDSN dsn);
    static int save(StructProjModelExtractUpdateInfo& info, eIndex index, eDSN dsn);
    /// Stores the document, with version 1, under its key or, when that is negative, in a new row, whose key the
    /// record gets. A document that another database keeps has no row here: it is stored with the key -1, and the
    /// record that it belongs to is saved with the new key. 1 when it is stored; otherwise the database and the
    /// record are as before.
    static int putXMLData(StructProjXMLData& xml, eIndex index, eDSN dsn);

    /// Deletes a record that this database keeps itself, with the XML document that belongs to it: 1. Nothing is
    /// deleted with any other result: 0 when the database does not keep it or cannot be written, -1 when its
    /// children cannot be counted.
    static int deleteReport(const StructProjReport& report, eIndex index, eDSN dsn);
    /// -2 when reports are made from it; 0 also when its document is missing.
    static int deleteTemplate(const StructProjTemplate& record, eIndex index, eDSN dsn);
    /// 1 also when it has templates: it is kept then.
    static int deleteReportType(const StructProjReportType& type, eIndex index, eDSN dsn);
    /// 1 also when it has applications: it is kept then.
    static int deleteModelSelection(const StructProjModelSelection& selection, eIndex index, eDSN dsn);
    /// -2 when it has extracts.
    static int deleteModelSelectionApplication(const StructProjModelSelectionApplication& application,
                                               eIndex index, eDSN dsn);
    static int deleteModelExtract(const StructProjModelExtract& extract, eIndex index, eDSN dsn);
    /// 1 when this database had a document with that key, else 0.
    static int deleteXMLData(const StructProjXMLData& xml, eIndex index, eDSN dsn);

    /// The next reads of project records see what other programs have stored. Always 1.
    static int reopenDatabase(eIndex index, eDSN dsn);
};
