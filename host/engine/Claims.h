#pragma once

#include <korodbc/host/HostError.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace korodbc::host {

/// Claims on the tables of one database: who edits which table under copies. An engine gives the locks behind
/// them, which end with their program, however that ends.
class Claims {
public:
    virtual ~Claims() = default;
    Claims() = default;
    Claims(const Claims&) = delete;
    Claims& operator=(const Claims&) = delete;

    /// Takes the claim on a table; true also when it is held already. On failure `reason` says, behind the name
    /// of the table, who has it or why it cannot be taken.
    bool take(const std::string& table, HostError& reason);
    void giveBack(const std::string& table);
    bool holds(const std::string& table) const { return m_held.contains(nameOf(table)); }
    /// A claim that is to be given back when the batch is stored, unless it is wanted again before.
    void setLeaving(const std::string& table, bool leaving);
    bool isLeaving(const std::string& table) const { return m_leaving.contains(nameOf(table)); }

    struct Claim {
        std::string table;
        std::string holder; // "anna on PC7, korodbc (process 1234), since 2026-11-21 17:03"
    };
    /// "is being edited by ...", behind the name of a table.
    static std::string heldBy(const Claim& claim);
    /// The claims that other programs hold now.
    virtual std::vector<Claim> ofOthers() const = 0;

    /// The table that a claim on this name is about: of a copy, the table that was copied.
    static std::string nameOf(std::string_view table);

protected:
    bool holdsAny() const { return !m_held.empty(); }

private:
    /// Takes the lock of that name, which stands for the table, or says why not. Called for names not held.
    virtual bool lock(const std::string& name, const std::string& table, HostError& reason) = 0;
    /// Gives a lock back; holdsAny() says whether others remain.
    virtual void unlock(const std::string& name) = 0;

    std::set<std::string> m_held, m_leaving; // by nameOf
};

} // namespace korodbc::host
