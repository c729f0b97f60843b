#pragma once

/// Start-up of the library.
class KorOdbcDSNDefinitions {
public:
    virtual ~KorOdbcDSNDefinitions() = default;

    /// To be called once the host has set up its data sources and before anything is read. Returns 1, or 0
    /// when the database engine cannot be used.
    static int initOEDbConnections();
};
