#pragma once

#include "DeepCopyGraph.h"

namespace korodbc {

/// The tables that a detail style reaches.
DeepCopyGraph& styleGraph();
/// Those of a detail process; what its style maps name lies in the tables of the detail styles.
DeepCopyGraph& processGraph();

/// Collects a master with its style and, if there is one, its base category. Returns its position, or -1.
long collectMaster(StructDetailMaster& master, long key);
/// Collects the first master of a style. Returns its position, or -1.
long collectMasterOf(long styleKey);
/// Writes a collected master behind its style, in the first free place of its base category. Returns its key, or
/// -1.
long saveMaster(StructDetailMaster& master, long index);

/// Name and progress of a row, as the host wants them; what its callbacks throw passes.
int nameForRow(KorOdbcMan::eTableType type, KorString& name);
void reportProgress(KorOdbcMan::eTableType type, int writing);

} // namespace korodbc
