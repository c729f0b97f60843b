#pragma once

#include <korodbc/repository/KorCellData.h>
#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

/// One column of a table structure; with a value and operators it is also a condition of a where clause.
class KorColumn {
public:
    enum eRelationalOperators {
        kNoRelation = 0,
        kLess = 1,
        kLessOrEqual = 2,
        kGreater = 3,
        kGreaterOrEqual = 4,
        kEqual = 5,
        kNotEqual = 6,
        kLike = 7
    };
    enum eLogicalOperators { kNoLogic = 0, kAnd = 1, kOr = 2 };

    KorColumn() = default;
    KorColumn(const KorString& name, KorItemType::BaseTypes type) : m_name(name), m_type(type) {}

    const KorString& getName() const { return m_name; }
    void setName(const KorString& name) { m_name = name; }
    /// Type of the column in its table, or of the value last set.
    KorItemType::BaseTypes getType() const { return m_type; }
    void setType(KorItemType::BaseTypes type) { m_type = type; }
    bool isKey() const { return m_isKey; }
    void setKey(bool isKey) { m_isKey = isKey; }

    void setlValue(long value);
    long getlValue() const { return m_value.getLong(); }
    void setdValue(double value);
    double getdValue() const { return m_value.getDouble(); }
    void setsValue(const KorString& value);
    KorString getsValue() const { return m_value.getStringW(); }
    /// Sets the empty value of the column's type: 0, 0.0 or the empty text.
    void setDefaultValue();
    bool hasValue() const { return m_value.getType() != KorItemType::kNone; }
    const KorCellData& getValue() const { return m_value; }
    /// The value as text; with `quoted` not 0 a text value stands between single quotes, inner quotes
    /// doubled.
    void getColumnValue(KorString& text, int quoted) const;

    void setRelationalOperator(eRelationalOperators relation) { m_relation = relation; }
    eRelationalOperators getRelationalOperator() const { return m_relation; }
    void setLogicalOperator(eLogicalOperators logic) { m_logic = logic; }
    eLogicalOperators getLogicalOperator() const { return m_logic; }

    /// The condition as SQL: "[Name] = 'value'". Without a relational operator the equality is taken.
    void getExpression(KorString& expression) const;
    /// Joins the conditions that have a relational operator into a where clause (without the word WHERE),
    /// each joined to the one before it by its own logical operator; no such condition gives the empty text.
    static void getWherePartOfStatement(const KorArray<KorColumn>& conditions, KorString& where);

    friend bool operator==(const KorColumn&, const KorColumn&) = default;

private:
    KorString m_name;
    KorItemType::BaseTypes m_type = KorItemType::kNone;
    bool m_isKey = false;
    KorCellData m_value;
    eRelationalOperators m_relation = kNoRelation;
    eLogicalOperators m_logic = kNoLogic;
};

/// The values of one column of such a table, as text.
class KorColumnData {
public:
    long length() const { return m_values.length(); }
    /// The value of a row as text; returns 1, or 0 and leaves `value` unchanged when there is no such row.
    int getAt(long row, KorString& value) const;
    void append(const KorString& value) { m_values.append(value); }

private:
    KorArray<KorString> m_values;
};

/// A table read into memory with the rows of all its sources, column by column.
class KorPartialTable {
public:
    const KorArray<KorColumnData>& getData() const { return m_data; }
    KorArray<KorColumnData>& getData() { return m_data; }
    const KorArray<KorColumn>& getColumns() const { return m_columns; }
    KorArray<KorColumn>& getColumns() { return m_columns; }

private:
    KorArray<KorColumn> m_columns;
    KorArray<KorColumnData> m_data;
};

namespace korodbc {

/// The text with every single quote doubled, for use between single quotes in a statement.
KorString quoted(const KorString& text);
/// The identifier as it stands in a statement: "[name]", or between double quotes when it holds a closing bracket.
KorString bracketed(const KorString& name);

} // namespace korodbc
