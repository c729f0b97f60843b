#pragma once

#include <korodbc/catalogues/DetailCatalogueReader.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailOptionRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>

/// Readers of dimensions: records by run name and by key, run names, whole tables. Results: 1 for found or
/// read, another value, mostly 0, otherwise; outputs are unchanged on failure. Reads go to the current data
/// source.
class KorDetailDimensionCatalogue : protected DetailCatalogueReader {
public:
    // Dimension strategies; a strategy is read with its items

    static int getDetViewDimStrategy(const KorString& runName, StructDetViewDimStrategy& record)
    {
        return withItemsByRunName(runName, record);
    }
    static int getDetViewDimStrategyList(KorArray<KorString>& names)
    {
        return runNames<StructDetViewDimStrategy>(names);
    }

    // Dimension requests and their points

    static int getDetRequestType(const KorString& runName, StructDetRequestType& record)
    {
        return byRunName(runName, record);
    }
    static int getDetRequestType(const KorOdbcKey& key, StructDetRequestType& record)
    {
        return byKey(key, record);
    }
    static int getDetRequestTypeList(KorArray<KorString>& names) { return runNames<StructDetRequestType>(names); }
    static int getDetRequestTypeTable(KorArray<StructDetRequestType>& records) { return table(records); }
    static int getDetViewDimRequestLinear(const KorString& runName, StructDetViewDimRequestLinear& record)
    {
        return byRunName(runName, record);
    }
    static int getDetViewDimRequestLinearList(KorArray<KorString>& names)
    {
        return runNames<StructDetViewDimRequestLinear>(names);
    }
    static int getDetViewDimPointSelection(const KorString& runName, StructDetViewDimPointSelection& record)
    {
        return byRunName(runName, record);
    }
    static int getDetViewDimPointSelectionList(KorArray<KorString>& names)
    {
        return runNames<StructDetViewDimPointSelection>(names);
    }
    static int getDetViewDimSum(const KorString& runName, StructDetViewDimSum& record)
    {
        return byRunName(runName, record);
    }
    static int getDetViewDimSumList(KorArray<KorString>& names) { return runNames<StructDetViewDimSum>(names); }
    static int getDetVwDimParentRelaPosRestriction(const KorString& runName,
                                                   StructDetVwDimParentRelaPosRestriction& record)
    {
        return byRunName(runName, record);
    }
    static int getDetVwDimParentRelaPosRestriction(const KorOdbcKey& key,
                                                   StructDetVwDimParentRelaPosRestriction& record)
    {
        return byKey(key, record);
    }
    static int getDetVwDimParentRelaPosRestrictionList(KorArray<KorString>& names)
    {
        return runNames<StructDetVwDimParentRelaPosRestriction>(names);
    }
    /// Bitmap id for a point type under a geometric restriction; -1 when there is none or the table cannot be
    /// read.
    static int getGeomRestrictionBitmapId(int pointType, int restriction, int& bitmapId)
    {
        StructDetViewDimGeomRestrictionBitmaps record;
        if (StructDetViewDimGeomRestrictionBitmapsMarshal::getByPointTypeAndRestriction(pointType, restriction,
                                                                                        record) != 1)
            return -1;
        bitmapId = record.bitmapId;
        return 1;
    }

    // By run name, the last record with that name; lists are appended

    static int getDetRequestLinearDirection(const KorString& runName, StructDetRequestLinearDirection& record)
    {
        return lastNamed(runName, record);
    }
    static int getDetRequestLinearDirection(const KorOdbcKey& key, StructDetRequestLinearDirection& record)
    {
        return byKey(key, record);
    }
    static int getDetRequestLinearDirectionList(KorArray<KorString>& names)
    {
        return appendEach(&StructDetRequestLinearDirection::runName, names);
    }
    static int getDetViewDimPointtype(const KorString& runName, StructDetViewDimPointtype& record)
    {
        return lastNamed(runName, record);
    }
    static int getDetViewDimPointtype(const KorOdbcKey& key, StructDetViewDimPointtype& record)
    {
        return byKey(key, record);
    }
    static int getDetViewDimPointtypeList(KorArray<KorString>& names)
    {
        return appendEach(&StructDetViewDimPointtype::runName, names);
    }
    static int getDetViewDimPointtypeTable(KorArray<StructDetViewDimPointtype>& records) { return table(records); }
    static int getDetVwDimGeomRestrictions(const KorString& runName, StructDetVwDimGeomRestrictions& record)
    {
        return lastNamed(runName, record);
    }
    static int getDetVwDimGeomRestrictions(const KorOdbcKey& key, StructDetVwDimGeomRestrictions& record)
    {
        return byKey(key, record);
    }
    static int getDetVwDimGeomRestrictionsList(KorArray<KorString>& names)
    {
        return appendEach(&StructDetVwDimGeomRestrictions::runName, names);
    }

    // Level dimensions

    static int getDetOrdinateDimType(const KorString& runName, StructDetOrdinateDimType& record)
    {
        return byRunName(runName, record);
    }
    static int getDetOrdinateDimType(const KorOdbcKey& key, StructDetOrdinateDimType& record)
    {
        return byKey(key, record);
    }
    static int getDetOrdinateDimTypeList(KorArray<KorString>& names)
    {
        return runNames<StructDetOrdinateDimType>(names);
    }
    static int getDetOrdinateDimTypeTable(KorArray<StructDetOrdinateDimType>& records) { return table(records); }
    /// The last kind in table order with this place and level.
    static int getDetOrdinateDimType(int position, int reference, StructDetOrdinateDimType& record)
    {
        return lastThat(
            [=](const StructDetOrdinateDimType& type) {
                return type.position == position && type.reference == reference;
            },
            record);
    }
    static int getDetOrdinatePosition(const KorString& runName, StructDetOrdinatePosition& record)
    {
        return byRunName(runName, record);
    }
    static int getDetOrdinatePosition(const KorOdbcKey& key, StructDetOrdinatePosition& record)
    {
        return byKey(key, record);
    }
    static int getDetOrdinatePositionList(KorArray<KorString>& names)
    {
        return runNames<StructDetOrdinatePosition>(names);
    }
    static int getDetOrdinatePositionTable(KorArray<StructDetOrdinatePosition>& records) { return table(records); }
    static int getDetOrdinateReference(const KorString& runName, StructDetOrdinateReference& record)
    {
        return byRunName(runName, record);
    }
    static int getDetOrdinateReference(const KorOdbcKey& key, StructDetOrdinateReference& record)
    {
        return byKey(key, record);
    }
    static int getDetOrdinateReferenceList(KorArray<KorString>& names)
    {
        return runNames<StructDetOrdinateReference>(names);
    }
    static int getDetOrdinateReferenceTable(KorArray<StructDetOrdinateReference>& records)
    {
        return table(records);
    }
};
