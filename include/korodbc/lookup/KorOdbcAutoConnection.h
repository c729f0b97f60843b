#pragma once

#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

/// A parameter of a connection situation: one row of a parameter-set table, fields in the order of its columns.
struct AutoConnParamSetSituationStruct {
    int key = 0;
    int situation = 0;
    int intValue1 = 0;
    KorString name; // rows are matched by it when written
    int intValue2 = 0;
    KorString textValue;
    int intValue3 = 0;
};

// Threads: one. Needs: an open repository.

/// Appends the parameters of a situation. `table` is the logical name of a parameter-set table. Returns 1 when
/// there are any, else 0.
int kor_odbc_getAutoConnSituationParams(int situation, KorString table,
                                        KorArray<AutoConnParamSetSituationStruct>& params);
/// Writes parameters of a situation that has some already: over the first row of the same name, or as new rows.
/// Returns 0 when the situation has none, and nothing is written then; otherwise the result of the last row
/// added, 1 when none was.
int kor_odbc_setAutoConnSituationParams(int situation, KorString table,
                                        const KorArray<AutoConnParamSetSituationStruct>& params);
