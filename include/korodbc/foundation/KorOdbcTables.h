#pragma once

#include <korodbc/roots/KorString.h>

// Names of tables, and resets. Threads: one. Needs: an open repository.

/// The table with the data source that holds it: "Configuration.Material". Returns 1, or 0 with `result`
/// unchanged when the name belongs to no data source.
int kor_odbc_getDsnTableName(const KorString& name, KorString& result);
/// The physical name of a table; always returns 1.
int kor_odbc_getTableName(const KorString& name, KorString& result);

// After a reset the next reads see what other programs have stored.

/// Every table.
void kor_odbc_resetAllTables();
/// The tables of automatic connections, their geometric conditions and parameter sets excepted.
void kor_odbc_resetAutoConnectionTables();
void kor_odbc_resetNecessaryViewsTables();
/// Model extracts, report types, report templates and XML documents.
void kor_odbc_resetBOMTables();
void kor_odbc_freeDSTVNamesTable();
/// The four tables of static analyses.
void kor_odbc_DSTVstatic_freeTables();
