#pragma once

#include <korodbc/records/project/ProjectMarshal.h>

// The records behind reports and model selections. They are kept in the project data of the drawing, in those of
// the user and in the advanced ones; what is shipped for the user stands in the main configuration. `dataSource`
// tells where a record was read; it is all bits set in a new one.

/// An XML document. Table "XMLData".
struct StructProjXMLData {
    int key = -1;
    int version = 1; // of the document's layout
    KorString xmlText;
    eDSN dataSource = KorDSNDefinitions::kUnresolved;
};
struct StructProjXMLDataMarshal : ProjectMarshal<StructProjXMLData> {};

/// A group of report types. Table "ReportCategories".
struct StructProjReportCategory {
    int key = -1;
    KorString runName;
    KorString description;
    KorString ownerText;
    eDSN dataSource = KorDSNDefinitions::kUnresolved;
};
struct StructProjReportCategoryMarshal : ProjectMarshal<StructProjReportCategory> {};

/// A kind of report. Table "ReportTypes".
struct StructProjReportType {
    int key = -1;
    KorString runName;
    int category = -1; // report category
    KorString fileExtension;
    KorString ownerText;
    eDSN dataSource = KorDSNDefinitions::kUnresolved;
};
struct StructProjReportTypeMarshal : ProjectMarshal<StructProjReportType> {};

/// A template that reports are made from. Table "ReportTemplates".
struct StructProjTemplate {
    int key = -1;
    KorString runName;
    int reportType = -1;
    int xmlData = -1; // its XML document, -1 without
    KorString fileName;
    KorString description;
    KorString ownerText;
    KorString xmlText; // the document, when it was read with the template
    eDSN dataSource = KorDSNDefinitions::kUnresolved;
};
struct StructProjTemplateMarshal : ProjectMarshal<StructProjTemplate> {
    /// The templates of a report type; 1 also when it has none.
    static int getByReportTypeKey(const long& key, KorArray<StructProjTemplate>& templates);
};

/// What belongs to a part of the model: the conditions are in the XML document. Table "ModelSelections".
struct StructProjModelSelection {
    int key = -1;
    KorString runName;
    KorString description;
    int xmlData = -1; // its XML document, -1 without
    KorString ownerText;
    KorString xmlText; // the document, when it was read with the selection
    eDSN dataSource = KorDSNDefinitions::kUnresolved;
};
struct StructProjModelSelectionMarshal : ProjectMarshal<StructProjModelSelection> {};

/// A use of a model selection. Table "ModelSelectionApplications".
struct StructProjModelSelectionApplication {
    int key = -1;
    KorString runName;
    int modelSelection = -1;
    KorString description;
    KorString ownerText;
    eDSN dataSource = KorDSNDefinitions::kUnresolved;
};
struct StructProjModelSelectionApplicationMarshal : ProjectMarshal<StructProjModelSelectionApplication> {
    /// The applications of a model selection; 1 also when it has none.
    static int getByModelSelectionKey(const long& key,
                                      KorArray<StructProjModelSelectionApplication>& applications);
};

/// When an extract follows the model. Table "ModelExtractUpdateInfo".
struct StructProjModelExtractUpdateInfo {
    int key = -1;
    KorString runName;
    int onOpening = 0;    // when the drawing is opened
    int beforeReport = 0; // before a report is made of it
    int asksFirst = 0;    // only when the user agrees
    KorString lastUpdate; // date and time, empty when never
    KorString ownerText;
    eDSN dataSource = KorDSNDefinitions::kUnresolved;
};
struct StructProjModelExtractUpdateInfoMarshal : ProjectMarshal<StructProjModelExtractUpdateInfo> {};

/// What an application of a selection took out of the model. Table "ModelExtracts".
struct StructProjModelExtract {
    int key = -1;
    KorString runName;
    int modelSelectionApplication = -1;
    int updateInfo = -1; // -1: it is never updated
    KorString fileName;
    KorString ownerText;
    eDSN dataSource = KorDSNDefinitions::kUnresolved;
};
struct StructProjModelExtractMarshal : ProjectMarshal<StructProjModelExtract> {
    /// The extracts of a model selection application; 1 also when it has none.
    static int getByModelSelectionApplicationKey(const long& key, KorArray<StructProjModelExtract>& extracts);
};

/// A report: a template filled from an extract of the model. Table "Reports".
struct StructProjReport {
    int key = -1;
    KorString runName;
    int templateKey = -1;
    int modelExtract = -1; // -1: the whole model
    KorString fileName;
    KorString description;
    KorString ownerText;
    eDSN dataSource = KorDSNDefinitions::kUnresolved;
};
struct StructProjReportMarshal : ProjectMarshal<StructProjReport> {
    /// The reports of a template; 1 also when it has none.
    static int getByTemplateKey(const long& key, KorArray<StructProjReport>& reports);
};
