#include "database/Database.h"
#include "database/Table.h"

#include <algorithm>
#include <utility>

namespace korodbc::host {

void Database::lose()
{
    if (m_lost.kind == FailureKind::None)
        m_lost = m_failure.kind == FailureKind::None ? HostError{FailureKind::Refused, "the transaction is lost"}
                                                     : m_failure;
}

bool Database::beginWrite()
{
    if (m_lost.kind != FailureKind::None) {
        m_failure = m_lost;
        return false;
    }
    if (m_marks.empty())
        return beginTransaction();
    if (m_marks.back() >= batchDepth)
        return true;
    // what waits belongs to the batch around
    if (!flush() || !reported("SAVEPOINT " + markName(), m_engine->setMark(mark())))
        return false;
    m_marks.push_back(batchDepth);
    return true;
}

bool Database::beginTransaction()
{
    if (batchDepth > 0 && std::find(writing.begin(), writing.end(), this) == writing.end())
        writing.push_back(this);
    if (m_engine->refusal().kind != FailureKind::None) {
        m_failure = m_engine->refusal();
        lose();
        return false;
    }
    if (std::exchange(m_reading, false))
        reported("END", m_engine->commit());
    if (!reported("BEGIN IMMEDIATE", m_engine->begin(true))) {
        lose();
        m_lostDepth = batchDepth;
        return false;
    }
    m_marks.push_back(batchDepth);
    m_unchecked = false;
    if (noteDataVersion())
        dropCaches();
    // who claims a table from now on copies it when this transaction is over
    m_claimedByOthers = claims().ofOthers();
    return true;
}

bool Database::flush()
{
    if (!m_pending)
        return true;
    const PendingRow row = std::move(*m_pending);
    m_pending.reset();
    const bool stored =
        row.isNew ? row.table->insertCells(row.key, row.cells)
                  : row.cells.empty() || row.table->updateCells(row.key, row.table->keyColumn(), row.cells);
    if (!stored)
        lose(); // the call that wrote the row has returned
    return stored;
}

bool Database::commit()
{
    bool stored = flush() && m_lost.kind == FailureKind::None;
    if (m_lost.kind != FailureKind::None)
        m_failure = m_lost;
    if (stored && inTransaction())
        stored = reported("COMMIT", m_engine->commit());
    const HostError reason = m_failure;
    if (!stored)
        rollback();
    m_failure = reason;
    m_marks.clear();
    m_lost = {};
    m_claimedByOthers.clear();
    return stored;
}

void Database::rollback()
{
    m_pending.reset();
    if (inTransaction() && m_engine->isInTransaction())
        reported("ROLLBACK", m_engine->rollback());
    m_marks.clear();
    m_lost = {};
    m_claimedByOthers.clear();
    forgetUndone();
}

void Database::forgetUndone()
{
    dropCaches();
    for (auto& [name, table] : m_tables)
        table->keysUndone();
}

void Database::keepBatch(int depth)
{
    m_lostDepth = std::min(m_lostDepth, depth - 1);
    if (m_pending)
        m_pending->depth = std::min(m_pending->depth, depth - 1);
    if (m_marks.empty() || m_marks.back() < depth)
        return;
    m_marks.back() = depth - 1;
    if (m_marks.size() < 2 || m_marks.back() > m_marks[m_marks.size() - 2])
        return;
    m_marks.pop_back(); // nothing is left that would go back there
    reported("RELEASE " + markName(), m_engine->releaseMark(mark()));
}

void Database::undoBatch(int depth)
{
    if (m_pending && m_pending->depth >= depth)
        m_pending.reset();
    if (m_marks.empty() && m_lostDepth >= depth)
        m_lost = {}; // nothing of it was written, and its batch is undone
    const auto mark = std::find_if(m_marks.begin(), m_marks.end(), [=](int covered) { return covered >= depth; });
    if (mark == m_marks.end())
        return;
    if (mark == m_marks.begin()) {
        m_pending.reset();
        reported("ROLLBACK", m_engine->rollback());
        m_marks.clear();
    } else {
        m_marks.erase(mark + 1, m_marks.end());
        m_marks.pop_back();
        const std::string name = markName();
        const int number = this->mark();
        m_marks.push_back(depth - 1);
        if (!reported("ROLLBACK TO " + name, m_engine->undoToMark(number)))
            lose();
        if (m_marks.back() <= m_marks[m_marks.size() - 2]) {
            m_marks.pop_back();
            reported("RELEASE " + name, m_engine->releaseMark(number));
        }
    }
    forgetUndone();
}

bool Database::beginReading()
{
    if (m_readings++ > 0 || inTransaction())
        return true;
    if (!reported("BEGIN", m_engine->begin(false))) {
        m_reading = m_engine->isInTransaction();
        return false;
    }
    m_reading = true;
    m_unchecked = false;
    if (noteDataVersion())
        dropCaches();
    return true;
}

void Database::endReading()
{
    if (--m_readings > 0)
        return;
    if (std::exchange(m_reading, false))
        reported("END", m_engine->commit());
}

bool Database::isRefused(std::string_view table)
{
    if (inTransaction())
        loadTableNames();
    if ((inTransaction() && m_claimedByOthers.empty() && m_copiedElsewhere.empty()) ||
        claims().holds(std::string(table)))
        return false;
    std::vector<Claims::Claim> now;
    if (!inTransaction())
        now = claims().ofOthers();
    const std::string name = Claims::nameOf(table);
    const bool leftOpen = inTransaction() && m_path != ":memory:" && m_copiedElsewhere.contains(name);
    if (leftOpen) // perhaps somebody is just bringing it back
        now = claims().ofOthers();
    for (const Claims::Claim& claim : inTransaction() && !leftOpen ? m_claimedByOthers : now) {
        if (Claims::nameOf(claim.table) != name)
            continue;
        setError("table " + claim.table + " " + Claims::heldBy(claim), FailureKind::Edited);
        return true;
    }
    if (leftOpen)
        setError("an edit of table " + std::string(table) +
                     " was left open by a program that has ended; it has to be taken back first",
                 FailureKind::LeftOpen);
    return leftOpen;
}

bool Database::isRefused(const Statement& statement)
{
    const Effects& effects = statement.effects();
    if (effects.controlsTransaction) {
        setError("transactions begin and end with batches, not with statements");
        return true;
    }
    loadTableNames();
    if (m_claimedByOthers.empty() && m_copiedElsewhere.empty())
        return false;
    const auto refused = [this](const std::string& table) { return isRefused(table); };
    return std::any_of(effects.writtenTables.begin(), effects.writtenTables.end(), refused) ||
           std::any_of(effects.definedTables.begin(), effects.definedTables.end(), refused);
}

} // namespace korodbc::host
