#pragma once

#include <korodbc/records/configuration/SectionBehaviourRecords.h>
#include <korodbc/records/configuration/SectionRecords.h>

// Classes of sections and their sections. An internal name is made of a class key and a section name. Names of
// sections are found without regard to case. Results: 1 found or read, 0 not, where nothing else is said;
// outputs are unchanged on failure. Threads: one. Needs: an open repository.

/// Type name of the class with this run name, over all sources.
int kor_odbc_get_ClassTypeName(KorString runName, KorString& typeName);
/// Run name of the class with this key, over all sources.
int kor_odbc_get_ClassRunName(KorString typeName, KorString& runName);
/// Name of the subtype of a section's class.
int kor_odbc_get_sec_subtype_name(const KorString& internalName, KorString& subtypeName);
/// Material of a section's class; -1 when the name cannot be split.
int kor_odbc_getMaterialForSectionClass(const KorString& internalName, KorString& material);

/// Run names of the sections of the class at an index, counted from 0; for an index without a class, those of
/// all classes. Returns the number of entries in the list.
long kor_odbc_get_menu_list(long classIndex, KorArray<KorString>& names);
/// Run names of the sections of a class. Returns the number of entries in the list, which is unchanged when
/// there is no such class.
long kor_odbc_get_menu_list(const KorString& classRunName, KorArray<KorString>& names);
/// Run names of the sections of a class.
int kor_odbc_get_menu_sublist(const KorString& classRunName, KorArray<KorString>& names);

/// Angle from the y axis to the strong principal axis in degrees. The profile data source is asked first.
int kor_odbc_getSectionAlpha(double& alpha, const KorString& internalName);
/// The 18 calculation values of a section in their stored order; empty on failure.
int kor_odbc_getSectionCalculationParams(KorArray<double>& params, const KorString& internalName);

/// Key of the behaviour of a class, given by its key.
int kor_odbc_getSectionBehaviourKey(const KorString& profileClass, long& behaviour);
/// How sections of this behaviour are unwound.
int kor_odbc_getSectionUnwind(int& unwind, long behaviour);
