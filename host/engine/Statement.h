#pragma once

#include "engine/Value.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace korodbc::host {

/// What a statement does, known when it is prepared. Names are those of the database.
struct Effects {
    bool onlyReads = false;
    std::vector<std::string> writtenTables;
    std::vector<std::string> rekeyedTables; // those of them whose keys it assigns
    std::vector<std::string> definedTables; // that it makes, drops or changes the columns of
    bool replacesRows = false;              // it may remove rows that are in the way of others
    bool controlsTransaction = false;       // begins, ends or marks a transaction
};

/// What the last run of a statement changed.
struct Touched {
    struct Rows {
        std::string table;
        std::vector<std::int64_t> ids;
    };
    std::int64_t count = 0; // rows written or removed
    bool known = true;      // false: other rows than those listed changed as well
    std::vector<Rows> rows;
};

/// What a step of a statement came to.
enum class Step { Row, Done, Failed };

/// A prepared statement, run as often as wanted with other values. An engine derives what runs it; values and
/// cells are handed over by the row, so that reading a cell calls nobody.
class Statement {
public:
    enum class CellType : std::uint8_t { Null, Integer, Real, Text };
    struct Cell {
        CellType type = CellType::Null;
        std::int64_t integer = 0; // of that type, as is the real
        double real = 0;
        std::string_view text; // UTF-8, valid until the next step
    };

    virtual ~Statement() = default;
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// Parameters are counted from 1 and keep their values from run to run. Texts are copied.
    void bind(int parameter, std::int64_t value)
    {
        Parameter& p = m_parameters[static_cast<std::size_t>(parameter - 1)];
        p.type = CellType::Integer;
        p.integer = value;
    }
    void bind(int parameter, double value)
    {
        Parameter& p = m_parameters[static_cast<std::size_t>(parameter - 1)];
        p.type = CellType::Real;
        p.real = value;
    }
    void bind(int parameter, const KorString& text);
    void bind(int parameter, const Value& value);
    void bindNull(int parameter) { m_parameters[static_cast<std::size_t>(parameter - 1)].type = CellType::Null; }
    int parameters() const { return static_cast<int>(m_parameters.size()); }

    /// The next row of the run, the first step starts one; no row is left after Done or Failed. Of a failure the
    /// engine says why.
    Step step()
    {
        const bool first = !m_running;
        m_running = true;
        return next(first);
    }
    /// Ends the run.
    void reset()
    {
        if (m_running)
            end();
        m_running = false;
    }

    // The row that the last step gave; columns are counted from 0.

    int columns() const { return static_cast<int>(m_row.size()); }
    virtual std::string_view columnName(int column) const = 0;
    const Cell& cell(int column) const { return m_row[static_cast<std::size_t>(column)]; }
    bool isNull(int column) const { return cell(column).type == CellType::Null; }
    /// The number of the cell, of a text the one that it starts with, else 0.
    std::int64_t integer(int column) const;
    double real(int column) const;
    /// The cell as text; empty without a value. Valid until the next step.
    std::string_view bytes(int column) const
    {
        const Cell& c = cell(column);
        return c.type == CellType::Text   ? c.text
               : c.type == CellType::Null ? std::string_view()
                                          : rendered(column);
    }
    KorString text(int column) const { return KorString::fromUtf8(bytes(column)); }

    const std::string& sql() const { return m_sql; }
    /// The text with the values in the places of the parameters, for people.
    virtual std::string expanded() const = 0;
    const Effects& effects() const { return m_effects; }
    /// Valid until the engine runs the next statement that writes.
    virtual const Touched& touched() const = 0;

    /// Prepared and not run since; told to the observer with the next run.
    bool fresh = true;

protected:
    struct Parameter {
        CellType type = CellType::Null;
        std::int64_t integer = 0;
        double real = 0;
        std::string text; // keeps its room from run to run
    };

    Statement(std::string sql, Effects effects, int parameters)
        : m_parameters(static_cast<std::size_t>(parameters)), m_sql(std::move(sql)), m_effects(std::move(effects))
    {
    }
    /// Fills m_row, or says that there is none; the first of a run takes the parameters.
    virtual Step next(bool first) = 0;
    virtual void end() = 0;
    /// A number as text.
    virtual std::string_view rendered(int column) const = 0;

    std::vector<Parameter> m_parameters;
    std::vector<Cell> m_row;

private:
    bool m_running = false;
    std::string m_sql;
    Effects m_effects;
};

/// Ends the run of a statement when the work with it ends.
class StatementRun {
public:
    explicit StatementRun(Statement& statement) : m_statement(statement) {}
    ~StatementRun() { m_statement.reset(); }
    StatementRun(const StatementRun&) = delete;
    StatementRun& operator=(const StatementRun&) = delete;

private:
    Statement& m_statement;
};

} // namespace korodbc::host
