#pragma once

#include "DeepCopyGraph.h"

namespace korodbc {

/// The tables that a detail style reaches.
DeepCopyGraph& styleGraph();

} // namespace korodbc
