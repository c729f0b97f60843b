#pragma once

#include "engine/Claims.h"

namespace korodbc::host {

/// Claims on the tables of one database file. A claim is a lock of the operating system on a byte of a file beside
/// the database; the file says in words who holds what, and goes with the last claim.
class FileClaims final : public Claims {
public:
    /// For a database in memory, ":memory:", every claim is free.
    explicit FileClaims(const std::string& database);
    ~FileClaims() override;

    std::vector<Claim> ofOthers() const override;

private:
    enum class Lock { Taken, Refused, Again };
    bool lock(const std::string& name, const std::string& table, HostError& reason) override;
    void unlock(const std::string& name) override;
    Lock tryLock(const std::string& name, HostError& reason);
    bool open(HostError& reason);
    void leave(); // nothing is held any more
    void close();

    const std::string m_file; // empty: in memory
    int m_handle = -1;
};

} // namespace korodbc::host
