#pragma once

/// What the whole table access service remembers of its databases. What this program writes is always seen; a
/// reset makes the next reads see what other programs have stored, inside a batch that writes those after its end.
/// Threads: one.
class KRRepositoryProxyMan {
public:
    /// Resets the data sources in one slot; 0: every data source.
    static void resetTableCache(int index);
    /// Resets what is read of the preferred sizes.
    static void resetAllPreferredSizeData();
    /// Has `forget` called, until the program ends, whenever another repository was opened or the open one closed,
    /// so that the caller forgets what it knew of its databases.
    static void whenSwitched(void (*forget)());
};
