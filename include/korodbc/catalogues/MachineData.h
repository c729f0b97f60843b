#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/ApplicationRecords.h>

/// Runs that write machine files.
class KorODBCNCDBProcess : public CatalogueReader<StructNCDBProcess> {
public:
    static int getNCDBProcess(const KorOdbcKey& key, StructNCDBProcess& record) { return byKey(key, record); }
};

/// Steps of such runs.
class KorODBCNCDBProcessStep : public CatalogueReader<StructNCDBProcessStep> {
public:
    static int getNCDBProcessStep(const KorOdbcKey& key, StructNCDBProcessStep& record)
    {
        return byKey(key, record);
    }
};

/// How machine files are written.
class KorODBCNCDBStyle : public CatalogueReader<StructNCDBStyle> {
public:
    static int getNCDBStyle(const KorOdbcKey& key, StructNCDBStyle& record) { return byKey(key, record); }
};
