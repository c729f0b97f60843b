#pragma once

#include "support/CrashCycle.h"

#include <korodbc/compaction/KorOdbcCompactDetailsTables.h>

#include <optional>
#include <set>
#include <span>

namespace crash {

using Compact = KorOdbcCompactDetailsTables;
inline constexpr eDSN inDetails = KorDSNDefinitions::kDetails;
inline constexpr eDSN inAddin = KorDSNDefinitions::kAddin;

/// The folder of the repository that a child works in.
extern fs::path repository;

/// What a program does to the details, in one piece or several, while something happens to it.
struct Operation {
    const char* name;
    void (*prepare)(); // comes before, undisturbed; may be nullptr
    void (*act)();
    enum Result { Nothing, Something } leaves; // what the next start finds of it when it was not killed
    bool keepsReferences = false;              // leaves no reference to nothing that was not there before
    bool onTwins = false;                      // in a repository with duplicates
    // a compaction of that type may leave the references that its preview announces
    std::optional<Compact::eCompactType> announced = {};
};
inline void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }
std::span<const Operation> operations();

/// The references to nothing in the details of a repository, a line each; with the type of a compaction also those
/// that its preview says would be left.
std::set<std::string> dangling(const fs::path& folder, std::optional<Compact::eCompactType> preview);

// Repositories: one with a style and a process in the details and others in the add-in, the same with duplicates;
// the one that is worked on; one that was left by a killed process.
inline fs::path base() { return scratch() / "base"; }
inline fs::path twins() { return scratch() / "twins"; }
inline fs::path work() { return scratch() / "work"; }
inline fs::path killed() { return scratch() / "killed"; }
/// Makes the first two.
void makeRepositories();

/// A name of letters and digits for a test's parameter.
inline std::string plainName(const std::string& name)
{
    std::string plain;
    for (const char c : name)
        if (std::isalnum(static_cast<unsigned char>(c)))
            plain += c;
    return plain;
}

} // namespace crash
