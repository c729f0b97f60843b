#include "CopyPass.h"

#include "edit/DetailTables.h"

namespace korodbc {

namespace {

/// What a program that has ended left of edits comes back first. A copy that cannot come back is put aside: it
/// would take back what is written now.
void settleLeftCopies(const DeepCopyGraph& graph)
{
    if (KorOdbcMan::bringBackLeftCopies() == 1)
        return;
    graph.forEachTable([](const CopyTable& table) {
        KorString aside;
        for (const int type : {static_cast<int>(table.type), itemTableType(table.type)})
            for (int depth = KorOdbcMan::kFirstCopy; type >= 0 && depth < KorOdbcMan::kCopies; ++depth)
                KorOdbcMan::putCopyAside(static_cast<KorOdbcMan::eTableType>(type),
                                         static_cast<KorOdbcMan::eCopyDepth>(depth), aside);
        return true;
    });
}

} // namespace

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
    const auto isWritable = [&](const CopyTable& table) {
        const auto fits = [&](const RecordDescription& type) { // rows of the target are looked for, too
            return KorDatabaseAccess::checkTable(target, type, false) == 1 &&
                   KorDatabaseAccess::checkTable(target, type, true) == 1;
        };
        const RecordDescription& type = table.description();
        return fits(type) && (!type.items.exists() || fits(type.items.item()));
    };
    settleLeftCopies(graph);
    // a file that does not fit is not even locked, which would change it; under the lock it is looked at again
    const auto fits = [&] {
        const KorDatabaseReading reading(target);
        return graph.forEachTable(isWritable);
    };
    if (!fits() || KorDatabaseBatch::lock(target) != 1)
        return false;
    settleLeftCopies(graph);
    if (!graph.forEachTable(isWritable))
        return false;
    for (DeepCopyGraph* written = &graph; written != nullptr; written = written->beyond())
        KorDatabaseBatch::whenUndone(target, [written, before = written->written()] { written->backTo(before); });
    return true;
}

} // namespace korodbc
