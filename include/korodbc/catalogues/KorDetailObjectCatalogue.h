#pragma once

#include <korodbc/catalogues/DetailCatalogueReader.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>

/// Readers of objects in drawings, how they are drawn and labelled: records by run name and by key, run names,
/// whole tables. Results: 1 for found or read, another value, mostly 0, otherwise; outputs are unchanged on
/// failure. Reads go to the current data source.
class KorDetailObjectCatalogue : protected DetailCatalogueReader {
public:
    // Appearance

    /// With its items.
    static int getDetViewObjReprMap(const KorString& runName, StructDetObjReprMap& record)
    {
        return StructDetObjReprMapMarshal::getStructByRunNameWithItems(runName, record);
    }
    static int getDetViewObjReprMapList(KorArray<KorString>& names)
    {
        return runNames<StructDetObjReprMap>(names);
    }
    static int getDetViewObjAppearance(const KorString& runName, StructDetObjAppearance& record)
    {
        return byRunName(runName, record);
    }
    static int getDetViewObjAppearanceList(KorArray<KorString>& names)
    {
        return runNames<StructDetObjAppearance>(names);
    }
    static int getDetObjAppearanceTable(KorArray<StructDetObjAppearance>& records) { return table(records); }
    static int getDetHatchSettings(const KorString& runName, StructDetHatchSettings& record)
    {
        return byRunName(runName, record);
    }
    static int getDetHatchSettingList(KorArray<KorString>& names)
    {
        return runNames<StructDetHatchSettings>(names);
    }
    static int getDetGridReferenceSettings(const KorString& runName, StructDetGridRefSettings& record)
    {
        return byRunName(runName, record);
    }
    static int getDetGridReferenceSettingList(KorArray<KorString>& names)
    {
        return runNames<StructDetGridRefSettings>(names);
    }
    static int getLinetypes(const KorString& runName, StructLinetypes& record)
    {
        return byRunName(runName, record);
    }
    static int getLinetypesList(KorArray<KorString>& names) { return runNames<StructLinetypes>(names); }
    static int getDetailDepthPosition(const KorString& runName, StructDetailDepthPosition& record)
    {
        return byRunName(runName, record);
    }
    static int getDetailDepthPosition(const KorOdbcKey& key, StructDetailDepthPosition& record)
    {
        return byKey(key, record);
    }
    static int getDetailDepthPositionList(KorArray<KorString>& names)
    {
        return runNames<StructDetailDepthPosition>(names);
    }
    static int getDetailDepthPositionTable(KorArray<StructDetailDepthPosition>& records) { return table(records); }

    // Kinds of objects

    static int getDetObjQualifier(const KorString& runName, StructDetObjQualifier& record)
    {
        return byRunName(runName, record);
    }
    static int getDetObjQualifierList(KorArray<KorString>& names)
    {
        return runNames<StructDetObjQualifier>(names);
    }
    /// Appends the keys of the qualifiers of a model type and role, -1 for any of them. With both given, the first
    /// qualifier only. 1 when `keys` holds any key then, those that it held before included; -1 when the table
    /// cannot be read, -2 when it is empty or nothing matches.
    static int getDetObjQualifier(int modelType, int role, KorArray<int>& keys);
    static int getDetObjQualifierSetList(KorArray<KorString>& names)
    {
        return runNames<StructDetObjQualifierSet>(names);
    }
    /// By its key, a text.
    static int getDetObjQualifierFilter(const KorString& key, StructDetObjQualifierFilter& record)
    {
        return byKey(key, record);
    }
    static int getDetObjQualifierFilterByRunName(const KorString& runName, StructDetObjQualifierFilter& record)
    {
        return byRunName(runName, record);
    }
    /// The script of the filter with that run name.
    static int getDetObjQualifierFilterScript(const KorString& runName, KorString& script)
    {
        return fieldOfRunName(runName, &StructDetObjQualifierFilter::script, script);
    }
    static int getDetObjQualifierFilterList(KorArray<KorString>& names)
    {
        return runNames<StructDetObjQualifierFilter>(names);
    }
    static int getDetObjQualifierFilterTable(KorArray<StructDetObjQualifierFilter>& records)
    {
        return table(records);
    }
    static int getDetModelType(const KorString& runName, StructDetModelType& record)
    {
        return byRunName(runName, record);
    }
    static int getDetModelType(const KorOdbcKey& key, StructDetModelType& record) { return byKey(key, record); }
    static int getDetModelTypeList(KorArray<KorString>& names) { return runNames<StructDetModelType>(names); }
    static int getDetRole(const KorString& runName, StructDetRole& record) { return byRunName(runName, record); }
    static int getDetRole(const KorOdbcKey& key, StructDetRole& record) { return byKey(key, record); }
    static int getDetRoleList(KorArray<KorString>& names) { return runNames<StructDetRole>(names); }

    // Labels

    static int getDetObjAnnotationStrategy(const KorString& runName, StructDetObjAnnotationStrategy& record)
    {
        return byRunName(runName, record);
    }
    static int getDetObjAnnotationStrategyList(KorArray<KorString>& names)
    {
        return runNames<StructDetObjAnnotationStrategy>(names);
    }
    static int getDetAnnotationType(const KorString& runName, StructDetAnnotationType& record)
    {
        return byRunName(runName, record);
    }
    static int getDetAnnotationTypeList(KorArray<KorString>& names)
    {
        return runNames<StructDetAnnotationType>(names);
    }
    static int getDetAnnotationTypeTable(KorArray<StructDetAnnotationType>& records) { return table(records); }
    static int getAnnotationTypeContents(const KorString& runName, StructAnnotationTypeContents& record)
    {
        return byRunName(runName, record);
    }
    static int getAnnotationTypeContentsList(KorArray<KorString>& names)
    {
        return runNames<StructAnnotationTypeContents>(names);
    }
    static int getDetLeaderStyle(const KorString& runName, StructDetLeaderStyle& record)
    {
        return byRunName(runName, record);
    }
    static int getDetLeaderStyleList(KorArray<KorString>& names) { return runNames<StructDetLeaderStyle>(names); }
    static int getDetArrangerControl(const KorString& runName, StructDetArrangerControl& record)
    {
        return byRunName(runName, record);
    }
    static int getDetArrangerControlList(KorArray<KorString>& names)
    {
        return runNames<StructDetArrangerControl>(names);
    }
    static int getDetArrangerStrategy(const KorString& runName, StructDetArrangerStrategy& record)
    {
        return byRunName(runName, record);
    }
    static int getDetArrangerStrategyList(KorArray<KorString>& names)
    {
        return runNames<StructDetArrangerStrategy>(names);
    }
};
