#pragma once

#include <korodbc/records/RecordDescription.h>

#include <span>
#include <string_view>

/// The record types of the system, by family; one list per record source.
namespace records {

using DescriptionFunction = const RecordDescription& (*)();

std::span<const DescriptionFunction> detailStyleRecords();
std::span<const DescriptionFunction> detailViewRecords();
std::span<const DescriptionFunction> detailObjectRecords();
std::span<const DescriptionFunction> detailAnnotationRecords();
std::span<const DescriptionFunction> detailProcessRecords();
std::span<const DescriptionFunction> numberingRecords();
std::span<const DescriptionFunction> detailCatalogueRecords();
std::span<const DescriptionFunction> authorRecords();
std::span<const DescriptionFunction> defaultRecords();
std::span<const DescriptionFunction> toolbarRecords();
std::span<const DescriptionFunction> autoConnectionRecords();
std::span<const DescriptionFunction> projectRecords();
std::span<const DescriptionFunction> exchangeRecords();
std::span<const DescriptionFunction> boltRecords();
std::span<const DescriptionFunction> materialRecords();
std::span<const DescriptionFunction> weldRecords();
std::span<const DescriptionFunction> sectionRecords();
std::span<const DescriptionFunction> gratingRecords();
std::span<const DescriptionFunction> combinationRecords();
std::span<const DescriptionFunction> languageRecords();
std::span<const DescriptionFunction> presentationRecords();
std::span<const DescriptionFunction> ruleRecords();
std::span<const DescriptionFunction> sectionBehaviourRecords();
std::span<const DescriptionFunction> anchorRecords();
std::span<const DescriptionFunction> boltAssemblyRecords();
std::span<const DescriptionFunction> connectorRecords();
std::span<const DescriptionFunction> preferredSizesRecords();
std::span<const DescriptionFunction> classificationRecords();
std::span<const DescriptionFunction> applicationRecords();
std::span<const DescriptionFunction> jointRecords();
std::span<const DescriptionFunction> footingRecords();
std::span<const DescriptionFunction> wizardRecords();
std::span<const DescriptionFunction> dynamicSectionRecords();
std::span<const DescriptionFunction> textRecords();
std::span<const DescriptionFunction> detailSettingRecords();
std::span<const DescriptionFunction> detailOptionRecords();
std::span<const DescriptionFunction> unitRecords();
std::span<const DescriptionFunction> nameMapRecords();
std::span<const DescriptionFunction> conversionRecords();
std::span<const DescriptionFunction> formatRecords();
std::span<const DescriptionFunction> profileFamilyRecords();

/// Every record type.
std::span<const DescriptionFunction> all();
/// The record type of a table, by its exact logical name; nullptr when no type describes it.
const RecordDescription* ofTable(std::string_view table);
/// True for the tables of a detail database, which every detail database and exported detail file has.
bool isDetailTable(const RecordDescription& type);
/// True for the tables behind reports and model selections.
bool isProjectTable(const RecordDescription& type);

} // namespace records
