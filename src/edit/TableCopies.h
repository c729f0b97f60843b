#pragma once

#include <korodbc/edit/KorOdbcMan.h>

namespace korodbc {

inline bool isDepth(int depth) { return depth >= 0 && depth < KorOdbcMan::kCopies; }

/// A detail table of the manager's database with its edit copies, as they are stored. Depths are valid.
class TableCopies {
public:
    explicit TableCopies(int type); // a valid one

    bool has(int depth) const;
    bool hasAny() const;
    /// Takes the copy of a depth, or drops it.
    int take(int depth) const;
    int drop(int depth) const;
    /// Writes a copy back into its table, as a whole or not at all. 1; other values leave both as they are.
    int restore(int depth) const;
    /// Renames a copy; `aside` becomes its new name.
    int putAside(int depth, KorString& aside) const;
    /// Brings back what a program that has ended left of an edit of the table, the deepest copy first. The table
    /// is claimed, and edited by nobody. False when a copy stays.
    bool bringBack() const;

    bool isClaimed() const;
    int claim() const;
    void release() const;
    /// Claims the table for an edit under copies. What another program left of one comes back first; what cannot
    /// come back is put aside, since its name is wanted.
    bool claimForEdit() const;

private:
    KorString logicalCopy(int depth) const;
    KorString copy(int depth) const; // physical name
    bool fits(int depth) const;

    const KorString m_logical, m_table;
};

} // namespace korodbc
