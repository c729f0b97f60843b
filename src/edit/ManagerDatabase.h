#pragma once

#include "edit/KorOdbcMan.h"
#include "repository/KorDSNManager.h"

#include <optional>

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

/// For operations that name a data source without a slot: of the country add-ins they mean the manager's current
/// one, unless one is requested.
class CountrySlot {
public:
    explicit CountrySlot(eDSN dsn)
    {
        const KorDSNManager& service = KorDSNManager::getInstance();
        if (dsn == KorDSNDefinitions::kCountryAddin && KorOdbcMan::m_currentDSN == dsn &&
            !(service.isRequested() && service.getCurrentDSN() == dsn))
            m_request.emplace(dsn, KorOdbcMan::m_currentAddIn);
    }

private:
    std::optional<KorDSNRequest> m_request;
};

} // namespace korodbc
