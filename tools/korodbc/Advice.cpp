#include "Advice.h"

#include <korodbc/host/EmbeddedHost.h>

using korodbc::host::FailureKind;
using korodbc::host::HostError;

std::string remedy(const HostError& failure, const std::string& source)
{
    const std::string restore =
        "korodbc restore FILE" + (source.empty() || source == "Details" ? "" : " --source \"" + source + '"');
    switch (failure.kind) {
    case FailureKind::Full:
        return "; make room on the disk and try again";
    case FailureKind::Disk:
        return "; look whether the disk is full or failing";
    case FailureKind::Busy:
        return "; try again when the other program is done with it";
    case FailureKind::Edited: // the line says it
        break;
    case FailureKind::LeftOpen:
        return "; see: korodbc recover";
    case FailureKind::ReadOnly:
        return "; make the file and its folder writable for you";
    case FailureKind::Unreachable:
        return "; look whether you may use the file and its folder";
    case FailureKind::Missing:
        return "; correct the connection in repository.toml, or bring back a backup with: " + restore;
    case FailureKind::Damaged:
        return "; bring back a backup with: " + restore;
    case FailureKind::Layout:
        return "; see: korodbc status";
    case FailureKind::None:
    case FailureKind::Refused:
        break;
    }
    return {};
}

std::string advised(const HostError& failure, const std::string& source)
{
    return failure.text.empty() ? "" : ": " + failure.text + remedy(failure, source);
}

std::string bareReason()
{
    const std::string error = korodbc::host::lastError();
    return error.empty() ? "" : ": " + error;
}

std::string because() { return advised(korodbc::host::lastFailure()); }
