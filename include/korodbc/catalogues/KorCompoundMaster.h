#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/SectionRecords.h>

/// Classes of compound sections, and the sections in their tables: column 1 is the run name, column 2 the section
/// name. Classes and sections are found without regard to case; the tables are read anew each time, since users
/// edit them.
class KorCompoundMaster : public CatalogueReader<StructCompoundMaster> {
public:
    static int getCompoundMasterStruct(const KorString& name, StructCompoundMaster& record);
    static int getCompoundMasterTable(KorArray<StructCompoundMaster>& records) { return table(records); }
    /// Run names of the sections of a compound class, in table order.
    static int getCompoundSectionRunNames(KorString compoundClass, KorArray<KorString>& names);
    /// From the run names of class and section to their names. The class name is set as soon as the class is
    /// found; 0 when no section has that run name.
    static int getCompoundClassAndSectionName(const KorString& compoundClass, const KorString& sectionRunName,
                                              KorString& className, KorString& sectionName);
    /// From the names of class and section to the section's run name.
    static int getCompoundSectionRunName(const KorString& className, const KorString& sectionName,
                                         KorString& sectionRunName);
};
