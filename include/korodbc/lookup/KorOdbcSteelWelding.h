#pragma once

#include <korodbc/records/configuration/WeldRecords.h>

// Welds and the texts beside them. Results: 1 found or read, 0 not; outputs are unchanged on failure.
// Threads: one. Needs: an open repository.

/// Name of a weld: keys up to 1000 are basic welds, the others combined ones. Never fails: "access denied" when
/// the table cannot be read, "key not found" without such a key.
KorString kor_odbc_getWeldingDescription(int key);
/// Run names and whole tables of the basic and of the combined welds.
int kor_odbc_getBasicWeldingList(KorArray<KorString>& names);
int kor_odbc_getCombiWeldingList(KorArray<KorString>& names);
int kor_odbc_getWeldTypes(KorArray<StructWeldSeamBasic>& welds);
int kor_odbc_getCombiWeldTypes(KorArray<StructWeldSeam>& welds);

/// Key of a combined weld.
int kor_odbc_getCombiWelding(const KorString& runName, int& key);
/// The basic welds that a combined weld consists of.
int kor_odbc_getCombiWelding(int key, int& firstWeld, int& secondWeld);
/// Run name of a combined weld.
int kor_odbc_getCombiWelding(int key, KorString& runName);
/// Key of the combined weld that these basic welds make; -1 stands for no second weld.
int kor_odbc_getCombiWeldingFor(int firstWeld, int secondWeld, int& key);

/// Name of a face shape; empty without such a key.
KorString kor_odbc_getFaceShapeDescription(int key);
int kor_odbc_getFaceShapeDescription(const KorString& runName, int& key);
int kor_odbc_getFaceShapeDescriptionList(KorArray<KorString>& names);
int kor_odbc_getWeldShapes(KorArray<StructFaceShape>& shapes);

/// Name of a way to make welds; empty without such a key.
KorString kor_odbc_getSeamExecutingDescription(int key);
int kor_odbc_getSeamExecutingDescription(const KorString& runName, int& key);
int kor_odbc_getSeamExecutingDescriptionList(KorArray<KorString>& names);
int kor_odbc_getWeldDesign(KorArray<StructSeamExecuting>& designs);

/// Text beside a weld symbol, of the main configuration or else of the add-in.
int kor_odbc_getTextDescription(const KorString& key, KorString& runName);
/// Keys of those texts: the main configuration's, then the add-in's, also those that both have. 0 and an empty
/// list without any.
int kor_odbc_getWelSeamTextDescriptionList(KorArray<KorString>& keys);
