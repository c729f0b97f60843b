#pragma once

#include <korodbc/roots/KorHashTable.h>
#include <korodbc/roots/KorString.h>

#include <cstdint>

/// Identity of a collected row: its record type's name, its position in its list, its key in the source database.
struct rowInfo {
    KorString name;
    std::int32_t index = -1;
    std::int32_t key = -1;

    friend bool operator==(const rowInfo& a, const rowInfo& b)
    {
        return a.index == b.index && a.key == b.key && a.name == b.name;
    }
};

/// Hash of the text "%s%ld%ld" of name, index and key: h = h * 5 + c over its characters.
struct KorRowInfoHash {
    std::size_t operator()(const rowInfo& row) const;
};

using KorTransferKeyMap = KorHashTable<rowInfo, long, KorRowInfoHash>;
