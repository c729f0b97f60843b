#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A default that is a text. Table "Default_STR".
struct StructDefaultString {
    KorString key;
    KorString value;
};
struct StructDefaultStringMarshal : RecordMarshal<StructDefaultString> {};

/// A default that is an integer. Table "Default_INT".
struct StructDefaultInteger {
    KorString key;
    int value = 0;
};
struct StructDefaultIntegerMarshal : RecordMarshal<StructDefaultInteger> {};

/// A default that is a real. Table "Default_DBL".
struct StructDefaultReal {
    KorString key;
    double value = 0;
};
struct StructDefaultRealMarshal : RecordMarshal<StructDefaultReal> {};

/// A text shown to the user, addressed by module and number. Table "Prompts".
struct StructPrompt {
    int key = -1;
    KorString module;
    int number = 0;
    KorString text; // may hold %d or %s
};
struct StructPromptMarshal : RecordMarshal<StructPrompt> {};

/// Another logical name of a table. Table "TableAliases".
struct StructTableAlias {
    int key = -1;
    KorString alias;
    KorString tableName;
};
struct StructTableAliasMarshal : RecordMarshal<StructTableAlias> {};

/// A setting of the host, addressed by its path and name. Table "Settings".
struct StructSetting {
    KorString key;
    KorString value;
};
struct StructSettingMarshal : RecordMarshal<StructSetting> {};
