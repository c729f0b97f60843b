#pragma once

#include <korodbc/foundation/KorCurrentDatabase.h>
#include <korodbc/repository/KorDSNManager.h>

#include <optional>

namespace korodbc {

/// Makes a database the manager's.
inline void setManagerDatabase(eDSN dsn, eIndex index)
{
    KorCurrentDatabase::m_currentDSN = dsn;
    KorCurrentDatabase::m_currentAddIn = index;
}

/// Makes the manager's database the current data source, or another database both, until the scope ends: what an
/// operation reads and what it writes is one database.
class ManagerDatabase {
public:
    ManagerDatabase() : ManagerDatabase(KorCurrentDatabase::m_currentDSN, KorCurrentDatabase::m_currentAddIn) {}
    ManagerDatabase(eDSN dsn, eIndex index)
        : m_dsn(KorCurrentDatabase::m_currentDSN), m_addIn(KorCurrentDatabase::m_currentAddIn),
          m_request(dsn, index)
    {
        setManagerDatabase(dsn, index);
    }
    ~ManagerDatabase() { setManagerDatabase(m_dsn, m_addIn); }
    ManagerDatabase(const ManagerDatabase&) = delete;
    ManagerDatabase& operator=(const ManagerDatabase&) = delete;

private:
    const eDSN m_dsn;
    const eIndex m_addIn;
    const KorDSNRequest m_request;
};

/// Makes a database the manager's for good and the current data source until the scope ends.
class NewManagerDatabase {
public:
    NewManagerDatabase(eDSN dsn, eIndex index) : m_request(dsn, index) { setManagerDatabase(dsn, index); }

private:
    const KorDSNRequest m_request;
};

/// For operations that name a data source without a slot: of the country add-ins they mean the manager's current
/// one, unless one is requested.
class CountrySlot {
public:
    explicit CountrySlot(eDSN dsn)
    {
        const KorDSNManager& service = KorDSNManager::getInstance();
        if (dsn == KorDSNDefinitions::kCountryAddin && KorCurrentDatabase::m_currentDSN == dsn &&
            !(service.isRequested() && service.getCurrentDSN() == dsn))
            m_request.emplace(dsn, KorCurrentDatabase::m_currentAddIn);
    }

private:
    std::optional<KorDSNRequest> m_request;
};

} // namespace korodbc
