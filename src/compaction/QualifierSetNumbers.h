#pragma once

namespace korodbc {

class CompactTables;

/// Numbers the qualifier sets of a run's database from 1, in the order of their keys, with their items and every
/// reference to them. Afterwards each reference that named a set has to name that set: otherwise the run fails.
/// Must run in a batch. Returns 1, or 0 when the run has failed.
int numberQualifierSets(CompactTables& run);

} // namespace korodbc
