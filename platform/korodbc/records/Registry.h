#pragma once

#include <korodbc/records/RecordDescription.h>

#include <span>
#include <string_view>

/// The record types of the system, by family; each record source ends with its own.
namespace records {

using DescriptionFunction = const RecordDescription& (*)();

/// The record types of one source.
using Family = std::span<const DescriptionFunction>;

extern const Family detailStyleRecords, detailViewRecords, detailObjectRecords, detailAnnotationRecords,
    detailProcessRecords, numberingRecords, detailCatalogueRecords, authorRecords, defaultRecords, toolbarRecords,
    autoConnectionRecords, projectRecords, exchangeRecords, boltRecords, materialRecords, weldRecords,
    sectionRecords, gratingRecords, combinationRecords, languageRecords, presentationRecords, ruleRecords,
    sectionBehaviourRecords, anchorRecords, boltAssemblyRecords, connectorRecords, preferredSizesRecords,
    classificationRecords, applicationRecords, jointRecords, footingRecords, wizardRecords, dynamicSectionRecords,
    textRecords, detailSettingRecords, detailOptionRecords, unitRecords, nameMapRecords, conversionRecords,
    formatRecords, profileFamilyRecords;

/// Every record type.
Family all();
/// The record type of a table, by its exact logical name; nullptr when no type describes it.
const RecordDescription* ofTable(std::string_view table);
/// True for the tables of a detail database, which every detail database and exported detail file has.
bool isDetailTable(const RecordDescription& type);
/// True for the tables behind reports and model selections.
bool isProjectTable(const RecordDescription& type);

} // namespace records
