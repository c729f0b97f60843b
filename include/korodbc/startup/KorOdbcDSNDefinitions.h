#pragma once

/// Start-up of the library.
class KorOdbcDSNDefinitions {
public:
    virtual ~KorOdbcDSNDefinitions() = default;

    /// To be called once after a repository was opened, before anything is read; then
    /// KorOdbcMan::initializeTables. Returns 1, or 0 when the database engine cannot be used. Threads: one.
    static int initOEDbConnections();
};
