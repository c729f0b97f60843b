#include <korodbc/project/KorODBCProjectIntern.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/roots/KorAssert.h>

#include <optional>

// Saving and deleting.

namespace {

using Intern = KorODBCProjectIntern;

void raise(const char* assertion, int line) { KorAssert::korAssert(assertion, "KorODBCProjectIntern", line); }

KorString tableOf(const RecordDescription& type)
{
    return KorDatabaseAccess::getTableName(KorString::fromUtf8(type.table));
}

KorCellData valueOf(const ColumnDescription& column, const void* record)
{
    switch (column.kind) {
    case FieldKind::Integer:
        return column.integer(record);
    case FieldKind::Real:
        return column.real(record);
    case FieldKind::Text:
        break;
    }
    return column.text(record);
}

/// Writes the fields of a record into the columns from 1 on; what cannot be written, since it fails or another
/// column stands in its place, is told to `failed`, and the next one follows.
template <class Failed>
void writeFields(const RecordDescription& type, const KorString& table, eDSN dsn, const void* record,
                 Failed failed)
{
    const int key = type.keyOf(record);
    KorArray<KorColumn> columns;
    KorDatabaseAccess::getTableStructure(dsn, table, columns);
    const auto isThere = [&](std::size_t i) {
        const KorString wanted = KorString::fromUtf8(type.columns[i].name);
        return static_cast<long>(i) < columns.length() &&
               columns[static_cast<int>(i)].getName().compareNoCase(wanted) == 0;
    };
    const KorString keyText = KorString::format(L"%d", key);
    for (std::size_t i = 1; i < type.columns.size(); ++i) {
        // no row has a negative key
        const int nOk =
            key < 0 || !isThere(i)
                ? 0
                : KorDatabaseAccess::setTableColumnValue(dsn, table, L"Key", keyText, static_cast<int>(i),
                                                         valueOf(type.columns[i], record));
        if (nOk != 1)
            failed();
    }
}

/// Appends a row under a key that the service chooses, which becomes the record's.
int appendRow(eDSN dsn, const KorString& table, int& key)
{
    KorCellData cell;
    const int result = KorDatabaseAccess::appendNewLine(dsn, table, cell, true, false);
    if (result == 1)
        key = cell.getInt();
    return result;
}

/// True when a row under the key of the record is there to be written, or need not be; `notFound` is raised when
/// the record has a key and is stored nowhere.
template <class Marshal, class Record>
bool hasRow(const Record& record, const char* notFound, const KorString& table, eDSN dsn)
{
    Record stored;
    if (Marshal::getStructByKey(record.key, stored) != 1) {
        raise(notFound, __LINE__);
        return true;
    }
    if (stored.dataSource == dsn)
        return true;
    KorCellData key(record.key);
    const bool keepKey = true; // the row gets the key in the cell
    return KorDatabaseAccess::appendNewLine(dsn, table, key, true, keepKey) == 1;
}

template <class Marshal, class Record>
int store(Record& record, const char* notFound, eIndex index, eDSN dsn)
{
    KorDatabaseBatch batch;
    const KorDSNRequest request(dsn, index);
    const RecordDescription& type = Marshal::type();
    const KorString table = tableOf(type);
    const int keyBefore = record.key;
    if (keyBefore < 0) {
        appendRow(dsn, table, record.key);
    } else if (!hasRow<Marshal>(record, notFound, table, dsn)) {
        batch.undo();
        Intern::reopenDatabase(index, dsn);
        return -1;
    }
    writeFields(type, table, dsn, &record, [] { raise("1 == nOk", __LINE__); });
    const int result = batch.end(1);
    if (result != 1)
        record.key = keyBefore;
    return result;
}

// Deleting

/// Deletes a row of the requested data source, and of no other.
int deleteRow(const wchar_t* table, int key, eDSN dsn)
{
    return KorDatabaseAccess::doesTableExists(dsn, KorDatabaseAccess::getTableName(table)) == 1
               ? KorDatabaseAccess::deleteLine(table, KorCellData(key))
               : 0;
}

/// Deletes a record that the database keeps itself. `refuse` is shown the stored record and may give a result that
/// the deletion ends with instead.
template <class Marshal, class Record, class Refuse>
int erase(const Record& record, const wchar_t* table, eIndex index, eDSN dsn, Refuse refuse)
{
    KorDatabaseBatch batch;
    const KorDSNRequest request(dsn, index);
    // nobody adds a child between the count and the deletion
    const bool locked = KorDatabaseBatch::lock(dsn) == 1;
    Record stored;
    if (Marshal::getStructByKey(record.key, stored) != 1 || stored.dataSource != dsn)
        return batch.undo(0);
    if (const std::optional<int> refused = refuse(stored))
        return batch.undo(*refused);
    const int result = locked ? deleteRow(table, stored.key, dsn) : 0;
    return result == 1 ? batch.end(1) : batch.undo(result);
}

const auto always = [](const auto&) { return std::optional<int>(); };

int deleteXmlOf(int key, eIndex index, eDSN dsn)
{
    StructProjXMLData xml;
    xml.key = key;
    return Intern::deleteXMLData(xml, index, dsn);
}

} // namespace

int Intern::save(StructProjReportCategory& category, eIndex index, eDSN dsn)
{
    return store<StructProjReportCategoryMarshal>(category, "ReportCategoryFound == 1", index, dsn);
}
int Intern::save(StructProjReportType& type, eIndex index, eDSN dsn)
{
    return store<StructProjReportTypeMarshal>(type, "ReportTypeFound == 1", index, dsn);
}
int Intern::save(StructProjTemplate& record, eIndex index, eDSN dsn)
{
    return store<StructProjTemplateMarshal>(record, "TemplateFound == 1", index, dsn);
}
int Intern::save(StructProjReport& report, eIndex index, eDSN dsn)
{
    StructProjTemplate made;
    StructProjModelExtract extract;
    if (getTemplate(report.templateKey, made, 0, index, dsn) != 1)
        raise("TemplateFound == 1", __LINE__);
    if (report.modelExtract != -1 && getModelExtract(report.modelExtract, extract, index, dsn) != 1)
        raise("pio_StructProjReport.m_ModelExtractKey == -1 || retval == 1", __LINE__);
    return store<StructProjReportMarshal>(report, "retval == 1", index, dsn);
}
int Intern::save(StructProjModelSelection& selection, eIndex index, eDSN dsn)
{
    return store<StructProjModelSelectionMarshal>(selection, "retval == 1", index, dsn);
}
int Intern::save(StructProjModelSelectionApplication& application, eIndex index, eDSN dsn)
{
    return store<StructProjModelSelectionApplicationMarshal>(application, "retval == 1", index, dsn);
}
int Intern::save(StructProjModelExtract& extract, eIndex index, eDSN dsn)
{
    return store<StructProjModelExtractMarshal>(extract, "pio_StructProjModelExtract.m_key == -1 || retval == 1",
                                                index, dsn);
}
int Intern::save(StructProjModelExtractUpdateInfo& info, eIndex index, eDSN dsn)
{
    return store<StructProjModelExtractUpdateInfoMarshal>(info, "retval == 1", index, dsn);
}

int Intern::putXMLData(StructProjXMLData& xml, eIndex index, eDSN dsn)
{
    KorDatabaseBatch batch;
    const KorDSNRequest request(dsn, index);
    const KorString table = KorDatabaseAccess::getTableName(L"XMLData");
    StructProjXMLData written = xml;
    if (written.key < 0)
        if (const int result = appendRow(dsn, table, written.key); result != 1)
            return batch.undo(result);
    written.version = 1;
    bool complete = true;
    writeFields(StructProjXMLDataMarshal::type(), table, dsn, &written, [&] { complete = false; });
    const int result = complete ? batch.end(1) : batch.undo(0);
    if (result == 1)
        xml = written;
    return result;
}

int Intern::deleteReport(const StructProjReport& report, eIndex index, eDSN dsn)
{
    return erase<StructProjReportMarshal>(report, L"Reports", index, dsn, always);
}

int Intern::deleteTemplate(const StructProjTemplate& record, eIndex index, eDSN dsn)
{
    return erase<StructProjTemplateMarshal>(record, L"ReportTemplates", index, dsn, [&](const auto& stored) {
        int reports = 0;
        if (const int counted = getReportsOf(stored, reports, index, dsn); counted != 1)
            return std::optional(counted);
        if (reports > 0)
            return std::optional(-2);
        const int deleted = deleteXmlOf(stored.xmlData, index, dsn);
        return deleted == 1 ? std::nullopt : std::optional(deleted);
    });
}

int Intern::deleteReportType(const StructProjReportType& type, eIndex index, eDSN dsn)
{
    return erase<StructProjReportTypeMarshal>(type, L"ReportTypes", index, dsn, [&](const auto& stored) {
        int templates = 0;
        const int counted = getTemplatesOf(stored, templates, index, dsn);
        return counted == 1 && templates == 0 ? std::nullopt : std::optional(counted);
    });
}

int Intern::deleteModelSelection(const StructProjModelSelection& selection, eIndex index, eDSN dsn)
{
    return erase<StructProjModelSelectionMarshal>(
        selection, L"ModelSelections", index, dsn, [&](const auto& stored) {
            int applications = 0;
            const int counted = getModelApplicationsOf(stored, applications, index, dsn);
            if (counted != 1 || applications > 0)
                return std::optional(counted);
            deleteXmlOf(stored.xmlData, index, dsn); // a selection without document goes as well
            return std::optional<int>();
        });
}

int Intern::deleteModelSelectionApplication(const StructProjModelSelectionApplication& application, eIndex index,
                                            eDSN dsn)
{
    return erase<StructProjModelSelectionApplicationMarshal>(
        application, L"ModelSelectionApplications", index, dsn, [&](const auto& stored) {
            int extracts = 0;
            const int counted = getExtractsOf(stored, extracts, index, dsn);
            if (counted == 1 && extracts == 0)
                return std::optional<int>();
            return std::optional(counted == 1 ? -2 : counted);
        });
}

int Intern::deleteModelExtract(const StructProjModelExtract& extract, eIndex index, eDSN dsn)
{
    return erase<StructProjModelExtractMarshal>(extract, L"ModelExtracts", index, dsn, always);
}

int Intern::deleteXMLData(const StructProjXMLData& xml, eIndex index, eDSN dsn)
{
    KorDatabaseBatch batch(KorDatabaseBatch::Kind::Joined);
    const KorDSNRequest request(dsn, index);
    return batch.end(deleteRow(L"XmlData", xml.key, dsn) == 1 ? 1 : 0);
}
