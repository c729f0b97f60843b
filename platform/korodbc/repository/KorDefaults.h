#pragma once

#include <korodbc/roots/KorString.h>

// Default values, kept by key. Each returns 1 when the key exists; otherwise another value, and `value` is
// unchanged.

int kor_odbc_getDefault(const KorString& key, KorString& value);
int kor_odbc_getDefault(const KorString& key, int& value);
int kor_odbc_getDefault(const KorString& key, double& value);
/// The same, looking in the data of the current drawing first.
int kor_odbc_getDwgDataDefault(const KorString& key, KorString& value);
int kor_odbc_getDwgDataDefault(const KorString& key, int& value);
int kor_odbc_getDwgDataDefault(const KorString& key, double& value);
/// Sets an int default, adding the key when it is new. Returns 1 when stored.
int kor_odbc_setDefault(const KorString& key, int value);
