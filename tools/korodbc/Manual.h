#pragma once

#include <CLI/CLI.hpp>
#include <string>

// What the packages hold beside the command line; made of its help, so that both say the same.

/// The manual page, for `man`.
std::string manualPage(const CLI::App& program, const std::string& version);

/// The script that lets bash complete commands, options and files.
std::string bashCompletion(const CLI::App& program);
