#include "CommandLine.h"

#include "Manual.h"

#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/Version.h>

#include <cstdio>

namespace {

constexpr const char* exitCodes =
    "Exit codes:\n"
    "  0  done\n"
    "  1  the operation failed; nothing was changed unless the message says so\n"
    "  2  wrong usage: options, or a value that does not fit its column\n"
    "  3  the repository, or one of its databases, cannot be opened\n"
    "  4  not found: data source, table, column, row, style, process, section, bolt\n\n"
    "Example:\n"
    "  korodbc init work\n"
    "  korodbc -r work styles\n"
    "\"korodbc COMMAND --help\" shows the options of a command and an example.";

std::string oneLine(std::string text)
{
    while (!text.empty() && (text.back() == '\n' || text.back() == ' '))
        text.pop_back();
    return singleLine(text);
}

int fail(const Failure& failure)
{
    std::fflush(stdout);
    std::fprintf(stderr, "korodbc: %s\n", oneLine(failure.message).c_str());
    return failure.code;
}

/// What a command read past makes its answer incomplete, also when it gave one.
int endedWith(int code)
{
    if (code == kOk || code == kNotFound)
        for (const std::string& gap : korodbc::host::takeReadGaps())
            code = fail({kFailed, gap + "; what is said without it is incomplete"});
    return code;
}

} // namespace

CommandLine::CommandLine()
    : m_app{"Keeps the configuration databases of steel detailing: looks at tables, looks sections and bolts\n"
            "up, fills user tables, transfers detail styles and processes between databases, edits them under\n"
            "copies, merges duplicates, finds broken references.\n"}
{
    m_app.name("korodbc");
    m_app.footer(exitCodes);
    m_app.require_subcommand(1);
    m_app.fallthrough();
    m_app.get_formatter()->column_width(34);
    m_app.set_version_flag("--version", "korodbc " KORODBC_VERSION_STRING, "Print the version and end");
    // for who makes a package; no help shows them
    printing("--manual-page", [this] { return manualPage(m_app, KORODBC_VERSION_STRING); });
    printing("--bash-completion", [this] { return bashCompletion(m_app); });
    m_app.add_option("-r,--repository", m_global.repository, "Folder of the repository")
        ->envname("KORODBC_REPOSITORY")
        ->type_name("DIR")
        ->capture_default_str();
    m_app.add_flag("--trace", m_global.trace,
                   "Print every statement on stderr, with its data source, origin and result");
}

void CommandLine::printing(const char* option, std::function<std::string()> text)
{
    m_app.add_flag_callback(option, [text] { throw CLI::CallForVersion(text(), 0); })->group("");
}

CLI::App* CommandLine::command(const char* name, const char* description, const char* example,
                               std::function<void()> run, Start start)
{
    CLI::App* command = m_app.add_subcommand(name, description);
    command->footer(std::string("Example:\n  ") + example);
    command->callback([this, run, start] {
        m_global.start = start;
        m_run = run;
    });
    return command;
}

void CommandLine::addSource(CLI::App* command, const char* description)
{
    command->add_option("--source", m_source, description)->type_name("SOURCE");
}

void CommandLine::addFormats(CLI::App* command)
{
    command->add_flag("--csv", m_csv, "As CSV with a heading");
    command->add_flag("--json", m_json, "As JSON");
}

Format CommandLine::format() const
{
    if (m_csv && m_json)
        throw Failure{kUsage, "--csv and --json exclude each other; give one of them"};
    return m_csv ? Format::Csv : m_json ? Format::Json : Format::Text;
}

void CommandLine::refuseFormats(const std::string& what) const
{
    if (m_csv || m_json)
        throw Failure{kUsage, "--csv and --json go with what is printed as a table, not with " + what};
}

bool CommandLine::given(const std::string& option) const
{
    for (const CLI::App* app = &m_app; !app->get_subcommands().empty();) {
        app = app->get_subcommands().front();
        if (const CLI::Option* known = app->get_option_no_throw(option); known != nullptr && known->count() > 0)
            return true;
    }
    return false;
}

void CommandLine::goesWith(const std::string& option, bool fits, const std::string& with) const
{
    if (!fits && given(option))
        throw Failure{kUsage, option + " goes with " + with};
}

int CommandLine::run(int argc, char** argv)
{
    m_global.program = argv[0];
    try {
        m_app.parse(argc, argv);
    } catch (const CLI::Success& success) {
        return m_app.exit(success);
    } catch (const CLI::ParseError& error) {
        return fail({kUsage, complaint(error) + "; see: korodbc " + commandName() + "--help"});
    }
    try {
        m_run();
        if (std::fflush(stdout) != 0)
            return fail({kFailed, std::string("the output cannot be written") +
                                      (m_global.start == Start::Write ? "; what was changed stays changed" : "")});
        return endedWith(kOk);
    } catch (const Failure& failure) {
        return endedWith(fail(failure));
    } catch (const std::exception& error) {
        return fail({kFailed, error.what()});
    }
}

/// What is wrong with the command line; an unknown command with the names that are near.
std::string CommandLine::complaint(const CLI::ParseError& error) const
{
    std::vector<std::string> names;
    for (const CLI::App* command : m_app.get_subcommands(nullptr))
        names.push_back(command->get_name());
    if (m_app.get_subcommands().empty())
        for (const std::string& word : m_app.remaining())
            if (!word.starts_with("-"))
                return "there is no command " + quote(word) + nearest(word, names);
    return oneLine(error.what());
}

std::string CommandLine::commandName() const
{
    const auto commands = m_app.get_subcommands();
    return commands.empty() ? std::string() : commands.front()->get_name() + " ";
}
