#pragma once

#include "DeepCopyGraph.h"

namespace korodbc {

/// The tables that a detail style reaches.
DeepCopyGraph& styleGraph();
/// Collects a master with its style and base category. Returns its position, or -1.
long collectMaster(StructDetailMaster& master, long key);
/// Writes a collected master behind its style, in the first free place of its base category. Returns its key, or
/// -1.
long saveMaster(StructDetailMaster& master, long index);

} // namespace korodbc
