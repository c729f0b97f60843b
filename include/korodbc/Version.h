#pragma once

// The version of the library that these headers belong to. Versions that differ in their first two numbers are not
// made for each other: headers and library must be of one of them.

#define KORODBC_VERSION_MAJOR 0
#define KORODBC_VERSION_MINOR 1
#define KORODBC_VERSION_PATCH 0

/// One number to compare: 10000 for the major, 100 for the minor version.
#define KORODBC_VERSION (KORODBC_VERSION_MAJOR * 10000 + KORODBC_VERSION_MINOR * 100 + KORODBC_VERSION_PATCH)

#define KORODBC_VERSION_QUOTED(number) #number
#define KORODBC_VERSION_TEXT(major, minor, patch)                                                                 \
    KORODBC_VERSION_QUOTED(major) "." KORODBC_VERSION_QUOTED(minor) "." KORODBC_VERSION_QUOTED(patch)
/// "0.1.0"
#define KORODBC_VERSION_STRING                                                                                    \
    KORODBC_VERSION_TEXT(KORODBC_VERSION_MAJOR, KORODBC_VERSION_MINOR, KORODBC_VERSION_PATCH)
