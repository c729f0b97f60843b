#include "engine/sqlite/SqliteStatement.h"

#include "engine/sqlite/SqliteEngine.h"

namespace korodbc::host {

SqliteStatement::SqliteStatement(SqliteEngine& engine, sqlite3_stmt* handle, std::string sql, Effects effects)
    : Statement(std::move(sql), std::move(effects), sqlite3_bind_parameter_count(handle)), m_engine(engine),
      m_handle(handle)
{
    m_row.resize(static_cast<std::size_t>(sqlite3_column_count(handle)));
}

bool SqliteStatement::start()
{
    int code = SQLITE_OK;
    for (std::size_t i = 0; i < m_parameters.size() && code == SQLITE_OK; ++i) {
        const Parameter& parameter = m_parameters[i];
        const int position = static_cast<int>(i) + 1;
        switch (parameter.type) {
        case CellType::Integer:
            code = sqlite3_bind_int64(m_handle, position, parameter.integer);
            break;
        case CellType::Real:
            code = sqlite3_bind_double(m_handle, position, parameter.real);
            break;
        case CellType::Text: // read where it lies: nobody changes it before the next run
            code = sqlite3_bind_text64(m_handle, position, parameter.text.data(), parameter.text.size(),
                                       SQLITE_STATIC, SQLITE_UTF8);
            break;
        case CellType::Null:
            code = sqlite3_bind_null(m_handle, position);
            break;
        }
    }
    if (code != SQLITE_OK)
        m_engine.noteFailure(code);
    return code == SQLITE_OK;
}

Step SqliteStatement::next(bool first)
{
    const bool writes = !effects().onlyReads;
    if (first && writes)
        m_engine.beginRun();
    if (first && !start())
        return Step::Failed;
    const int code = sqlite3_step(m_handle);
    if (code == SQLITE_ROW) {
        if (first) // the table may have other columns than when the statement was prepared
            m_row.resize(static_cast<std::size_t>(sqlite3_column_count(m_handle)));
        takeRow();
        return Step::Row;
    }
    if (first && code == SQLITE_DONE)
        m_row.resize(static_cast<std::size_t>(sqlite3_column_count(m_handle)));
    if (writes)
        m_engine.endRun(effects(), code == SQLITE_DONE);
    if (code == SQLITE_DONE)
        return Step::Done;
    m_engine.noteFailure(code);
    return Step::Failed;
}

void SqliteStatement::takeRow()
{
    int column = 0;
    for (Cell& cell : m_row) {
        // asked once for a cell and twice for the value in it: this runs for every cell that is read
        sqlite3_value* const value = sqlite3_column_value(m_handle, column++);
        switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
            cell.type = CellType::Integer;
            cell.integer = sqlite3_value_int64(value);
            break;
        case SQLITE_FLOAT:
            cell.type = CellType::Real;
            cell.real = sqlite3_value_double(value);
            break;
        case SQLITE_NULL:
            cell.type = CellType::Null;
            break;
        default: {
            cell.type = CellType::Text;
            const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
            cell.text = text == nullptr
                            ? std::string_view()
                            : std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
        }
        }
    }
}

std::string_view SqliteStatement::rendered(int column) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_handle, column));
    return text == nullptr
               ? std::string_view()
               : std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(m_handle, column)));
}

std::string SqliteStatement::expanded() const
{
    char* text = sqlite3_expanded_sql(m_handle);
    std::string expanded(text == nullptr ? "" : text);
    sqlite3_free(text);
    return expanded;
}

const Touched& SqliteStatement::touched() const { return m_engine.touched(); }

} // namespace korodbc::host
