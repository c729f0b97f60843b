#pragma once

#include <string>

/// Why a database could not be used, as far as it tells what to do about it.
enum class Trouble {
    Unknown,
    Full,
    Disk,
    Busy,
    Edited,
    LeftOpen,
    ReadOnly,
    Unreachable,
    Missing,
    Damaged,
    Layout
};

/// The kind of trouble that a reason of the database engine or of the host means.
Trouble troubleOf(const std::string& reason);
/// "; what to do" about that reason, empty when nothing is known to help. `source` is the data source that it is
/// about, where known.
std::string remedy(const std::string& reason, const std::string& source = {});
/// ": reason; what to do", empty without a reason.
std::string advised(const std::string& reason, const std::string& source = {});
/// The same about the last failure.
std::string because();
/// Only ": reason" of it, as the database engine gives it.
std::string bareReason();
