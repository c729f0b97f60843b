#pragma once

#include <korodbc/repository/KorColumn.h>
#include <korodbc/repository/KorDSNDefinitions.h>
#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

// Tables that users may add to a database, addressed by their logical names, as dialogs fill their boxes and
// lists from them. Column 0 holds the key, column 1 the run name. Results are the table access service's: 1 on
// success, 0 otherwise, where nothing else is said; outputs are unchanged on failure. A kind tells which key was
// found: 1 an int, 0 a text, -1 neither. Values in conditions are data and never taken for SQL. Threads: one.
// Needs: an open repository.

// Structure and existence

/// Columns of a table in stored order.
int kor_odbc_getTableStructure(const KorString& table, KorArray<KorColumn>& columns);
/// The same in a data source; with all bits of `dsn` set, in the one that holds the table. The name must be the
/// physical one.
int kor_odbc_getTableStructure(eDSN dsn, const KorString& table, KorArray<KorColumn>& columns);
bool kor_odbc_existsUserTable(unsigned long dsn, const KorString& table);
/// Names of all tables of a data source.
int kor_odbc_getTables(unsigned long dsn, KorArray<KorString>& names);
int kor_odbc_columnExist(unsigned long dsn, KorString table, KorString column);
/// Columns and values, column by column as text, of a table with the rows of all its sources. Both arrays are
/// empty when the result is below 1.
int kor_odbc_loadUserTable(eDSN dsn, const KorString& table, KorArray<KorColumnData>& data,
                           KorArray<KorColumn>& columns);
/// The next read of the table sees what other programs have stored.
void kor_odbc_resetListcontrolTable(const KorString& table);

// Keys by conditions

/// Appends the keys of the rows that meet all conditions, each as a column with an int or text value. A key of
/// any other type raises an assertion and is appended without a value.
int korOdbcGetUserKeys(const KorArray<KorColumn>& conditions, const KorString& table, KorArray<KorColumn>& keys);
/// Key of the first row that meets the conditions, joined by their own logical operators. Without such a row the
/// key is unchanged and the result is still that of the read.
int kor_odbc_getUserFirstKey(const KorArray<KorColumn>& conditions, const KorString& table, KorColumn& key);
/// The same in a data source.
int kor_odbc_getUserFirstKey(eDSN dsn, const KorArray<KorColumn>& conditions, const KorString& table,
                             KorColumn& key);
/// Text key of the first row with this value in the column "Section". Without such a row, or with an int key,
/// `key` is unchanged and the result that of the read; without such a column, that of reading the structure.
int kor_odbc_getUserFirstKey(const KorString& section, const KorString& table, KorString& key);
/// The same for keys of either kind. -2 when the structure cannot be read, and with kind -1 when the key is
/// neither an int nor a text.
int kor_odbc_getUserFirstKey(const KorString& section, const KorString& table, KorString& textKey, int& intKey,
                             int& kind);

// Combo boxes

/// Int key of a run name; 0 when the key is none.
int kor_odbc_getUserComboBoxKey(const KorString& runName, const KorString& table, int& key);
/// Key of a run name. An unknown run name gives 0 and the kind of key that a new row of the table needs, -2
/// when there is no such table.
int kor_odbc_getUserComboBoxKey(const KorString& runName, const KorString& table, KorString& textKey, int& intKey,
                                int& kind);
/// All run names, and the numbers in column 2 as keys. 1 when there is any name, 0 otherwise; `keys` is emptied
/// in any case.
int kor_odbc_getUserComboBoxList(const KorString& table, KorArray<long>& keys, KorArray<KorString>& names);
/// Run names of the rows that `where`, the text of an SQL condition, selects.
void kor_odbc_getUserCSComboBoxList(const KorString& table, const KorString& where, KorArray<KorString>& names);
int kor_odbc_getUserComboBoxRunname(const KorString& key, const KorString& table, KorString& runName);
int kor_odbc_getUserComboBoxRunname(int key, const KorString& table, KorString& runName);
/// Key of the valid combination of these bolt properties, given by their run names.
int kor_odbc_getCombinationKey(int& key, const KorString& standard, const KorString& strengthClass,
                               const KorString& boltSet, const KorString& diameter, const KorString& coating,
                               const KorString& assemblyLocation);

// List controls

/// A whole table, column by column. Both arrays are empty when the table cannot be read; the result is that of
/// reading its structure.
int kor_odbc_getListcontrolTable(const KorString& table, KorArray<KorColumnData>& data,
                                 KorArray<KorColumn>& columns);
/// The same in the order of the column "Key"; the result is that of reading the last column.
int kor_odbc_getListcontrolTableSortedByKey(const KorString& table, KorArray<KorColumnData>& data,
                                            KorArray<KorColumn>& columns);
/// Key of a row counted from 0. A row beyond the table leaves the key unchanged, and the result is still that
/// of the read.
int kor_odbc_getUserListcontrolKey(int row, const KorString& table, KorString& key);
/// The same for an int key; 0 for a row beyond the table.
int kor_odbc_getUserListcontrolKey(int row, const KorString& table, int& key);

// Strings that depend on the language

/// Text of a key. The three operations are one; all of them tell upper from lower case.
int kor_odbc_LanguageDependent_getRunname(const KorString& key, KorString& runName);
int kor_odbc_LanguageDependent_getUserComboBoxRunname(const KorString& key, KorString& runName);
int kor_odbc_LanguageDependent_getUserComboBoxRunname_NonCaseSensitiveKey(const KorString& key,
                                                                          KorString& runName);
/// Unit that values with this text are shown in.
int kor_odbc_LanguageDependent_getUserUnitUsedForRunname(const KorString& runName, long& unit);
/// How values with this text are shown.
int kor_odbc_LanguageDependent_getUserDisplayControl(const KorString& runName, long& control);
