#pragma once

/// What the library reads from outside the tables. Threads: one.
class KorODBCDatabase {
public:
    virtual ~KorODBCDatabase() = default;

    /// Forgets the localised prompts read so far. Does nothing any more while the library is being unloaded.
    static void resetExtDataInterf();
};
