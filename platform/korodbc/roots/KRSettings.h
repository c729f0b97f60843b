#pragma once

#include <korodbc/roots/KorString.h>

/// The host's database of settings keys. Results are 1 for success and 0 otherwise.
class KRSettings {
public:
    /// Reads a setting; outputs stay as they were when it does not exist or, for a number, does not hold one.
    static int getValue(const KorString& key, KorString& value);
    static int getValue(const KorString& key, int& value);

    static int setValue(const KorString& key, const KorString& value);
    static int setValue(const KorString& key, int value);
};
