#include "sqlite/Connection.h"
#include "tables/Table.h"

#include <algorithm>
#include <utility>

namespace korodbc::host {

void Connection::logAhead()
{
    if (!std::exchange(m_logsAhead, true))
        run("PRAGMA journal_mode = WAL");
}

void Connection::lose()
{
    if (m_lost.empty())
        m_lost = m_error.empty() ? "the transaction is lost" : m_error;
}

bool Connection::beginWrite()
{
    if (!m_lost.empty()) {
        m_error = m_lost;
        return false;
    }
    if (m_marks.empty())
        return beginTransaction();
    if (m_marks.back() >= batchDepth)
        return true;
    // what waits belongs to the batch around
    if (!flush() || !run("SAVEPOINT " + markName()))
        return false;
    m_marks.push_back(batchDepth);
    return true;
}

bool Connection::beginTransaction()
{
    if (batchDepth > 0 && std::find(writing.begin(), writing.end(), this) == writing.end())
        writing.push_back(this);
    if (!m_refusal.empty()) {
        m_error = m_refusal;
        lose();
        return false;
    }
    if (std::exchange(m_reading, false))
        run("END");
    logAhead();
    if (!run("BEGIN IMMEDIATE")) {
        lose();
        m_lostDepth = batchDepth;
        return false;
    }
    m_marks.push_back(batchDepth);
    m_unchecked = false;
    if (noteDataVersion())
        dropCaches();
    // who claims a table from now on copies it when this transaction is over
    m_claimedByOthers = m_claims.ofOthers();
    return true;
}

bool Connection::flush()
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

bool Connection::commit()
{
    bool stored = flush() && m_lost.empty();
    if (!m_lost.empty())
        m_error = m_lost;
    if (stored && inTransaction())
        stored = run("COMMIT");
    const std::string reason = m_error;
    if (!stored)
        rollback();
    m_error = reason;
    m_marks.clear();
    m_lost.clear();
    m_claimedByOthers.clear();
    return stored;
}

void Connection::rollback()
{
    m_pending.reset();
    if (inTransaction() && sqlite3_get_autocommit(m_db) == 0)
        run("ROLLBACK");
    m_marks.clear();
    m_lost.clear();
    m_claimedByOthers.clear();
    forgetUndone();
}

void Connection::forgetUndone()
{
    dropCaches();
    for (auto& [name, table] : m_tables)
        table->keysUndone();
}

void Connection::keepBatch(int depth)
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
    run("RELEASE " + markName());
}

void Connection::undoBatch(int depth)
{
    if (m_pending && m_pending->depth >= depth)
        m_pending.reset();
    if (m_marks.empty() && m_lostDepth >= depth)
        m_lost.clear(); // nothing of it was written, and its batch is undone
    const auto mark = std::find_if(m_marks.begin(), m_marks.end(), [=](int covered) { return covered >= depth; });
    if (mark == m_marks.end())
        return;
    if (mark == m_marks.begin()) {
        m_pending.reset();
        run("ROLLBACK");
        m_marks.clear();
    } else {
        m_marks.erase(mark + 1, m_marks.end());
        m_marks.pop_back();
        const std::string name = markName();
        m_marks.push_back(depth - 1);
        if (!run("ROLLBACK TO " + name))
            lose();
        if (m_marks.back() <= m_marks[m_marks.size() - 2]) {
            m_marks.pop_back();
            run("RELEASE " + name);
        }
    }
    forgetUndone();
}

bool Connection::beginReading()
{
    if (m_readings++ > 0 || inTransaction())
        return true;
    m_reading = run("BEGIN");
    // the first read is what fixes the state
    Statement* first = m_reading ? prepare("SELECT count(*) FROM sqlite_master") : nullptr;
    if (first == nullptr)
        return false;
    {
        const StatementRun run(*first);
        if (const int code = first->step(); code != SQLITE_ROW) {
            noteFailure(code);
            return false;
        }
    }
    m_unchecked = false;
    if (noteDataVersion())
        dropCaches();
    return true;
}

void Connection::endReading()
{
    if (--m_readings > 0)
        return;
    if (std::exchange(m_reading, false))
        run("END");
}

bool Connection::isRefused(std::string_view table)
{
    if (inTransaction())
        loadTableNames();
    if ((inTransaction() && m_claimedByOthers.empty() && m_copiedElsewhere.empty()) ||
        m_claims.holds(std::string(table)))
        return false;
    std::vector<Claims::Claim> now;
    if (!inTransaction())
        now = m_claims.ofOthers();
    const std::string name = Claims::nameOf(table);
    const bool leftOpen = inTransaction() && m_path != ":memory:" && m_copiedElsewhere.contains(name);
    if (leftOpen) // perhaps somebody is just bringing it back
        now = m_claims.ofOthers();
    for (const Claims::Claim& claim : inTransaction() && !leftOpen ? m_claimedByOthers : now) {
        if (Claims::nameOf(claim.table) != name)
            continue;
        m_error = "table " + claim.table + " " + Claims::heldBy(claim);
        return true;
    }
    if (leftOpen)
        m_error = "an edit of table " + std::string(table) +
                  " was left open by a program that has ended; it has to be taken back first";
    return leftOpen;
}

bool Connection::isRefused(const Statement& statement)
{
    if (statement.controlsTransaction) {
        m_error = "transactions begin and end with batches, not with statements";
        return true;
    }
    loadTableNames();
    if (m_claimedByOthers.empty() && m_copiedElsewhere.empty())
        return false;
    const auto refused = [this](const std::string& table) { return isRefused(table); };
    return std::any_of(statement.writtenTables.begin(), statement.writtenTables.end(), refused) ||
           std::any_of(statement.definedTables.begin(), statement.definedTables.end(), refused);
}

} // namespace korodbc::host
