#pragma once

#include "Commands.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

/// The command line: its commands, the options that many of them share, and what to run.
class CommandLine {
public:
    CommandLine();

    /// Adds a command that only looks, unless it is said to write. `example` stands in its help.
    CLI::App* command(const char* name, const char* description, const char* example, std::function<void()> run,
                      Start start = Start::Look);
    /// Adds --source; see `source`.
    void addSource(CLI::App* command, const char* description);
    /// Adds --csv and --json; see `format`.
    void addFormats(CLI::App* command);

    // While a command runs:

    const GlobalOptions& global() const { return m_global; }
    /// What --source named, or the standard.
    std::string sourceOr(const char* standard) const { return m_source.empty() ? standard : m_source; }
    /// Throws when both formats were asked for.
    Format format() const;
    /// Throws when a format was asked for `what`, which prints no table.
    void refuseFormats(const std::string& what) const;
    /// Whether the option is among the arguments of the command.
    bool given(const std::string& option) const;
    /// Throws when it is although it does not fit them; `with` says what it goes with.
    void goesWith(const std::string& option, bool fits, const std::string& with) const;

    /// Parses the arguments and runs the command; the exit code.
    int run(int argc, char** argv);

protected:
    /// Adds a hidden option that prints the text and ends.
    void printing(const char* option, std::function<std::string()> text);
    std::string complaint(const CLI::ParseError& error) const;
    std::string commandName() const;

    CLI::App m_app;
    std::function<void()> m_run;
    GlobalOptions m_global;
    std::string m_source;
    bool m_csv = false, m_json = false;
};

// The commands, by what they are about

void addUnitCommands(CommandLine& line);
void addGratingCommands(CommandLine& line);
void addExchangeCommands(CommandLine& line);
/// Report templates, reports, model selections and what belongs to them.
void addProjectCommands(CommandLine& line);
/// prefix, drawing-prefixes, prefix-profiles
void addPrefixCommands(CommandLine& line);
/// views, explode
void addRuleCommands(CommandLine& line);
void addPreferredCommands(CommandLine& line);
