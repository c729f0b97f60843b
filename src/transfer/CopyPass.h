#pragma once

#include "DeepCopyGraph.h"
#include "foundation/ManagerDatabase.h"

#include <korodbc/repository/KorDatabaseAccess.h>

#include <optional>

namespace korodbc {

/// The collecting pass of a copy: it sees one state of the database that the host requests, or without a request
/// of the manager's.
class CollectPass {
public:
    CollectPass();

private:
    std::optional<KorDSNRequest> m_request;
    std::optional<KorDatabaseReading> m_reading;
};

/// The writing pass of a copy into the manager's database: a batch that has the write lock, so that names and
/// numbers found free stay so. When it is undone, the copy knows nothing of its rows any more.
class WritePass {
public:
    explicit WritePass(DeepCopyGraph& graph);
    /// False when the tables cannot be written; nothing must be written then.
    bool isReady() const { return m_ready; }
    /// Keeps what was written. Returns the result, or `failed` when it could not be stored.
    long end(long result, long failed) { return m_batch.end(1) == 1 ? result : failed; }

private:
    static bool prepare(DeepCopyGraph& graph);

    const ManagerDatabase m_database;
    KorDatabaseBatch m_batch;
    bool m_ready;
};

/// A public operation of either pass. What a callback of the host throws ends it with -1.
template <class Collect>
long collecting(Collect collect)
{
    try {
        const CollectPass pass;
        return collect();
    } catch (...) {
        return -1;
    }
}

template <class Save>
long saving(DeepCopyGraph& graph, Save save)
{
    try {
        WritePass pass(graph);
        return pass.end(pass.isReady() ? save() : -1, -1);
    } catch (...) {
        return -1;
    }
}

} // namespace korodbc
