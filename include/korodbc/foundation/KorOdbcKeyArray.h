#pragma once

#include <korodbc/foundation/KorOdbcKey.h>
#include <korodbc/roots/KorArray.h>

/// Growable array of record keys. It is a handle on a KorArray of its own; only a failed allocation leaves
/// the handle empty, and an empty handle behaves as an array of length 0 that nothing can be put into.
class KorOdbcKeyArray {
public:
    KorOdbcKeyArray();
    KorOdbcKeyArray(const KorOdbcKeyArray& other);
    ~KorOdbcKeyArray();
    /// Takes the other's keys; nothing happens when either handle is empty.
    KorOdbcKeyArray& operator=(const KorOdbcKeyArray& other);

    /// Number of keys in use.
    long length() const;
    /// Stores a key behind the last one. Returns its index, -1 when it could not be stored.
    long append(const KorOdbcKey& key);
    /// Overwrites a key, or grows the array up to the index first.
    void setAt(long index, const KorOdbcKey& key);
    /// Reference to a key; for an index not in use, after the assertion, to one that is no key of the array.
    KorOdbcKey& getAt(long index);
    const KorOdbcKey& getAt(long index) const;
    KorOdbcKey& operator[](long index) { return getAt(index); }
    const KorOdbcKey& operator[](long index) const { return getAt(index); }
    /// Removes a key, moving the following ones down; the storage stays as large as it is.
    void deleteAt(long index);
    /// Sets the number of keys in use. Keys cut off stay in the storage and come back when the array grows
    /// again.
    void setLogicalLength(long length);
    /// Number of keys available without growing.
    long physicalLength() const;

private:
    KorArray<KorOdbcKey>* m_pItems; // nullptr when there was no memory for it
};
