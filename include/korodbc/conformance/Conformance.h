#pragma once

#include <korodbc/records/RecordDescription.h>

#include <functional>
#include <span>
#include <string>

/// What the library relies on in every host, as checks that any host can run.
namespace conformance {

/// What a host may do without, so that what needs it is left out.
enum Offer : unsigned {
    kNothingMore = 0,
    kStatements = 1,  // SQL statements, conditions and orders of `getColumnValues`
    kClaims = 2,      // claims that tell whether a table is claimed
    kExpressions = 4, // regular expressions
    kAll = 7,
};

/// The record types of the scratch tables. Make one table for each, empty, in the base slot of `kConfiguration`,
/// with the columns of its description in their order and those of the numbered items behind.
std::span<const RecordDescription* const> scratchTables();

/// Checks the host that the caller has opened, and leaves the scratch tables empty and a table "ConformanceCopy"
/// beside them. Calls `tell` with one line for each contract that the host breaks, beginning with its name.
/// Returns how many it breaks. Threads: one. Needs: the host's repository, open, with the scratch tables.
int runConformance(unsigned offers, const std::function<void(const std::string& line)>& tell);

} // namespace conformance
