#pragma once

#include <korodbc/catalogues/DetailCatalogueReader.h>
#include <korodbc/records/detail/DetailOptionRecords.h>

/// Readers of drawing files, numbering and structural analysis options: records by run name and by key, run names,
/// whole tables. Results: 1 for found or read, another value, mostly 0, otherwise; outputs are unchanged on
/// failure. Reads go to the current data source.
class KorDetailOptionCatalogue : protected DetailCatalogueReader {
public:
    // Drawing files

    static int getDetAcadSettings(const KorString& runName, StructDetAcadSettings& record)
    {
        return byRunName(runName, record);
    }
    static int getDetAcadSettings(int key, StructDetAcadSettings& record)
    {
        return byKey(KorOdbcKey(key), record);
    }
    static int getDetAcadSettingsList(KorArray<KorString>& names)
    {
        return runNames<StructDetAcadSettings>(names);
    }
    static int getDetailOutputFileVersion(const KorString& runName, StructDetailOutputFileVersion& record)
    {
        return byRunName(runName, record);
    }
    static int getDetailOutputFileVersion(const KorOdbcKey& key, StructDetailOutputFileVersion& record)
    {
        return byKey(key, record);
    }
    static int getDetailOutputFileVersionTable(KorArray<StructDetailOutputFileVersion>& records)
    {
        return table(records);
    }
    static int getNCDXFOutputFileVersion(const KorString& runName, StructNCDXFOutputFileVersion& record)
    {
        return byRunName(runName, record);
    }
    static int getNCDXFOutputFileVersion(const KorOdbcKey& key, StructNCDXFOutputFileVersion& record)
    {
        return byKey(key, record);
    }
    static int getNCDXFOutputFileVersionTable(KorArray<StructNCDXFOutputFileVersion>& records)
    {
        return table(records);
    }

    // What details show

    static int getDetailAreaType(const KorString& runName, StructDetailAreaType& record)
    {
        return byRunName(runName, record);
    }
    static int getDetailAreaType(const KorOdbcKey& key, StructDetailAreaType& record)
    {
        return byKey(key, record);
    }
    static int getDetailAreaTypeList(KorArray<KorString>& names) { return runNames<StructDetailAreaType>(names); }
    static int getDetailReferenceAxis(const KorString& runName, StructDetailReferenceAxis& record)
    {
        return byRunName(runName, record);
    }
    static int getDetailReferenceAxis(const KorOdbcKey& key, StructDetailReferenceAxis& record)
    {
        return byKey(key, record);
    }
    static int getDetailReferenceAxisList(KorArray<KorString>& names)
    {
        return runNames<StructDetailReferenceAxis>(names);
    }
    static int getDetailReferenceAxisTable(KorArray<StructDetailReferenceAxis>& records) { return table(records); }
    static int getDetailVisibilityStatus(const KorString& runName, StructDetailVisibilityStatus& record)
    {
        return byRunName(runName, record);
    }
    static int getDetailVisibilityStatus(const KorOdbcKey& key, StructDetailVisibilityStatus& record)
    {
        return byKey(key, record);
    }
    static int getDetailVisibilityStatusList(KorArray<KorString>& names)
    {
        return runNames<StructDetailVisibilityStatus>(names);
    }
    static int getDetailVisibilityStatusTable(KorArray<StructDetailVisibilityStatus>& records)
    {
        return table(records);
    }

    // Numbering

    static int getGridMultiLang(const KorString& runName, StructNumberingDataRange& record)
    {
        return byRunName(runName, record);
    }
    static int getGridMultiLang(const KorOdbcKey& key, StructNumberingDataRange& record)
    {
        return byKey(key, record);
    }
    static int getGridMultiLangList(KorArray<KorString>& names)
    {
        return runNames<StructNumberingDataRange>(names);
    }
    static int getGridMultiLangTable(KorArray<StructNumberingDataRange>& records) { return table(records); }
    static int getIncrementalCounter(const KorString& runName, StructIncrementalCounter& record)
    {
        return byRunName(runName, record);
    }
    static int getIncrementalCounter(const KorOdbcKey& key, StructIncrementalCounter& record)
    {
        return byKey(key, record);
    }
    static int getIncrementalCounterList(KorArray<KorString>& names)
    {
        return runNames<StructIncrementalCounter>(names);
    }
    static int getIncrementalCounterTable(KorArray<StructIncrementalCounter>& records) { return table(records); }

    // Structural analysis

    static int getBeamConnectionType(const KorString& runName, StructBeamConnectionType& record)
    {
        return byRunName(runName, record);
    }
    static int getBeamConnectionType(const KorOdbcKey& key, StructBeamConnectionType& record)
    {
        return byKey(key, record);
    }
    static int getBeamConnectionTypeList(KorArray<KorString>& names)
    {
        return runNames<StructBeamConnectionType>(names);
    }
    static int getNodeSupportType(const KorString& runName, StructNodeSupportType& record)
    {
        return byRunName(runName, record);
    }
    static int getNodeSupportType(const KorOdbcKey& key, StructNodeSupportType& record)
    {
        return byKey(key, record);
    }
    static int getNodeSupportTypeList(KorArray<KorString>& names)
    {
        return runNames<StructNodeSupportType>(names);
    }
    static int getDegreeOfFreedom(const KorString& runName, StructDegreeOfFreedom& record)
    {
        return byRunName(runName, record);
    }
    static int getDegreeOfFreedom(const KorOdbcKey& key, StructDegreeOfFreedom& record)
    {
        return byKey(key, record);
    }
    static int getDegreeOfFreedomList(KorArray<KorString>& names)
    {
        return runNames<StructDegreeOfFreedom>(names);
    }
};
