#pragma once

#include <korodbc/host/HostError.h>

#include <string>

/// "; what to do" about a failure, empty when nothing is known to help. `source` is the data source that it is
/// about, where known.
std::string remedy(const korodbc::host::HostError& failure, const std::string& source = {});
/// ": reason; what to do", empty without a reason.
std::string advised(const korodbc::host::HostError& failure, const std::string& source = {});
/// The same about the last failure.
std::string because();
/// Only ": reason" of it.
std::string bareReason();
