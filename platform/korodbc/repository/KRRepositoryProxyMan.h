#pragma once

/// Caches of the whole table access service.
class KRRepositoryProxyMan {
public:
    /// Drops the cached tables of one add-in slot; 0 drops every cached table.
    static void resetTableCache(int index);
    /// Drops what is kept of the preferred sizes.
    static void resetAllPreferredSizeData();
    /// Has `forget` called, from now on, whenever another repository was opened or the open one closed, so that
    /// what is remembered of its databases goes.
    static void whenSwitched(void (*forget)());
};
