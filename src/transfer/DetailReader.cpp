#include "transfer/DetailReader.h"

#include "edit/KorOdbcMan.h"

DetailReading::DetailReading()
    : m_dsn(KorDSNManager::getInstance().getCurrentDSN()), m_index(KorDSNManager::getInstance().getCurrentIndex())
{
    if (KorDSNManager& service = KorDSNManager::getInstance(); !service.isRequested())
        service.setCurrent(KorOdbcMan::m_currentDSN, KorOdbcMan::m_currentAddIn);
}

DetailReading::~DetailReading() { KorDSNManager::getInstance().setCurrent(m_dsn, m_index); }
