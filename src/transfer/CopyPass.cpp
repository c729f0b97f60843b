#include "CopyPass.h"

namespace korodbc {

CollectPass::CollectPass()
{
    const KorDSNManager& current = KorDSNManager::getInstance();
    if (!current.isRequested())
        m_request.emplace(KorOdbcMan::m_currentDSN, KorOdbcMan::m_currentAddIn);
    m_reading.emplace(current.getCurrentDSN());
}

WritePass::WritePass(DeepCopyGraph& graph) : m_ready(prepare(graph)) {}

bool WritePass::prepare(DeepCopyGraph& graph)
{
    const eDSN target = KorOdbcMan::m_currentDSN;
    if (KorDatabaseBatch::lock(target) != 1 || !graph.isWritable())
        return false;
    for (DeepCopyGraph* written = &graph; written != nullptr; written = written->beyond())
        KorDatabaseBatch::whenUndone(target, [written, before = written->written()] { written->backTo(before); });
    return true;
}

} // namespace korodbc
