#include "repository/KorCellData.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

KorCellData::KorCellData(const void* raw, const KorItemType& type)
{
    switch (type.getBaseType()) {
    case KorItemType::kBool:
    case KorItemType::kInt:
        setData(*static_cast<const int*>(raw));
        break;
    case KorItemType::kDouble:
        setData(*static_cast<const double*>(raw));
        break;
    case KorItemType::kString:
        setData(*static_cast<const KorString*>(raw));
        break;
    case KorItemType::kTime:
        setTimeData(*static_cast<const KorString*>(raw));
        break;
    case KorItemType::kNone:
        break;
    }
}

int KorCellData::getInt() const
{
    if (const int* value = std::get_if<int>(&m_value))
        return *value;
    if (const double* value = std::get_if<double>(&m_value)) {
        const bool fits = *value >= std::numeric_limits<int>::min() && *value <= std::numeric_limits<int>::max();
        return fits ? static_cast<int>(*value) : 0;
    }
    if (const KorString* text = std::get_if<KorString>(&m_value)) {
        const long value = text->toInteger();
        return std::in_range<int>(value) ? static_cast<int>(value) : 0;
    }
    return 0;
}

double KorCellData::getDouble() const
{
    if (const int* value = std::get_if<int>(&m_value))
        return *value;
    if (const double* value = std::get_if<double>(&m_value))
        return *value;
    if (const KorString* text = std::get_if<KorString>(&m_value)) {
        const std::string narrow = text->toUtf8();
        double value = 0;
        std::from_chars(narrow.data(), narrow.data() + narrow.size(), value);
        return value;
    }
    return 0;
}

KorString KorCellData::getStringW() const
{
    if (const KorString* text = std::get_if<KorString>(&m_value))
        return *text;
    char buffer[64];
    std::to_chars_result end{buffer, {}};
    if (const int* value = std::get_if<int>(&m_value))
        end = std::to_chars(buffer, buffer + sizeof buffer, *value);
    else if (const double* value = std::get_if<double>(&m_value))
        end = std::to_chars(buffer, buffer + sizeof buffer, *value);
    return KorString::fromUtf8({buffer, static_cast<std::size_t>(end.ptr - buffer)});
}
