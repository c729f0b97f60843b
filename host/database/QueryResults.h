#pragma once

#include <korodbc/repository/KorCellData.h>
#include <korodbc/roots/KorArray.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace korodbc::host {

/// Values that queries on one database gave, kept while nothing in it changes: from the second time on that a
/// query is asked, so that one that is never asked again costs nothing.
class QueryResults {
public:
    /// Differs after every write, everything undone and every change of another program.
    struct State {
        std::int64_t written = -1; // rows by this program
        std::int64_t version = -1; // of what other programs wrote
        std::int64_t dropped = 0;  // times that everything known was taken anew
        bool operator==(const State&) const = default;
    };

    /// What the query gave in this state; nullptr when that is not kept.
    const KorArray<KorCellData>* find(const std::string& query, const State& state);
    void keep(const std::string& query, const State& state, const KorArray<KorCellData>& values);

private:
    State m_state;
    std::unordered_set<std::size_t> m_asked;                         // hashes of queries
    std::unordered_map<std::string, KorArray<KorCellData>> m_values; // by the text of the query
    long m_cells = 0;
};

} // namespace korodbc::host
