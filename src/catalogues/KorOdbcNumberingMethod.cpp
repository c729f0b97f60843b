#include <korodbc/catalogues/KorOdbcNumberingPrefix.h>

#include <algorithm>

namespace {

int described(const KorString& description, StructNumberingMethod& method)
{
    method.key = -1;
    method.flag = 1;
    method.description = description;
    return 0;
}

} // namespace

int KorOdbcNumberingMethod::getByKey(long key, StructNumberingMethod& method)
{
    const int result = addInFirst(KorDSNDefinitions::kNumbering, [&] { return byKey(KorOdbcKey(key), method); });
    const KorString text(L"No description for key (%d) found");
    return result == 1 ? result : described(text.replace(L"%d", KorString::format(L"%ld", key)), method);
}

int KorOdbcNumberingMethod::getByName(const KorString& runName, StructNumberingMethod& method)
{
    const int result = addInFirst(KorDSNDefinitions::kNumbering, [&] { return byRunName(runName, method); });
    return result == 1 ? result : described(L"No description found", method);
}

int KorOdbcNumberingMethod::getRunNames(KorArray<KorString>& names)
{
    KorArray<KorString> all;
    int result = 0;
    const auto add = [&] {
        KorArray<KorString> own;
        if (runNames(own) != 1)
            return 0;
        for (const KorString& name : own)
            if (std::find(all.begin(), all.end(), name) == all.end())
                all.append(name);
        return result = 1;
    };
    within(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin, add);
    within(KorDSNDefinitions::kNumbering, KorDSNDefinitions::kBase, add);
    if (result == 1)
        names = std::move(all);
    return result;
}
