#pragma once

#include <korodbc/project/KorProjectDatabase.h>

/// The advanced project records.
class KorODBCProjectAdvance : public KorProjectDatabase<KorODBCProjectAdvance> {
public:
    static eDSN dsn() { return KorDSNDefinitions::kProjectAdvance; }
    static eIndex index() { return KorDSNDefinitions::kBase; }
};
