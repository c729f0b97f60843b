#include <korodbc/repository/KorDSNManager.h>

namespace {
eIndex drawingSlot = KorDSNDefinitions::kBase;
} // namespace

KorDSNManager& KorDSNManager::getInstance()
{
    static KorDSNManager manager;
    return manager;
}

void KorDSNManager::setCurrent(eDSN dsn, eIndex index)
{
    m_dsn = dsn;
    m_index = index;
}

eIndex KorDSNManager::getAddInIdx(int position)
{
    return static_cast<eIndex>(KorDSNDefinitions::kFirstAddin + position);
}

int KorDSNManager::getAddInIdx(eIndex index) { return index - KorDSNDefinitions::kFirstAddin; }

KorDSNRequest::KorDSNRequest(eDSN dsn, eIndex index)
{
    KorDSNManager& manager = KorDSNManager::getInstance();
    m_previousDSN = manager.m_dsn;
    m_previousIndex = manager.m_index;
    manager.setCurrent(dsn, index);
    ++manager.m_requests;
}

KorDSNRequest::~KorDSNRequest()
{
    KorDSNManager& manager = KorDSNManager::getInstance();
    --manager.m_requests;
    manager.setCurrent(m_previousDSN, m_previousIndex);
}

eIndex KorDSNSetDwgSource::GeteIndexForDwg() { return drawingSlot; }

void KorDSNSetDwgSource::SeteIndexForDwg(eIndex index) { drawingSlot = index; }
