#include <korodbc/repository/KorCellData.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

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

long KorCellData::getLong() const
{
    if (const long* value = std::get_if<long>(&m_value))
        return *value;
    if (const double* value = std::get_if<double>(&m_value)) {
        constexpr double limit = 9223372036854775808.0;
        return *value >= -limit && *value < limit ? static_cast<long>(*value) : 0;
    }
    const KorString* text = std::get_if<KorString>(&m_value);
    return text == nullptr ? 0 : text->toInteger();
}

int KorCellData::getInt() const
{
    const long value = getLong();
    return value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max()
               ? static_cast<int>(value)
               : 0;
}

double KorCellData::getDouble() const
{
    if (const long* value = std::get_if<long>(&m_value))
        return static_cast<double>(*value);
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
    if (const long* value = std::get_if<long>(&m_value)) {
        end = std::to_chars(buffer, buffer + sizeof buffer, *value);
    } else if (const double* value = std::get_if<double>(&m_value)) {
        constexpr double exactUpTo = 9007199254740992.0;
        const bool whole = std::abs(*value) < exactUpTo && std::trunc(*value) == *value;
        end = whole ? std::to_chars(buffer, buffer + sizeof buffer, *value, std::chars_format::fixed)
                    : std::to_chars(buffer, buffer + sizeof buffer, *value);
    }
    return KorString::fromUtf8({buffer, static_cast<std::size_t>(end.ptr - buffer)});
}
