#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/exchange/ConversionRecords.h>

// Sections under the names of other applications. Both tables hold rules: the section of a row is a regular
// expression (see KorRegExWrapper) that has to match a name as a whole, or a plain name that has to equal it, in
// the same case of letters. The first row in table order that is of the application, the object type and the class
// asked for, and whose section matches, answers; a class that is empty or "-" asks for rows of every class. In the
// row's answer "%1" becomes the text of the first group, then "%2" that of the second and so on, so that "%12" is
// group 1 before a "2"; what has no group stays, and so does an answer found by a plain name. An expression that
// does not compile is no more than a plain name, and a row whose answer would have more than a million characters
// gives none.
//
// Expressions are compiled once, when a row is first tried, and again after a row of the table changed. Results: 1
// mapped, 0 when no row answers or the table cannot be read; the outputs are unchanged then.

/// A row of such a table.
struct KorExchangeRule {
    KorString table; // logical name
    int key = -1;
    KorString expression;                 // or plain name
    KorString error;                      // why the expression does not compile; empty when it does
    KorString answerClass, answerSection; // where the row answered
};

/// Sections of applications under neutral names.
class KorODBCQXT_Profile_Conversion : public CatalogueReader<StructQXT_Profile_Conversion> {
public:
    static int getQXTProfiles(KorString profileClass, KorString section, int objectType, int application,
                              KorString& qxtClass, KorString& qxtSection);
    /// The same, with the row that answers.
    static int getQXTProfiles(KorString profileClass, KorString section, int objectType, int application,
                              KorString& qxtClass, KorString& qxtSection, KorExchangeRule& rule);
    /// The same among the rows of that family of sections and that source of sizes first (keys in "ProfileFamily"
    /// and "Sources"), then among all.
    static int getQXTProfileForHalden(const KorString& profileClass, const KorString& section, int objectType,
                                      int application, int family, int source, KorString& outClass,
                                      KorString& outSection);
    /// The class, by its key, of a section in the first of a family's section tables that holds it. The section's
    /// name is found in any case of letters and returned as it was given. 0 also for a table that belongs to no
    /// class.
    static int getKRProfileForHalden(const KorString& family, const KorString& section, KorString& outClass,
                                     KorString& outSection);
    /// Names of the families that have the section.
    static int getHaldenFamilyNamesForKRProfile(const KorString& section, KorArray<KorString>& families);
    /// The rows whose expressions do not compile, in table order.
    static int getFaultyRules(KorArray<KorExchangeRule>& rules);
};

/// Sections with neutral names under the names of applications.
class KorODBCProfile_Exports_Conversion : public CatalogueReader<StructProfile_Exports_Conversion> {
public:
    // The application stands before the object type here.
    static int getExportProfiles(KorString qxtClass, KorString qxtSection, int application, int objectType,
                                 KorString& exportClass, KorString& exportSection);
    /// The same, with the row that answers.
    static int getExportProfiles(KorString qxtClass, KorString qxtSection, int application, int objectType,
                                 KorString& exportClass, KorString& exportSection, KorExchangeRule& rule);
    /// As `getQXTProfileForHalden`.
    static int getExportProfileForHalden(const KorString& qxtClass, const KorString& qxtSection, int objectType,
                                         int application, int family, int source, KorString& outClass,
                                         KorString& outSection);
    /// A section of this application under the name that another has for it, or with `toNative` the other way
    /// round, by way of the neutral name.
    static int getMappedSection(const KorString& profileClass, const KorString& section, const int& application,
                                bool toNative, KorString& outClass, KorString& outSection);
    /// The same, with the rows that answer; also when only the first does.
    static int getMappedSection(const KorString& profileClass, const KorString& section, const int& application,
                                bool toNative, KorString& outClass, KorString& outSection,
                                KorArray<KorExchangeRule>& rules);
    /// The rows whose expressions do not compile, in table order.
    static int getFaultyRules(KorArray<KorExchangeRule>& rules);
};
