#pragma once

#include <korodbc/repository/KorDSNDefinitions.h>

/// The manager's database: the data source and slot of the database that is edited and that transfers write to. At
/// first, and when a repository was opened or closed, it is the base details. Threads: one.
class KorCurrentDatabase {
public:
    static eDSN getCurrentDSN() { return m_currentDSN; }
    static void setCurrentDSN(eDSN dsn) { m_currentDSN = dsn; }
    static eIndex getCurrentAddIn() { return m_currentAddIn; }
    static void setCurrentAddIn(eIndex addIn) { m_currentAddIn = addIn; }

    static inline eDSN m_currentDSN = KorDSNDefinitions::kDetails;
    static inline eIndex m_currentAddIn = KorDSNDefinitions::kBase;
};
