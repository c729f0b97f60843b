#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// An installation that writes records; the key is what its records are stamped with. Table "Authors".
struct StructAuthor {
    KorString companyText;
    KorString companyName;
};
struct StructAuthorMarshal : RecordMarshal<StructAuthor> {};

/// The range of keys that a developer's own records take, both ends included. Table "DevelopersIDs".
struct StructDevelopersID {
    int key = -1;
    KorString runName;
    int rangeStart = 0;
    int rangeEnd = 0;
};
struct StructDevelopersIDMarshal : RecordMarshal<StructDevelopersID> {};
