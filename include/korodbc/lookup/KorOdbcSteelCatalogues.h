#pragma once

#include <korodbc/records/configuration/AnchorRecords.h>
#include <korodbc/records/configuration/AuthorRecords.h>
#include <korodbc/records/configuration/BoltRecords.h>
#include <korodbc/records/configuration/ExchangeRecords.h>
#include <korodbc/records/configuration/LanguageRecords.h>
#include <korodbc/records/configuration/PresentationRecords.h>

// Whole tables, help, notes and names for exchange. Results: 1 found or read, 0 not; outputs are unchanged on
// failure. Threads: one. Needs: an open repository.

int kor_odbc_getRenderMaterials(KorArray<StructRenderMaterial>& materials);
int kor_odbc_getAuthors(KorArray<StructAuthor>& authors);
int kor_odbc_getAnchors(KorArray<StructAnchorsName>& anchors);
int kor_odbc_getAnchorDefinitions(KorArray<StructAnchorsDefinition>& definitions);
int kor_odbc_getStrengthClasss(KorArray<StructStrengthClass>& classes);
int kor_odbc_getSets(KorArray<StructSet>& sets);
int kor_odbc_getSources(KorArray<StructSource>& sources);
/// The symbol with this run name.
int kor_odbc_getSymbolRecord(const KorString& runName, StructSymbols& symbol);

/// What the help button of a dialog shows. Both operations are one.
int kor_odbc_getHelpTag(const KorString& key, StructHelpButtons& button);
int kor_odbc_getButtonStringId(const KorString& key, StructHelpButtons& button);

/// Titles of the notes of the main configuration and the add-in, also those that both have, sorted without
/// regard to case. 0 and an empty list without any.
int kor_odbc_getNotesList(KorArray<KorString>& titles);

/// Short names of section families, by their keys, which are given as texts.
int kor_odbc_getDSTVNamesTable(KorArray<StructDSTVNames>& names);
int kor_odbc_getDSTVNamesKey(const KorString& runName, KorString& key);
int kor_odbc_getDSTVNamesDescription(const KorString& key, KorString& runName);
