#pragma once

#include "support/RepositoryFixture.h"
#include "support/RepositoryFolder.h"

#include <korodbc/lookup/KorOdbcAutoConnection.h>
#include <korodbc/lookup/KorOdbcSteelBolts.h>
#include <korodbc/lookup/KorOdbcSteelCatalogues.h>
#include <korodbc/lookup/KorOdbcSteelPlates.h>
#include <korodbc/lookup/KorOdbcSteelRules.h>
#include <korodbc/lookup/KorOdbcSteelSections.h>
#include <korodbc/lookup/KorOdbcSteelStatics.h>
#include <korodbc/lookup/KorOdbcSteelWelding.h>
#include <korodbc/lookup/KorOdbcUserTables.h>

using Names = KorArray<KorString>;

inline Texts texts(const Names& names)
{
    Texts list;
    for (const KorString& name : names)
        list.push_back(name.toUtf8());
    return list;
}

/// Results and outputs as one text, blanks between them; texts of a list have commas.
template <class... T>
std::string shown(const T&... values)
{
    const auto one = []<class V>(const V& value) -> std::string {
        if constexpr (std::is_same_v<V, KorString>)
            return " " + value.toUtf8();
        else if constexpr (std::is_same_v<V, Texts>) {
            std::string all;
            for (const std::string& text : value)
                all += (all.empty() ? "" : ",") + text;
            return " " + all;
        } else
            return " " + std::to_string(value);
    };
    return (one(values) + ...).substr(1);
}
