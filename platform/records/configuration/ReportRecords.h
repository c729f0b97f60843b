#pragma once

#include "repository/RecordMarshal.h"

/// The part of a model that a report was made of. Table "ModelExtracts".
struct StructModelExtract {
    int key = -1;
    KorString runName;
    int modelSelectionApplication = -1;
    int updateInfo = -1;
    KorString fileName;
};
template <>
const RecordDescription& descriptionOf<StructModelExtract>();
struct StructModelExtractMarshal : RecordMarshal<StructModelExtract> {};

/// A kind of report. Table "ReportTypes".
struct StructReportType {
    int key = -1;
    KorString runName;
    int category = -1; // report category
    KorString fileExtension;
};
template <>
const RecordDescription& descriptionOf<StructReportType>();
struct StructReportTypeMarshal : RecordMarshal<StructReportType> {};

/// A template that reports are made from. Table "ReportTemplates".
struct StructReportTemplate {
    int key = -1;
    KorString runName;
    int reportType = -1;
    int xmlData = -1;
    KorString fileName;
};
template <>
const RecordDescription& descriptionOf<StructReportTemplate>();
struct StructReportTemplateMarshal : RecordMarshal<StructReportTemplate> {};

/// An XML document. Table "XMLData".
struct StructXMLData {
    int key = -1;
    int version = 1;
    KorString xmlText;
};
template <>
const RecordDescription& descriptionOf<StructXMLData>();
struct StructXMLDataMarshal : RecordMarshal<StructXMLData> {};
