#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// One numbered item of a scratch row.
struct ConformancePart {
    int number = 0;
};

/// A row with one column of each kind and three numbered items. Table "ConformanceRows".
struct ConformanceRow {
    int key = -1;
    KorString runName;
    int number = -1;
    double real = 0;
    int sortOrder = 0;
    int parts = 0;
    KorArray<ConformancePart> items;
};

/// What a later version might make of the same table: a column that it lacks.
struct ConformanceWideRow {
    int key = -1;
    KorString runName;
    int later = 11;
};

/// An item in a table of its own. Table "ConformanceItems".
struct ConformanceItem {
    int key = -1;
    int list = -1;
    int position = 0;
    KorString text;
};

/// A record with such items. Table "ConformanceLists".
struct ConformanceList {
    int key = -1;
    KorString runName;
    KorArray<ConformanceItem> items;
};

/// A record whose key is a text. Table "ConformanceNames".
struct ConformanceName {
    KorString key;
    KorString runName;
};

/// A record whose table nobody makes.
struct ConformanceMissing {
    int key = -1;
    KorString runName;
};
