#pragma once

#include <korodbc/roots/KorString.h>

#include <cstdint>
#include <variant>

/// Kind of a cell value.
class KorItemType {
public:
    enum BaseTypes : std::int32_t { kNone = 0, kBool = 1, kInt = 2, kString = 3, kDouble = 4, kTime = 5 };

    constexpr KorItemType(BaseTypes type = kNone) : m_type(type) {}
    constexpr BaseTypes getBaseType() const { return m_type; }

private:
    BaseTypes m_type;
};

/// One cell value: nothing (an empty cell), a whole number, a real, a text, or a date and time given as text.
class KorCellData {
public:
    KorCellData() = default;
    KorCellData(const KorString& text) : m_value(text), m_type(KorItemType::kString) {}
    KorCellData(const wchar_t* text) : KorCellData(KorString(text)) {}
    KorCellData(int value) : KorCellData(static_cast<long>(value)) {}
    KorCellData(long value) : m_value(value), m_type(KorItemType::kInt) {}
    KorCellData(double value) : m_value(value), m_type(KorItemType::kDouble) {}
    /// Reads the value behind `raw` as an int, double or KorString, as the type says; any other type holds
    /// nothing.
    KorCellData(const void* raw, const KorItemType& type);

    void setData(const KorString& text) { *this = KorCellData(text); }
    void setData(int value) { *this = KorCellData(value); }
    void setData(long value) { *this = KorCellData(value); }
    void setData(double value) { *this = KorCellData(value); }
    void setTimeData(const KorString& dateTime)
    {
        m_value = dateTime;
        m_type = KorItemType::kTime;
    }

    KorItemType::BaseTypes getType() const { return m_type; }
    /// The value as an int; texts give their leading number, nothing gives 0, and so does what an int cannot hold.
    int getInt() const;
    /// The same as a long.
    long getLong() const;
    /// True for a whole number that an int holds.
    bool isInt() const { return m_type == KorItemType::kInt && getInt() == getLong(); }
    double getDouble() const;
    /// The value as text; whole numbers with all their digits, others in their shortest exact form, nothing as the
    /// empty text.
    KorString getStringW() const;

    friend bool operator==(const KorCellData&, const KorCellData&) = default;

private:
    std::variant<std::monostate, long, double, KorString> m_value;
    KorItemType::BaseTypes m_type = KorItemType::kNone;
};
