#pragma once

#include <korodbc/repository/KorDSNDefinitions.h>
#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

#include <initializer_list>
#include <span>

namespace korodbc {

/// What the names of a list are looked up with.
struct PreferredChoice {
    const KorArray<KorString>& keys;         // preferred
    std::span<const KorString> chosenBefore; // keys: standard, strength class, ...
    long option = 0;
};

/// A choice list: what it may be asked for, which preferred sizes are its own, and who names them.
struct PreferredList {
    unsigned kinds = 0;              // object kinds that it is for, a bit each; 0: any
    const char* condition = nullptr; // raised when the kind does not fit or a key is empty; nullptr: no condition
    int type = 0, table = 0;
    int addInTable = 0; // of the rows that the add-in has itself; 0: none
    int category = 0;   // 0: the object kind
    eDSN dsn = KorDSNDefinitions::kConfiguration;
    /// Replaces `names` by those of the preferred rows; 0 when there are none.
    int (*name)(const PreferredChoice& choice, KorArray<KorString>& names) = nullptr;
    int masterTable = 0; // rows go with the key chosen before; 0: they do not
    /// For rows that stand in a table of each class: the keys of the classes.
    int (*classes)(KorArray<KorString>& keys) = nullptr;
};

/// Puts the keys that the profiles prefer into `keys`, in table order. Returns their number.
int preferredKeys(const KorArray<int>& profiles, int category, int type, int table, int masterTable,
                  const KorString& masterKey, KorArray<KorString>& keys);
/// Fills a list. Returns 1, or 0 and an empty list when nothing is preferred.
int fillPreferredList(const PreferredList& list, const KorArray<int>& profiles, int kind,
                      std::initializer_list<KorString> chosenBefore, KorArray<KorString>& names, long option = 0);
/// Inserts each name that `names` does not hold where a binary search ends that begins with the middle element.
void mergeSorted(const KorArray<KorString>& more, KorArray<KorString>& names);

} // namespace korodbc
