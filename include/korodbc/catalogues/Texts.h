#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/TextRecords.h>

/// Ways to write dates and times.
class KorODBCDateTimeFormat : public CatalogueReader<StructDateTimeFormat> {
public:
    static int getDateTimeFormat(const KorOdbcKey& key, StructDateTimeFormat& record)
    {
        return byKey(key, record);
    }
    static int getDateTimeFormatTable(KorArray<StructDateTimeFormat>& records) { return table(records); }
};

/// Heights of texts in drawings.
class KorODBCTextSizes : public CatalogueReader<StructTextSizes> {
public:
    static int getTextSizes(const KorOdbcKey& key, StructTextSizes& record) { return byKey(key, record); }
    static int getTextSizesKey(const KorString& runName, CatalogueKey auto& key) { return keyOf(runName, key); }
    static int getTextSizesList(KorArray<KorString>& names) { return orderedRunNames(names); }
};

/// Placeholders for values of objects.
class KorODBCGenericStringToken : public CatalogueReader<StructGenericStringToken> {
public:
    static int getGenericStringToken(const KorOdbcKey& key, StructGenericStringToken& record)
    {
        return byKey(key, record);
    }
    static int getGenericStringTokenTable(KorArray<StructGenericStringToken>& records) { return table(records); }
    /// The tokens of a group, in table order.
    static int getGenericStringTokenTableByGroup(const KorOdbcKey& group,
                                                 KorArray<StructGenericStringToken>& records)
    {
        return StructGenericStringTokenMarshal::getByGroup(group, records);
    }
};

/// Groups of such placeholders.
class KorODBCGenericStringTokenGroup : public CatalogueReader<StructGenericStringTokenGroup> {
public:
    static int getGenericStringTokenGroup(const KorOdbcKey& key, StructGenericStringTokenGroup& record)
    {
        return byKey(key, record);
    }
    /// The groups for objects of a type, in table order.
    static int getGenericStringTokenGroupsByObjectType(long objectType,
                                                       KorArray<StructGenericStringTokenGroup>& records)
    {
        return StructGenericStringTokenGroupMarshal::getByObjectType(objectType, records);
    }
    /// All groups.
    static int getGenericStringTokenTable(KorArray<StructGenericStringTokenGroup>& records)
    {
        return table(records);
    }
};

/// Columns of bills of material in drawings.
class KorODBCBOMDwgTokens : public CatalogueReader<StructBOMDwgTokens> {
public:
    static int getBOMTokens(KorArray<StructBOMDwgTokens>& records) { return table(records); }
};

/// Objects that report templates list.
class KorODBCTemplateReportObjects : public CatalogueReader<StructTemplateReportObjects> {
public:
    static int getTemplateReportObjects(const KorOdbcKey& key, StructTemplateReportObjects& record)
    {
        return byKey(key, record);
    }
};
