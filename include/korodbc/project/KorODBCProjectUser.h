#pragma once

#include <korodbc/project/KorProjectDatabase.h>

/// The user's own project records, with the shipped ones behind them.
class KorODBCProjectUser : public KorProjectDatabase<KorODBCProjectUser> {
public:
    static eDSN dsn() { return KorDSNDefinitions::kAddin; }
    static eIndex index() { return KorDSNDefinitions::kFirstAddin; }
};
