#include <korodbc/lookup/KorOdbcUserTables.h>
#include <korodbc/records/configuration/LanguageRecords.h>

using Strings = StructLanguageDependet_StringsMarshal;

int kor_odbc_LanguageDependent_getRunname(const KorString& key, KorString& runName)
{
    return Strings::getRunNameByKey(key, runName);
}

int kor_odbc_LanguageDependent_getUserComboBoxRunname(const KorString& key, KorString& runName)
{
    return Strings::getRunNameByKey(key, runName);
}

int kor_odbc_LanguageDependent_getUserComboBoxRunname_NonCaseSensitiveKey(const KorString& key, KorString& runName)
{
    return Strings::getRunNameByKey(key, runName);
}

int kor_odbc_LanguageDependent_getUserUnitUsedForRunname(const KorString& runName, long& unit)
{
    return Strings::getUserUnitUsedForRunname(runName, unit);
}

int kor_odbc_LanguageDependent_getUserDisplayControl(const KorString& runName, long& control)
{
    return Strings::getUserDisplayControl(runName, control);
}
