#pragma once

#include <korodbc/foundation/KorOdbcKey.h>

/// Who refers to the components of detail styles. Reads go to the current data source; a table that cannot be read
/// holds no references, and nothing refers to the key -1. Threads: one. Needs: an open repository.
class KorDetailSharing {
public:
    // True when two or more references to the component exist, so that it has to be copied before it is changed.
    // A record that refers to it twice counts twice.

    static bool isAnnotationStrategyShared(const KorOdbcKey& key);
    /// By the items of representation maps; only when none of them refers to the set, by point selections.
    static bool isQualifierSetShared(const KorOdbcKey& key);
    static bool isDimensionRequestShared(const KorOdbcKey& key);
    static bool isDimPointSelectionShared(const KorOdbcKey& key);
    static bool isViewRequestShared(const KorOdbcKey& key);
    static bool isViewArrangeStrategyShared(const KorOdbcKey& key);
    static bool isViewLengthClipShared(const KorOdbcKey& key);
    static bool isObjReprMapRuleShared(const KorOdbcKey& key);
    static bool isViewDimStrategyShared(const KorOdbcKey& key);
    static bool isSystemAndBoxShared(const KorOdbcKey& key);
    static bool isArrangerControlShared(const KorOdbcKey& key);
    static bool isAnnotationTypeShared(const KorOdbcKey& key);
    /// The answer for the arranger control with this key.
    static bool isArrangerStrategyShared(const KorOdbcKey& key);

    // True when a reference to the component exists

    static bool findAnnotationStrategy(const KorOdbcKey& key);
    static bool findDimensionRequest(const KorOdbcKey& key);
    /// By an item of a representation map or by a point selection.
    static bool findQualifierSet(const KorOdbcKey& key);
};
