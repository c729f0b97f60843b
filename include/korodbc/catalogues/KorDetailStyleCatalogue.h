#pragma once

#include <korodbc/catalogues/DetailCatalogueReader.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailSettingRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>

#include <utility>

/// Readers of detail styles and their views: records by run name and by key, run names, whole tables. Results: 1
/// for found or read, another value, mostly 0, otherwise; outputs are unchanged on failure. Reads go to the
/// current data source.
class KorDetailStyleCatalogue : protected DetailCatalogueReader {
public:
    // Detail styles

    static int getDetailMaster(const KorString& runName, StructDetailMaster& record)
    {
        return byRunName(runName, record);
    }
    static int getDetailMaster(const KorOdbcKey& key, StructDetailMaster& record) { return byKey(key, record); }
    /// The master of a style. A plain number is the key of a style, a KorOdbcKey that of a master.
    static int getDetailMaster(long styleKey, StructDetailMaster& record)
    {
        return StructDetailMasterMarshal::getByStyleKey(styleKey, record);
    }
    static int getDetailMaster(long baseCategory, long subCategory, StructDetailMaster& record)
    {
        return StructDetailMasterMarshal::getByBaseCategoryAndSubCategory(baseCategory, subCategory, record);
    }
    /// By base category and number inside it.
    static int getDetailMasterList(KorArray<KorString>& names)
    {
        return StructDetailMasterMarshal::getRunNameListOrdered(names);
    }
    static int getDetailMastersTable(KorArray<StructDetailMaster>& records)
    {
        return StructDetailMasterMarshal::getTableOrdered(records);
    }
    static int getDetBaseCategory(const KorString& runName, StructDetBaseCategory& record)
    {
        return byRunName(runName, record);
    }
    static int getDetBaseCategory(const KorOdbcKey& key, StructDetBaseCategory& record)
    {
        return byKey(key, record);
    }
    static int getDetBaseCategoryList(KorArray<KorString>& names)
    {
        return runNames<StructDetBaseCategory>(names);
    }
    static int getDetObjSelectionStrategy(const KorString& runName, StructDetObjSelectionStrategy& record)
    {
        return byRunName(runName, record);
    }
    static int getDetObjSelectionStrategyList(KorArray<KorString>& names)
    {
        return runNames<StructDetObjSelectionStrategy>(names);
    }
    static int getDetailOrientation(const KorString& runName, StructDetailOrientation& record)
    {
        return byRunName(runName, record);
    }
    static int getDetailOrientationList(KorArray<KorString>& names)
    {
        return runNames<StructDetailOrientation>(names);
    }
    static int getObjectPositionList(KorArray<KorString>& names)
    {
        return runNames<StructBeamPositionCalculation>(names);
    }

    // Suites of detail processes; a suite is read with its items

    static int getDetProcessesSuiteDefinition(const KorString& runName, StructDetProcessesSuiteDefinition& record)
    {
        return withItemsByRunName(runName, record);
    }
    static int getDetProcessesSuiteDefinition(const KorOdbcKey& key, StructDetProcessesSuiteDefinition& record)
    {
        return withItemsByKey(key, record);
    }
    static int getDetProcessesSuiteDefinitionList(KorArray<KorString>& names)
    {
        return runNames<StructDetProcessesSuiteDefinition>(names);
    }

    // Views

    static int getDetViewRequest(const KorString& runName, StructDetViewRequest& record)
    {
        return byRunName(runName, record);
    }
    static int getDetViewRequestList(KorArray<KorString>& names) { return runNames<StructDetViewRequest>(names); }
    /// 1 in `flag` for a view that cuts and callouts are made from.
    static int getDetViewUsedForCutsAndCallouts(const KorString& runName, int& flag)
    {
        return fieldOfRunName(runName, &StructDetViewRequest::usedForCutsAndCallouts, flag);
    }
    static int getDetViewCalloutTitleTemplate(const KorString& runName, KorString& titleTemplate)
    {
        return fieldOfRunName(runName, &StructDetViewRequest::calloutTitleTemplate, titleTemplate);
    }
    static int getDetViewRequestProcessOverideList(KorArray<KorString>& names)
    {
        return runNames<StructDetailProcessScaleOverride>(names);
    }
    static int getDetViewSystemAndBox(const KorString& runName, StructDetViewSystemAndBox& record)
    {
        return byRunName(runName, record);
    }
    static int getDetViewSystemAndBoxList(KorArray<KorString>& names)
    {
        return runNames<StructDetViewSystemAndBox>(names);
    }
    /// The last one with that name.
    static int getDetViewSystemSource(const KorString& runName, StructDetViewSystemSource& record)
    {
        return lastNamed(runName, record);
    }
    /// Names, and keys, in table order, appended.
    static int getDetViewSystemSourcesList(KorArray<KorString>& names)
    {
        return appendEach(&StructDetViewSystemSource::runName, names);
    }
    static int getDetViewSystemSourcesList(KorArray<int>& keys)
    {
        return appendEach(&StructDetViewSystemSource::key, keys);
    }
    static int getDetViewSystemSourcesTable(KorArray<StructDetViewSystemSource>& records)
    {
        return table(records);
    }
    static int getDetViewSelectMode(const KorString& runName, StructDetViewSelectMode& record)
    {
        return byRunName(runName, record);
    }
    static int getDetViewSelectMode(const KorOdbcKey& key, StructDetViewSelectMode& record)
    {
        return byKey(key, record);
    }
    static int getDetViewSelectModeList(KorArray<KorString>& names)
    {
        return runNames<StructDetViewSelectMode>(names);
    }
    static int getDetViewLengthClip(const KorString& runName, StructDetViewLengthClip& record)
    {
        return byRunName(runName, record);
    }
    static int getDetViewLengthClipList(KorArray<KorString>& names)
    {
        return runNames<StructDetViewLengthClip>(names);
    }
    static int getClippingTypeList(KorArray<KorString>& names) { return runNames<StructClippingType>(names); }
    static int getClippingGapTable(KorArray<StructClippingGap>& records) { return table(records); }
    /// All gaps, in mm on paper, in table order.
    static int getClippingGapList(KorArray<double>& gaps)
    {
        KorArray<double> read;
        const int result = appendEach(&StructClippingGap::gap, read);
        if (result == 1)
            gaps = std::move(read);
        return result;
    }

    // Arrangement of views on the sheet

    static int getDetViewArrangeStrategy(const KorString& runName, StructDetViewArrangeStrategy& record)
    {
        return byRunName(runName, record);
    }
    static int getDetViewArrangeStrategyList(KorArray<KorString>& names)
    {
        return runNames<StructDetViewArrangeStrategy>(names);
    }
    static int getDetViewArrangeDirection(const KorString& runName, StructDetViewArrangeDirection& record)
    {
        return byRunName(runName, record);
    }
    static int getDetViewArrangeDirection(const KorOdbcKey& key, StructDetViewArrangeDirection& record)
    {
        return byKey(key, record);
    }
    static int getDetViewArrangeDirectionList(KorArray<KorString>& names)
    {
        return runNames<StructDetViewArrangeDirection>(names);
    }
};
