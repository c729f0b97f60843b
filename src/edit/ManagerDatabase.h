#pragma once

#include "edit/KorOdbcMan.h"
#include "repository/KorDSNManager.h"

namespace korodbc {

/// Makes the manager's database the service's, or another database that of both, until the scope ends: what an
/// operation reads and what it writes is one database.
class ManagerDatabase {
public:
    ManagerDatabase() : ManagerDatabase(KorOdbcMan::m_currentDSN, KorOdbcMan::m_currentAddIn) {}
    ManagerDatabase(eDSN dsn, eIndex index)
        : m_dsn(KorOdbcMan::m_currentDSN), m_addIn(KorOdbcMan::m_currentAddIn), m_request(dsn, index)
    {
        KorOdbcMan::m_currentDSN = dsn;
        KorOdbcMan::m_currentAddIn = index;
    }
    ~ManagerDatabase()
    {
        KorOdbcMan::m_currentDSN = m_dsn;
        KorOdbcMan::m_currentAddIn = m_addIn;
    }
    ManagerDatabase(const ManagerDatabase&) = delete;
    ManagerDatabase& operator=(const ManagerDatabase&) = delete;

private:
    const eDSN m_dsn;
    const eIndex m_addIn;
    const KorDSNRequest m_request;
};

} // namespace korodbc
