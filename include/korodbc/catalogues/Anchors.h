#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/AnchorRecords.h>

/// Standards of anchors.
class KorAnchorsStandard : public CatalogueReader<StructAnchorsStandard> {
public:
    virtual ~KorAnchorsStandard() = default;

    static int getKey(const KorString& runName, CatalogueKey auto& key) { return keyOf(runName, key); }
    static int getList(KorArray<KorString>& names) { return orderedRunNames(names); }
    /// -1 for an unknown key.
    static int getRunName(const KorOdbcKey& key, KorString& runName)
    {
        return fieldByKey<&StructAnchorsStandard::runName>(key, runName);
    }
};

/// How anchors stand in the concrete.
class KorAnchorsOrientation : public CatalogueReader<StructAnchorsOrientation> {
public:
    virtual ~KorAnchorsOrientation() = default;

    static int getOrientationsList(KorArray<KorString>& names) { return orderedRunNames(names); }
};

/// Lengths of anchors.
class KorAnchorsDefinition : public CatalogueReader<StructAnchorsDefinition> {
public:
    virtual ~KorAnchorsDefinition() = default;

    /// Lengths of an anchor in mm, rising.
    static int getAvailableLengths(const KorOdbcKey& anchorName, KorArray<double>& lengths)
    {
        return StructAnchorsDefinitionMarshal::getAvailableLengths(anchorName, lengths);
    }
    static int getByKey(const KorOdbcKey& key, StructAnchorsDefinition& record) { return byKey(key, record); }
};

/// Holes for anchors.
class KorAnchorsHoleDefinition : public CatalogueReader<StructAnchorsHoleDefinition> {
public:
    virtual ~KorAnchorsHoleDefinition() = default;

    /// The holes that an anchor needs.
    static int getByAnchorNameID(const KorOdbcKey& anchorName, StructAnchorsHoleDefinition& record)
    {
        return StructAnchorsHoleDefinitionMarshal::getByAnchorNameID(anchorName, record);
    }
};

/// Anchors, chosen step by step; standards, materials and sets go by their run names.
class KorAnchorsNameUtils : public CatalogueReader<StructAnchorsName> {
public:
    static int getByKey(const KorOdbcKey& key, StructAnchorsName& record) { return byKey(key, record); }
    static int getMaterialList(const KorString& standard, KorArray<KorString>& names)
    {
        return StructAnchorsNameMarshal::getMaterialList(standard, names);
    }
    static int getSetList(const KorString& standard, const KorString& material, KorArray<KorString>& names)
    {
        return StructAnchorsNameMarshal::getSetList(standard, material, names);
    }
    static int getDiameterList(const KorString& standard, const KorString& material, const KorString& set,
                               KorArray<KorString>& names)
    {
        return StructAnchorsNameMarshal::getDiameterList(standard, material, set, names);
    }
};
