#pragma once

#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

namespace korodbc {

/// Keys of a table in the main configuration and then of the same table in the add-in, both as they stand.
template <class Marshal>
KorArray<KorString> keysOfBothSources()
{
    KorArray<KorString> keys, more;
    {
        const KorDSNRequest request(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
        Marshal::getKeyList(keys);
    }
    {
        const KorDSNRequest request(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin);
        Marshal::getKeyList(more);
    }
    for (const KorString& key : more)
        keys.append(key);
    return keys;
}

} // namespace korodbc
