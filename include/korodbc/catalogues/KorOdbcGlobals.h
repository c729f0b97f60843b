#pragma once

#include <korodbc/records/configuration/AuthorRecords.h>
#include <korodbc/roots/KorString.h>

/// Values that hold for a whole installation.
class KorOdbcGlobals {
public:
    virtual ~KorOdbcGlobals() = default;

    /// The range of keys of the developer with this name. Returns 1 when found; otherwise `range` is
    /// unchanged.
    static int getDeveloperIDRange(const KorString& name, StructDevelopersID& range)
    {
        return StructDevelopersIDMarshal::getStructByRunName(name, range);
    }
};
