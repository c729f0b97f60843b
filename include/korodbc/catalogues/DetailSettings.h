#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailSettingRecords.h>

/// Whether objects behind others are drawn.
class KorODBCDepthStatus : public CatalogueReader<StructDepthStatus> {
public:
    static int getDepthStatus(const KorOdbcKey& key, StructDepthStatus& record) { return byKey(key, record); }
    static int getDepthStatusKey(const KorString& runName, CatalogueKey auto& key) { return keyOf(runName, key); }
    static int getDepthStatusList(KorArray<KorString>& names) { return orderedRunNames(names); }
};

/// How the position of a beam is given.
class KorODBCBeamPositionCalculation : public CatalogueReader<StructBeamPositionCalculation> {
public:
    static int getBeamPositionCalculation(const KorOdbcKey& key, StructBeamPositionCalculation& record)
    {
        return byKey(key, record);
    }
    static int getBeamPositionCalculationByRunname(const KorString& runName, StructBeamPositionCalculation& record)
    {
        return byRunName(runName, record);
    }
};

/// Distances between clipped ends.
class KorODBCClippingGap : public CatalogueReader<StructClippingGap> {
public:
    static int getClippingGapByKey(const KorOdbcKey& key, StructClippingGap& record) { return byKey(key, record); }
    /// The gap of this many mm on paper.
    static int getClippingGapByValue(double gap, StructClippingGap& record)
    {
        return StructClippingGapMarshal::getByValue(gap, record);
    }
};

/// How clipped ends are drawn.
class KorODBCClippingType : public CatalogueReader<StructClippingType> {
public:
    static int getClippingType(const KorOdbcKey& key, StructClippingType& record) { return byKey(key, record); }
};

/// Parts of objects that labels and dimensions may belong to.
class KorODBCDetGeometricRestrictions : public CatalogueReader<StructDetGeometricRestrictions> {
public:
    static int getDetGeometricRestrictionList(KorArray<KorString>& names) { return orderedRunNames(names); }
    static int getDetGeometricRestrictionTable(KorArray<StructDetGeometricRestrictions>& records)
    {
        return table(records);
    }
    static int getDetGeometricRestrictions(const KorOdbcKey& key, StructDetGeometricRestrictions& record)
    {
        return byKey(key, record);
    }
};

/// Types of labels that users place.
class KorODBCDetManualAnnotationType : public CatalogueReader<StructDetManualAnnotationType> {
public:
    /// The type with this name in a data source; of the add-in, in its first slot.
    static int getDetManualAnnotation(const KorString& name, eDSN dsn, StructDetManualAnnotationType& record)
    {
        return within(dsn,
                      dsn == KorDSNDefinitions::kAddin ? KorDSNDefinitions::kFirstAddin : KorDSNDefinitions::kBase,
                      [&] { return byRunName(name, record); });
    }
    static int getDetManualAnnotationType(const KorOdbcKey& key, StructDetManualAnnotationType& record)
    {
        return byKey(key, record);
    }
    static int getDetManualAnnotationTypeList(KorArray<KorString>& names) { return runNames(names); }
    static int getDetManualAnnotationTypeTable(KorArray<StructDetManualAnnotationType>& records)
    {
        return table(records);
    }
};

/// Where the texts of running dimensions stand.
class KorODBCDetRunningDimensionTextAlignment : public CatalogueReader<StructDetRunningDimensionTextAlignment> {
public:
    static int getDetRunningDimensionTextAlignment(const KorOdbcKey& key,
                                                   StructDetRunningDimensionTextAlignment& record)
    {
        return byKey(key, record);
    }
    static int getDetRunningDimensionTextAlignmentByRunname(const KorString& runName,
                                                            StructDetRunningDimensionTextAlignment& record)
    {
        return byRunName(runName, record);
    }
};

/// How grid positions are written.
class KorOdbcGridReferenceTokenFormat : public CatalogueReader<StructGridReferenceTokenFormat> {
public:
    /// Script of a format; -1 for an unknown one.
    static int getScript(const KorString& runName, KorString& script)
    {
        return fieldByRunName<&StructGridReferenceTokenFormat::script>(runName, script);
    }
};

/// Hatch patterns in drawings for those of the model.
class KorODBCHatchesMap : public CatalogueReader<StructHatchesMap> {
public:
    /// Pattern in drawings for one of the model; -1 for an unknown one.
    static int getCorrespondentHatch(const KorString& hatch, KorString& correspondentHatch)
    {
        return fieldByRunName<&StructHatchesMap::correspondentHatch>(hatch, correspondentHatch);
    }
    static int getHatches(KorArray<StructHatchesMap>& records) { return table(records); }
};

/// Objects of other programs that details can show.
class KorODBCDetExternalObject
    : public CatalogueReader<StructDetExternalObject, StructDetExternalObjectPropertyMap> {
public:
    /// Kinds of objects and the properties of all of them; 1 when both could be read.
    static int getExternalObjectsData(KorArray<StructDetExternalObject>& objects,
                                      KorArray<StructDetExternalObjectPropertyMap>& properties)
    {
        return StructDetExternalObjectPropertyMapMarshal::getTables(objects, properties);
    }
};
