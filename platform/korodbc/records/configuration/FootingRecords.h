#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// The values that a formula of an isolated footing may use. Table "FootingIsolatedFormulaMask".
struct StructFootingIsolatedFormulaMask {
    int key = -1;
    KorString runName;
    KorString mask; // variables, separated by semicolons
};
struct StructFootingIsolatedFormulaMaskMarshal : RecordMarshal<StructFootingIsolatedFormulaMask> {};

/// A formula that sizes an isolated footing. Table "FootingIsolatedFormulaDefault".
struct StructFootingIsolatedFormulaDefault {
    int key = -1;
    KorString runName;
    int mask = -1;
    KorString formula; // gives mm
    int sortOrder = 0;
};
struct StructFootingIsolatedFormulaDefaultMarshal : RecordMarshal<StructFootingIsolatedFormulaDefault> {};
