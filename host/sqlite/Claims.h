#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace korodbc::host {

/// Claims on the tables of one database file: who edits which table under copies. A claim is a lock of the
/// operating system on a byte of a file beside the database, so it ends with its program, however that ends; the
/// file says in words who holds what, and goes with the last claim.
class Claims {
public:
    /// For a database in memory, ":memory:", every claim is free.
    explicit Claims(const std::string& database);
    ~Claims();
    Claims(const Claims&) = delete;
    Claims& operator=(const Claims&) = delete;

    /// Takes the claim on a table; true also when it is held already. On failure `reason` says, behind the name
    /// of the table, who has it or why it cannot be taken.
    bool take(const std::string& table, std::string& reason);
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
    std::vector<Claim> ofOthers() const;

    /// The table that a claim on this name is about: of a copy, the table that was copied.
    static std::string nameOf(std::string_view table);

private:
    enum class Lock { Taken, Refused, Again };
    Lock lock(const std::string& name, std::string& reason);
    bool open(std::string& reason);
    void close();

    const std::string m_file; // empty: in memory
    int m_handle = -1;
    std::set<std::string> m_held, m_leaving; // by nameOf
};

} // namespace korodbc::host
