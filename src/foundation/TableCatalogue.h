#pragma once

#include <korodbc/roots/KorString.h>

namespace korodbc {

/// Table name of a catalogue id, 0 to 329; the empty text for retired ids and for any other value.
KorString tableNameOfId(unsigned id);

} // namespace korodbc
