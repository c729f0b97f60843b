#pragma once

#include <string>

namespace korodbc::host {

/// What kept a database from doing its work, as far as that tells what to do about it.
enum class FailureKind {
    None,
    Refused,     // the work itself: a statement, a value, a state that does not allow it
    Busy,        // another program is writing
    Edited,      // another program edits the table
    LeftOpen,    // a program that has ended left an edit open
    ReadOnly,    // it may be read, not written
    Unreachable, // it cannot be opened
    Missing,     // it is not there
    Full,        // there is no room left
    Disk,        // reading or writing failed
    Damaged,     // it is no database, or one with errors
    Layout,      // tables or columns are others than expected
};

/// A failure: its kind, and one line for a person.
struct HostError {
    FailureKind kind = FailureKind::None;
    std::string text;
};

/// The kind of a failed operation of the operating system, by its `errno`.
FailureKind failureOfSystem(int code);

} // namespace korodbc::host
