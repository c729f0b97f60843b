#pragma once

/// Data that the library reads from outside the tables.
class KorODBCDatabase {
public:
    virtual ~KorODBCDatabase() = default;

    /// Forgets the localised prompts read so far. Does nothing any more while the library is being unloaded.
    static void resetExtDataInterf();
};
