#pragma once

#include <korodbc/records/configuration/SectionRecords.h>

#include <functional>

/// The host's access to section tables. A section's internal name is made of its class key and its section
/// name; section names are found without regard to case. Operations over all sources take the class from the first
/// source that has it (RecordAccess::Sources::All), and look for its section table there first. Results: 1 found
/// or read, 0 not; outputs are unchanged on failure. Nothing is thrown. Threads: one. Needs: an open repository.
class KorDatabaseProfileAccess {
public:
    /// Reads the sections of a class, sorted by section name without regard to case. Mode 3 reads whole
    /// records; any other mode reads keys and section names only.
    static int getProfileTable(const StructProfileClass& profileClass, KorArray<StructSection>& sections,
                               int mode);
    /// Calls `act` for the sections of a class, in table order, until it returns false. A section is valid during
    /// the call only, and `act` must not read or write through the service.
    static int visitSections(const StructProfileClass& profileClass,
                             const std::function<bool(const StructSection& section)>& act);
    /// Section names of the given keys of a class, in table order; keys that no section has are left out.
    static int getProfilesSectionNameListByKeysAllSources(const KorString& classKey, const KorArray<long>& keys,
                                                          KorArray<KorString>& sectionNames);
    /// The internal name of the section with this name in the class with this run name.
    static int getInternalNameByRunNamesAllSources(const KorString& classRunName, const KorString& sectionName,
                                                   KorString& internalName);
    /// Splits an internal name. A name without separator fails.
    static int decomposeInternalName(const KorString& internalName, KorString& classKey, KorString& sectionName);
    /// The compound class with this name, found without regard to case.
    static int getCompoundMasterStruct(const KorString& name, StructCompoundMaster& record);
    /// The 18 calculation values of a section in their stored order. `isUserSection` becomes whether its table is
    /// in `kUserSections`; with `currentSourceOnly` the class is looked for in the current data source alone.
    static int loadSectionData(KorArray<double>& values, const KorString& internalName, bool& isUserSection,
                               bool currentSourceOnly);
};
