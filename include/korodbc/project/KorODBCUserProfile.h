#pragma once

#include <korodbc/roots/KorString.h>

/// The owner of this installation, which every written detail record carries, and the limits of user-defined
/// sections. Threads: one. Needs: an open repository.
class KorODBCUserProfile {
public:
    virtual ~KorODBCUserProfile() = default;

    /// Reads the owner from the default values, "-" when there is none, and enters it in the table "Authors"
    /// when it is not there yet.
    static void resetOwnerText();
    /// The key of the owner as last refreshed. `owner` stays as it is while an export or import runs.
    static void getOwnerText(KorString& owner);

    /// Largest number of points of a user section; without the default value the result of reading it (0).
    static int getMaxPointsUserSection();
    /// Largest number of contours of a user section; without the default value the result of reading it (0).
    static int getMaxContoursUserSection();

    /// Name of the section type that user sections get.
    static KorString Getm_sSectionTypeName() { return m_charSectionTypeName; }
    static void Setm_sSectionTypeName(const KorString& name) { m_charSectionTypeName = name; }

    static KorString m_charOwnerText; // the owner's key; empty before the first refresh
    static KorString m_charSectionTypeName;
};
