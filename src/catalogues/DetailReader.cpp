#include <korodbc/catalogues/DetailReader.h>
#include <korodbc/foundation/KorCurrentDatabase.h>

DetailReading::DetailReading()
    : m_dsn(KorDSNManager::getInstance().getCurrentDSN()), m_index(KorDSNManager::getInstance().getCurrentIndex())
{
    if (KorDSNManager& service = KorDSNManager::getInstance(); !service.isRequested())
        service.setCurrent(KorCurrentDatabase::m_currentDSN, KorCurrentDatabase::m_currentAddIn);
}

DetailReading::~DetailReading() { KorDSNManager::getInstance().setCurrent(m_dsn, m_index); }
