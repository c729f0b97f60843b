#pragma once

#include <korodbc/roots/KorString.h>

// Default values of the main configuration, kept by key. Each returns 1 when the key exists; otherwise another
// value, and `value` is unchanged. Threads: one. Needs: an open repository.

int kor_odbc_getDefault(const KorString& key, KorString& value);
int kor_odbc_getDefault(const KorString& key, int& value);
int kor_odbc_getDefault(const KorString& key, double& value);
/// The same, looking in the project data of the current drawing first.
int kor_odbc_getDwgDataDefault(const KorString& key, KorString& value);
int kor_odbc_getDwgDataDefault(const KorString& key, int& value);
int kor_odbc_getDwgDataDefault(const KorString& key, double& value);
/// Sets an int default of the main configuration, adding the key when it is new. Returns 1 when stored, another
/// value with nothing changed.
int kor_odbc_setDefault(const KorString& key, int value);
