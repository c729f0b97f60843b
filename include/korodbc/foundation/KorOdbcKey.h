#pragma once

#include <korodbc/roots/KorArray.h>

#include <concepts>
#include <cstdint>
#include <utility>

/// Key of a record; -1 means no record.
class KorOdbcKey {
public:
    KorOdbcKey() = default;
    KorOdbcKey(long key) : m_key(static_cast<std::int32_t>(key)) {}

    long getKey() const { return m_key; }
    operator long() const { return m_key; }
    void setKey(long key) { m_key = static_cast<std::int32_t>(key); }

    friend bool operator==(const KorOdbcKey&, const KorOdbcKey&) = default;
    // exact for every integer type, so that no conversion competes with the built-in comparisons
    template <std::integral Integer>
    friend bool operator==(const KorOdbcKey& left, Integer right)
    {
        return std::cmp_equal(left.m_key, right);
    }

private:
    std::int32_t m_key = -1;
};

/// Unwritten array elements are all-one bytes: the key -1.
template <>
struct KorFillsWithOnes<KorOdbcKey> : std::true_type {
};
