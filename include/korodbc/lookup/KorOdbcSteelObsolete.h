#pragma once

#include <korodbc/repository/KorColumn.h>
#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

// Kept for hosts that still call them: each raises an assertion, does nothing and returns 0. Rows came as
// columns with values, tables column by column.

int kor_odbc_getColumnBaseRecord(long key, KorArray<KorColumn>& record);
int kor_odbc_getColumnBaseRecord(const KorString& key, KorArray<KorColumn>& record);
int kor_odbc_getColumnBaseRecord(const KorString& section, const KorString& key, KorArray<KorColumn>& record);
int kor_odbc_getColumnBaseFirstKey(const KorString& section, KorString& key);
int kor_odbc_getColumnBaseTable(KorArray<KorColumnData>& data, KorArray<KorColumn>& columns);
int kor_odbc_getEndplateTable(KorArray<KorColumnData>& data, KorArray<KorColumn>& columns);
int kor_odbc_getAngleTable(KorArray<KorColumnData>& data, KorArray<KorColumn>& columns);
int kor_odbc_getPlantPartSubtypename(long key, KorString& name);
int kor_odbc_getPlantPartSublist(const KorString& category, KorArray<KorString>& names);
int kor_odbc_getPlantPartkey(const KorString& name, long& key);
int kor_odbc_getSubtypekeyOfPlantPart(const KorString& name, long& key);
int kor_odbc_getPlantPartsCategoriesList(KorArray<KorString>& names);
int kor_odbc_getPlantPartname(long key, KorString& name);
