#pragma once

#include <korodbc/catalogues/DetailReader.h>
#include <korodbc/records/configuration/SectionRecords.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailOptionRecords.h>
#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>

/// The records that detail styles and detail processes are made of, in the requested data source or without a
/// request in the manager's database. Results: 1 found or done, 0 not found; outputs are unchanged unless the
/// result is 1. Threads: one. Needs: an open repository.
class KorODBCDetStyle : private DetailReader<StructDetailStyle> {
public:
    // Objects and how they are drawn

    static int getDetObjQualifier(const KorOdbcKey& key, StructDetObjQualifier& record)
    {
        return byKey(key, record);
    }
    static int getDetObjQualifierSet(const KorOdbcKey& key, StructDetObjQualifierSet& record)
    {
        return byKey(key, record);
    }
    static int getDetObjQualifierSet(const KorString& name, StructDetObjQualifierSet& record)
    {
        return byRunName(name, record);
    }
    static int getDetObjQualifierSetTable(KorArray<StructDetObjQualifierSet>& records) { return table(records); }
    /// Appends the sets of a group to `records`; 1 when there are any.
    static int getDetObjQualifierSetByGroup(const KorOdbcKey& group, KorArray<StructDetObjQualifierSet>& records)
    {
        return current([&] { return StructDetObjQualifierSetMarshal::getByGroup(group, records); });
    }
    static int getDetObjSelectionStrategy(const KorOdbcKey& key, StructDetObjSelectionStrategy& record)
    {
        return byKey(key, record);
    }
    static int getDetObjReprMap(const KorOdbcKey& key, StructDetObjReprMap& record) { return byKey(key, record); }
    static int getDetObjAppearance(const KorOdbcKey& key, StructDetObjAppearance& record)
    {
        return byKey(key, record);
    }
    static int getDetHatchSettings(const KorOdbcKey& key, StructDetHatchSettings& record)
    {
        return byKey(key, record);
    }
    static int getLinetypes(const KorOdbcKey& key, StructLinetypes& record) { return byKey(key, record); }
    static int getDetAcadSettings(const KorOdbcKey& key, StructDetAcadSettings& record)
    {
        return byKey(key, record);
    }
    static int getDetGridRefSettings(const KorOdbcKey& key, StructDetGridRefSettings& record)
    {
        return byKey(key, record);
    }

    // Labels

    static int getDetObjAnnotationStrategy(const KorOdbcKey& key, StructDetObjAnnotationStrategy& record)
    {
        return byKey(key, record);
    }
    /// Appends the strategies of a group to `records`; 1 when there are any.
    static int getDetObjAnnotationStrategyByGroup(const KorOdbcKey& group,
                                                  KorArray<StructDetObjAnnotationStrategy>& records)
    {
        return current([&] { return StructDetObjAnnotationStrategyMarshal::getByGroup(group, records); });
    }
    static int getDetAnnotationType(const KorOdbcKey& key, StructDetAnnotationType& record)
    {
        return byKey(key, record);
    }
    static int getDetLeaderStyle(const KorOdbcKey& key, StructDetLeaderStyle& record)
    {
        return byKey(key, record);
    }
    static int getDetArrangerControl(const KorOdbcKey& key, StructDetArrangerControl& record)
    {
        return byKey(key, record);
    }
    static int getDetArrangerStrategy(const KorOdbcKey& key, StructDetArrangerStrategy& record)
    {
        return byKey(key, record);
    }

    // Views

    static int getDetViewRequest(const KorOdbcKey& key, StructDetViewRequest& record)
    {
        return byKey(key, record);
    }
    static int getDetViewRequestTable(KorArray<StructDetViewRequest>& records) { return table(records); }
    static int getDetViewSystemSource(const KorOdbcKey& key, StructDetViewSystemSource& record)
    {
        return byKey(key, record);
    }
    static int getDetViewSystemAndBox(const KorOdbcKey& key, StructDetViewSystemAndBox& record)
    {
        return byKey(key, record);
    }
    /// Type of a column of the table of systems and boxes, counted from 0: a value of KorItemType::BaseTypes.
    /// Without that table or column, that of an integer.
    static long getSystemAndBoxColumnType(int column);
    static int getCoordSystemSelector(const KorOdbcKey& key, StructCoordSystemSelector& record)
    {
        return byKey(key, record);
    }
    static int getDetViewLengthClip(const KorOdbcKey& key, StructDetViewLengthClip& record)
    {
        return byKey(key, record);
    }
    static int getDetViewArrangeStrategy(const KorOdbcKey& key, StructDetViewArrangeStrategy& record)
    {
        return byKey(key, record);
    }
    static int getDetailOrientation(const KorOdbcKey& key, StructDetailOrientation& record)
    {
        return byKey(key, record);
    }

    // Base categories of views

    static int getDetBaseCategoriesTable(KorArray<StructDetBaseCategory>& records) { return table(records); }
    static int getDetViewRequestCategoriesTable(KorArray<StructDetViewRequestCategory>& records)
    {
        return table(records);
    }
    /// Name of the first base category that a view request is in.
    static int getDetBaseCategoryByDetViewRequestKey(long requestKey, KorString& name);
    /// Stores the category entries of a view request: removes the deleted ones, also from the request, and appends
    /// those with a negative key, which get their keys. A new entry stays as it is when it is deleted or its base
    /// category does not exist. 0 for an unknown view request, and, with it unchanged, when the entries could
    /// not be stored.
    static int setDetViewRequestCategories(StructDetViewRequest& request);

    // Dimensions

    /// With the items of the strategy.
    static int getDetViewDimStrategy(const KorOdbcKey& key, StructDetViewDimStrategy& record)
    {
        return withItems<StructDetViewDimStrategyMarshal>(key, record);
    }
    static int getDetViewDimRequestLinear(const KorOdbcKey& key, StructDetViewDimRequestLinear& record)
    {
        return byKey(key, record);
    }
    static int getDetViewDimPointSelection(const KorOdbcKey& key, StructDetViewDimPointSelection& record)
    {
        return byKey(key, record);
    }
    /// Appends the selections of a point type to `records`; 1 when there are any.
    static int getDetViewDimPointSelectionByType(long type, KorArray<StructDetViewDimPointSelection>& records)
    {
        return current([&] { return StructDetViewDimPointSelectionMarshal::getByType(type, records); });
    }
    static int getDetViewDimSum(const KorOdbcKey& key, StructDetViewDimSum& record) { return byKey(key, record); }

    // Detail styles

    static int getDetailStyle(const KorOdbcKey& key, StructDetailStyle& record) { return byKey(key, record); }
    static int getDetailStyle(const KorString& name, StructDetailStyle& record) { return byRunName(name, record); }
    static int getDetailStyleTable(KorArray<StructDetailStyle>& records) { return table(records); }
    static int getDetailStyleList(KorArray<KorString>& names) { return runNames(names); }
    /// Key of the detail style with that number in a base category; the result is above 0 when there is one.
    static int composeDetailStyleKey(long subCategory, long baseCategory, long& styleKey);
    static int getDetailStyleOverrides(const KorOdbcKey& key, StructDetailStyleOverrides& record)
    {
        return byKey(key, record);
    }
    static int getDetailStyleOverrides(const KorString& name, StructDetailStyleOverrides& record)
    {
        return byRunName(name, record);
    }
    static int getDetailStyleOverridesTable(KorArray<StructDetailStyleOverrides>& records)
    {
        return table(records);
    }
    static int getDetailStyleOverridesList(KorArray<KorString>& names)
    {
        return runNames<StructDetailStyleOverrides>(names);
    }
    /// With the items of the map.
    static int getDetailStyleMap(const KorOdbcKey& key, StructDetailStyleMap& record)
    {
        return withItems<StructDetailStyleMapMarshal>(key, record);
    }
    static int getDetailStyleMap(const KorString& name, StructDetailStyleMap& record);
    static int getDetailStyleMapList(KorArray<KorString>& names) { return runNames<StructDetailStyleMap>(names); }

    // Detail processes

    static int getDetailProcessCategoryList(KorArray<KorString>& names)
    {
        return runNames<StructDetailProcessCategory>(names);
    }
    static int getDetailProcessDefinition(const KorOdbcKey& key, StructDetailProcessDefinition& record)
    {
        return byKey(key, record);
    }
    static int getDetailProcessDefinition(const KorString& name, StructDetailProcessDefinition& record)
    {
        return byRunName(name, record);
    }
    static int getDetailProcessDefinitionTable(KorArray<StructDetailProcessDefinition>& records)
    {
        return table(records);
    }
    static int getDetailProcessDefinitionList(KorArray<KorString>& names)
    {
        return runNames<StructDetailProcessDefinition>(names);
    }
    static int getDetailProcessStep(const KorOdbcKey& key, StructDetailProcessStep& record)
    {
        return byKey(key, record);
    }
    static int getDetailProcessStep(const KorString& name, StructDetailProcessStep& record)
    {
        return byRunName(name, record);
    }
    static int getDetailProcessStepTable(KorArray<StructDetailProcessStep>& records) { return table(records); }
    static int getDetailProcessStepList(KorArray<KorString>& names)
    {
        return runNames<StructDetailProcessStep>(names);
    }
    static int getDetailProcessStepPrecondition(const KorOdbcKey& key, StructDetailProcessStepPrecondition& record)
    {
        return byKey(key, record);
    }
    static int getDetailFilenameSelector(const KorOdbcKey& key, StructDetailFilenameSelector& record)
    {
        return byKey(key, record);
    }
    static int getDetailFilenameSelector(const KorString& name, StructDetailFilenameSelector& record)
    {
        return byRunName(name, record);
    }
    static int getDetailFilenameSelectorList(KorArray<KorString>& names)
    {
        return runNames<StructDetailFilenameSelector>(names);
    }
    static int getDetailProcessSort(const KorOdbcKey& key, StructDetailProcessSort& record)
    {
        return byKey(key, record);
    }
    static int getDetailProcessSort(const KorString& name, StructDetailProcessSort& record)
    {
        return byRunName(name, record);
    }
    static int getDetailProcessSortList(KorArray<KorString>& names)
    {
        return runNames<StructDetailProcessSort>(names);
    }
    static int getDetailProcessSelection(const KorOdbcKey& key, StructDetailProcessSelection& record)
    {
        return byKey(key, record);
    }
    static int getDetailProcessSelection(const KorString& name, StructDetailProcessSelection& record)
    {
        return byRunName(name, record);
    }
    static int getDetailProcessSelectionList(KorArray<KorString>& names)
    {
        return runNames<StructDetailProcessSelection>(names);
    }
    static int getDetProcessScales(const KorOdbcKey& key, StructDetProcessScales& record)
    {
        return byKey(key, record);
    }
    static int getDetProcessScales(const KorString& name, StructDetProcessScales& record)
    {
        return byRunName(name, record);
    }
    static int getDetProcessScalesList(KorArray<KorString>& names)
    {
        return runNames<StructDetProcessScales>(names);
    }
    /// Which objects the first step of a process takes: of all objects 1 everything, 2 single parts, 3 main parts,
    /// 4 main parts with connected parts; of the selected ones 8, 5, 6 and 7 in the same order; 0 when the process
    /// does not say.
    static int getProcessSelectMode(long definitionKey);

    // Kinds of cross-sections

    static int getProfileSubtype(const KorString& name, StructProfileSubtype& record)
    {
        return byRunName(name, record);
    }
    static int getProfileSubtypeKey(const KorString& name, CatalogueKey auto& key)
    {
        return keyOf<StructProfileSubtype>(name, key);
    }

private:
    template <class Marshal, class T>
    static int withItems(const KorOdbcKey& key, T& record)
    {
        const DetailReading database;
        Marshal::loadItems(key);
        return byKey(key, record);
    }
};
