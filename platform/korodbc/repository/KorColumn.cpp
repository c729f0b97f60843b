#include <korodbc/repository/KorColumn.h>

namespace korodbc {

KorString quoted(const KorString& text) { return text.find(L"'") < 0 ? text : text.replace(L"'", L"''"); }

KorString bracketed(const KorString& name)
{
    if (name.find(L"]") < 0)
        return KorString::format(L"[%s]", name);
    return KorString::format(L"\"%s\"", name.replace(L"\"", L"\"\""));
}

} // namespace korodbc

void KorColumn::setlValue(long value)
{
    m_value.setData(value);
    m_type = KorItemType::kInt;
}

void KorColumn::setdValue(double value)
{
    m_value.setData(value);
    m_type = KorItemType::kDouble;
}

void KorColumn::setsValue(const KorString& value)
{
    m_value.setData(value);
    m_type = KorItemType::kString;
}

void KorColumn::setDefaultValue()
{
    switch (m_type) {
    case KorItemType::kBool:
    case KorItemType::kInt:
        m_value.setData(0);
        break;
    case KorItemType::kDouble:
        m_value.setData(0.0);
        break;
    case KorItemType::kString:
    case KorItemType::kTime:
        m_value.setData(KorString());
        break;
    case KorItemType::kNone:
        m_value = KorCellData();
        break;
    }
}

void KorColumn::getColumnValue(KorString& text, int isQuoted) const
{
    const bool isText = m_value.getType() == KorItemType::kString || m_value.getType() == KorItemType::kTime;
    text = m_value.getStringW();
    if (isQuoted != 0 && isText)
        text = KorString(L"'") + korodbc::quoted(text) + KorString(L"'");
}

void KorColumn::getExpression(KorString& expression) const
{
    const wchar_t* sign = L"=";
    switch (m_relation) {
    case kLess:
        sign = L"<";
        break;
    case kLessOrEqual:
        sign = L"<=";
        break;
    case kGreater:
        sign = L">";
        break;
    case kGreaterOrEqual:
        sign = L">=";
        break;
    case kNotEqual:
        sign = L"<>";
        break;
    case kLike:
        sign = L"LIKE";
        break;
    case kNoRelation:
    case kEqual:
        break;
    }
    KorString value;
    getColumnValue(value, 1);
    expression = hasValue() ? KorString::format(L"%s %s %s", korodbc::bracketed(m_name), KorString(sign), value)
                            : KorString::format(L"%s IS NULL", korodbc::bracketed(m_name));
}

void KorColumn::getWherePartOfStatement(const KorArray<KorColumn>& conditions, KorString& where)
{
    where = KorString();
    for (const KorColumn& condition : conditions) {
        if (condition.m_relation == kNoRelation)
            continue;
        KorString expression;
        condition.getExpression(expression);
        if (!where.isEmpty())
            where += KorString(condition.m_logic == kOr ? L" OR " : L" AND ");
        where += expression;
    }
}

int KorColumnData::getAt(long row, KorString& value) const
{
    if (row < 0 || row >= m_values.length())
        return 0;
    value = m_values.data()[row];
    return 1;
}
