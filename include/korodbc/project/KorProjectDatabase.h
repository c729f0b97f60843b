#pragma once

#include <korodbc/project/KorODBCProjectIntern.h>

/// The operations of KorODBCProjectIntern on one database, with the same results. `Where` says which: its `dsn()`
/// and `index()` are asked at every call. A record is named by its key or run name. Only KorODBCProject also lists
/// the keys of templates and deletes all applications or extracts.
template <class Where>
class KorProjectDatabase {
    using Intern = KorODBCProjectIntern;
    static eDSN d() { return Where::dsn(); }
    static eIndex i() { return Where::index(); }
    using Names = KorArray<KorString>;

public:
    virtual ~KorProjectDatabase() = default;

    static int getReport(const auto& which, StructProjReport& r) { return Intern::getReport(which, r, i(), d()); }
    static int getTemplate(const auto& which, StructProjTemplate& r, int withXml)
    {
        return Intern::getTemplate(which, r, withXml, i(), d());
    }
    static int getModelSelection(const auto& which, StructProjModelSelection& r)
    {
        return Intern::getModelSelection(which, r, i(), d());
    }
    static int getModelSelectionApplication(const auto& which, StructProjModelSelectionApplication& r)
    {
        return Intern::getModelSelectionApplication(which, r, i(), d());
    }
    static int getModelExtract(const auto& which, StructProjModelExtract& r)
    {
        return Intern::getModelExtract(which, r, i(), d());
    }
    static int getModelExtractUpdateInfo(const auto& which, StructProjModelExtractUpdateInfo& r)
    {
        return Intern::getModelExtractUpdateInfo(which, r, i(), d());
    }
    static int getReportType(const auto& which, StructProjReportType& r)
    {
        return Intern::getReportType(which, r, i(), d());
    }
    static int getReportCategory(const auto& which, StructProjReportCategory& r)
    {
        return Intern::getReportCategory(which, r, i(), d());
    }
    static int getCategory(const auto& which, StructProjReportCategory& r)
    {
        return Intern::getCategory(which, r, i(), d());
    }
    static int getMapInternToExtern(const KorString& runName, StructMapInternToExtern& r)
    {
        return Intern::getMapInternToExtern(runName, r, i(), d());
    }
    static int loadXMLDataByKey(StructProjXMLData& r) { return Intern::loadXMLDataByKey(r, i(), d()); }

    static int getModelSelectionList(Names& names) { return Intern::getModelSelectionList(names, i(), d()); }
    static int getModelSelectionApplicationsList(Names& names)
    {
        return Intern::getModelSelectionApplicationList(names, i(), d());
    }
    static int getReportList(Names& names) { return Intern::getReportList(names, i(), d()); }
    static int getModelExtractList(Names& names) { return Intern::getModelExtractList(names, i(), d()); }
    static int getModelExtractUpdateInfoList(Names& names)
    {
        return Intern::getModelExtractUpdateInfoList(names, i(), d());
    }
    static int getTemplateList(Names& names) { return Intern::getTemplateList(names, i(), d()); }
    static int getReportTypeList(Names& names) { return Intern::getReportTypeList(names, i(), d()); }
    static int getReportCategoriesList(Names& names) { return Intern::getReportCategoriesList(names, i(), d()); }
    static int getCategoriesList(Names& names) { return Intern::getCategoriesList(names, i(), d()); }

    static int getReportsOf(const StructProjTemplate& r, int& n) { return Intern::getReportsOf(r, n, i(), d()); }
    static int getTemplatesOf(const StructProjReportType& r, int& n)
    {
        return Intern::getTemplatesOf(r, n, i(), d());
    }
    static int getModelApplicationsOf(const StructProjModelSelection& r, int& n)
    {
        return Intern::getModelApplicationsOf(r, n, i(), d());
    }
    static int getExtractsOf(const StructProjModelSelectionApplication& r, int& n)
    {
        return Intern::getExtractsOf(r, n, i(), d());
    }
    static bool isDrawingTemplate(const StructProjTemplate& r) { return Intern::isDrawingTemplate(r, i(), d()); }
    static int canBeDeleted(const StructProjModelSelection& r) { return Intern::canBeDeleted(r, i(), d()); }

    static int save(auto& record) { return Intern::save(record, i(), d()); }
    static int putXMLData(StructProjXMLData& r) { return Intern::putXMLData(r, i(), d()); }
    static int deleteReport(const StructProjReport& r) { return Intern::deleteReport(r, i(), d()); }
    static int deleteTemplate(const StructProjTemplate& r) { return Intern::deleteTemplate(r, i(), d()); }
    static int deleteReportType(const StructProjReportType& r) { return Intern::deleteReportType(r, i(), d()); }
    static int deleteModelSelection(const StructProjModelSelection& r)
    {
        return Intern::deleteModelSelection(r, i(), d());
    }
    static int deleteModelSelectionApplication(const StructProjModelSelectionApplication& r)
    {
        return Intern::deleteModelSelectionApplication(r, i(), d());
    }
    static int deleteModelExtract(const StructProjModelExtract& r)
    {
        return Intern::deleteModelExtract(r, i(), d());
    }
    static int deleteXMLData(const StructProjXMLData& r) { return Intern::deleteXMLData(r, i(), d()); }
    static int reopenDatabase() { return Intern::reopenDatabase(i(), d()); }
};
