#include "database/QueryResults.h"

namespace korodbc::host {

namespace {
// Beyond this many kept values or queries, all are let go.
constexpr long mostCells = 200000;
constexpr std::size_t mostQueries = 500;
} // namespace

const KorArray<KorCellData>* QueryResults::find(const std::string& query, const State& state)
{
    if (state != m_state || state.version < 0)
        return nullptr;
    const auto known = m_values.find(query);
    return known == m_values.end() ? nullptr : &known->second;
}

void QueryResults::keep(const std::string& query, const State& state, const KorArray<KorCellData>& values)
{
    if (state != m_state || m_cells + values.length() > mostCells || m_asked.size() >= mostQueries) {
        m_asked.clear();
        m_values.clear();
        m_cells = 0;
        m_state = state;
    }
    const bool isNew = m_asked.insert(std::hash<std::string>{}(query)).second;
    if (!isNew && values.length() <= mostCells && m_values.emplace(query, values).second)
        m_cells += values.length();
}

} // namespace korodbc::host
