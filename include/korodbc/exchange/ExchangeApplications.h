#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/exchange/ConversionRecords.h>

/// Programs and formats that models are exchanged with. Application 1 is this one.
class KorODBCQXT_Application : public CatalogueReader<StructQXT_Application> {
public:
    static int getApplications(const KorOdbcKey& key, StructQXT_Application& record) { return byKey(key, record); }
    static int getApplicationsList(KorArray<KorString>& names) { return runNames(names); }
    static int getApplicationKey(KorString name, long& key) { return keyOf(name, key); }
};

/// Kinds of objects that conversions tell apart. Object type 1 are straight members.
class KorODBCQXT_Object_Type : public CatalogueReader<StructObject_Type> {
public:
    static int getObjectType(const KorOdbcKey& key, StructObject_Type& record) { return byKey(key, record); }
    static int getObjectTypeList(KorArray<KorString>& names) { return runNames(names); }
    static int getObjectTypeKey(KorString name, long& key) { return keyOf(name, key); }
};
