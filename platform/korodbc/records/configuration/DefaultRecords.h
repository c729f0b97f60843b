#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A default that is a text. Table "Default_STR".
struct StructDefaultString {
    KorString key;
    KorString value;
};
template <>
const RecordDescription& descriptionOf<StructDefaultString>();
struct StructDefaultStringMarshal : RecordMarshal<StructDefaultString> {};

/// A default that is an integer. Table "Default_INT".
struct StructDefaultInteger {
    KorString key;
    int value = 0;
};
template <>
const RecordDescription& descriptionOf<StructDefaultInteger>();
struct StructDefaultIntegerMarshal : RecordMarshal<StructDefaultInteger> {};

/// A default that is a real. Table "Default_DBL".
struct StructDefaultReal {
    KorString key;
    double value = 0;
};
template <>
const RecordDescription& descriptionOf<StructDefaultReal>();
struct StructDefaultRealMarshal : RecordMarshal<StructDefaultReal> {};

/// A text shown to the user, addressed by module and number. Table "Prompts".
struct StructPrompt {
    int key = -1;
    KorString module;
    int number = 0;
    KorString text; // may hold %d or %s
};
template <>
const RecordDescription& descriptionOf<StructPrompt>();
struct StructPromptMarshal : RecordMarshal<StructPrompt> {};

/// Another logical name of a table. Table "TableAliases".
struct StructTableAlias {
    int key = -1;
    KorString alias;
    KorString tableName;
};
template <>
const RecordDescription& descriptionOf<StructTableAlias>();
struct StructTableAliasMarshal : RecordMarshal<StructTableAlias> {};

/// A setting of the host, addressed by its path and name. Table "Settings".
struct StructSetting {
    KorString key;
    KorString value;
};
template <>
const RecordDescription& descriptionOf<StructSetting>();
struct StructSettingMarshal : RecordMarshal<StructSetting> {};
