#pragma once

#include <korodbc/records/configuration/ExchangeRecords.h>

// What was read from a static analysis: objects, nodes, sections, properties. Results: 1 found or read, 0 not;
// outputs are unchanged on failure. Threads: one. Needs: an open repository.

int kor_odbc_DSTVstatic_getNumberOfObjects(long& number);
int kor_odbc_DSTVstatic_getObject(long objectNumber, StructDSTVStaticInB01& object);
int kor_odbc_DSTVstatic_getNode(long nodeNumber, StructDSTVStaticInB02& node);
/// Section of an object, and the axis that it is placed by.
int kor_odbc_DSTVstatic_getProfile(long objectNumber, KorString& profileName,
                                   StructDSTVStaticInB03::eReferenceAxis& referenceAxis);
int kor_odbc_DSTVstatic_getObjectProperty(long objectNumber, const KorString& propertyName, KorString& value);
