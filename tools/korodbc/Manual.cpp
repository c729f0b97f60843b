#include "Manual.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace {

bool isShown(const CLI::Option* option) { return !option->get_group().empty(); }

std::vector<const CLI::Option*> optionsOf(const CLI::App& command, bool positional)
{
    return command.get_options([&](const CLI::Option* option) {
        return isShown(option) && option->get_positional() == positional &&
               (command.get_parent() == nullptr || option != command.get_help_ptr());
    });
}

std::string upper(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    return text;
}

// Manual page

/// The text as the typesetter prints it: no character of it is a command.
std::string set(const std::string& text)
{
    std::string page;
    bool lineStart = true;
    for (const char letter : text) {
        if (lineStart && (letter == '.' || letter == '\''))
            page += "\\&";
        if (letter == '\\')
            page += "\\e";
        else if (letter == '-')
            page += "\\-";
        else if (letter == '\'')
            page += "\\(aq";
        else if (letter == '^')
            page += "\\(ha";
        else if (letter == '~')
            page += "\\(ti";
        else if (letter == '`')
            page += "\\(ga";
        else
            page += letter;
        lineStart = letter == '\n';
    }
    while (page.ends_with('\n'))
        page.pop_back();
    return page + "\n";
}

/// Options with what they mean; positional arguments as well.
void addList(std::ostream& page, const CLI::App& command, const std::vector<const CLI::Option*>& options)
{
    const auto* words = dynamic_cast<const CLI::Formatter*>(command.get_formatter().get());
    for (const CLI::Option* option : options)
        page << ".TP\n.B "
             << set(words->make_option_name(option, option->get_positional()) + words->make_option_opts(option))
             << set(words->make_option_desc(option));
}

/// Paragraphs; indented lines, such as examples, are printed as they stand. A line that ends in a colon is a
/// heading when there is one for it.
void addParagraphs(std::ostream& page, const std::string& text, const char* heading)
{
    std::istringstream lines(text);
    bool asItStands = false;
    for (std::string line; std::getline(lines, line);) {
        const bool indented = line.starts_with("  ");
        if (indented != asItStands)
            page << (indented ? ".PP\n.in +4n\n.nf\n" : ".fi\n.in\n");
        asItStands = indented;
        if (line.empty())
            page << ".PP\n";
        else if (line.ends_with(':') && heading != nullptr)
            page << heading << ' ' << set(upper(line.substr(0, line.size() - 1)));
        else
            page << set(indented ? line.substr(2) : line);
    }
    if (asItStands)
        page << ".fi\n.in\n";
}

void addCommand(std::ostream& page, const CLI::App& command)
{
    std::string usage = command.get_name();
    for (const CLI::Option* argument : optionsOf(command, true)) {
        const std::string name = argument->get_name(true) + (argument->get_items_expected_max() > 1 ? "..." : "");
        usage += argument->get_required() ? " " + name : " [" + name + "]";
    }
    page << ".SS " << set(usage) << set(command.get_description() + ".");
    for (const bool positional : {true, false})
        addList(page, command, optionsOf(command, positional));
    page << ".PP\n";
    addParagraphs(page, command.get_footer(), nullptr);
}

// Completion

std::string names(const std::vector<const CLI::Option*>& options, bool (*wanted)(const CLI::Option*))
{
    std::string list;
    for (const CLI::Option* option : options)
        if (wanted(option)) {
            for (const std::string& name : option->get_snames())
                list += " -" + name;
            for (const std::string& name : option->get_lnames())
                list += " --" + name;
        }
    return list;
}

bool any(const CLI::Option*) { return true; }
bool takesValue(const CLI::Option* option) { return option->get_items_expected_max() > 0; }

bool takesFile(const CLI::Option* option)
{
    const std::string what = option->get_positional() ? option->get_name(true) : option->get_type_name();
    return what == "FILE" || what == "FOLDER" || what == "DIR";
}

/// Which words may follow the command, as assignments of the script.
std::string words(const CLI::App& command)
{
    const auto options = optionsOf(command, false), arguments = optionsOf(command, true);
    std::string assignments = "options+='" + names(options, any) + "' valued+='" + names(options, takesValue) +
                              "' paths+='" + names(options, takesFile) + "'";
    if (std::any_of(arguments.begin(), arguments.end(), takesFile))
        assignments += " files=1";
    return assignments;
}

constexpr const char* complete = R"(
    local replies=
    if [[ $word == -* ]]; then
        replies=$(compgen -W "$options" -- "$word")
    elif [[ " $paths " == *" $before "* ]]; then
        files=2
    elif [[ " $valued " == *" $before "* ]]; then
        files=
    elif [[ -z $command ]]; then
        replies=$(compgen -W "$commands" -- "$word")
    fi
    if [[ $files == 2 || $files == 1 && $word != -* ]]; then
        compopt -o filenames 2>/dev/null
        replies=$(compgen -f -- "$word")
    fi
    COMPREPLY=()
    [[ -z $replies ]] || mapfile -t COMPREPLY <<<"$replies"
}
complete -F )";

} // namespace

std::string manualPage(const CLI::App& program, const std::string& version)
{
    const std::string name = program.get_name(), about = program.get_description();
    std::string brief = about.substr(0, about.find(':'));
    brief.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(brief.front())));

    std::ostringstream page;
    page << ".TH " << upper(name) << " 1 \"\" \"" << name << ' ' << version << "\" \"User Commands\"\n"
         << ".SH NAME\n"
         << name << " \\- " << set(brief) << ".SH SYNOPSIS\n.B " << name
         << "\n[\\fIOPTIONS\\fR] \\fICOMMAND\\fR ...\n"
         << ".SH DESCRIPTION\n"
         << set(about) << ".SH OPTIONS\nThese go with every command.\n";
    const auto options = optionsOf(program, false);
    addList(page, program, options);
    page << ".SH COMMANDS\n";
    for (const CLI::App* command : program.get_subcommands(nullptr))
        addCommand(page, *command);
    page << ".SH ENVIRONMENT\n";
    for (const CLI::Option* option : options)
        if (!option->get_envname().empty())
            page << ".TP\n.B " << set(option->get_envname())
                 << set(option->get_description() + ", unless " + option->get_name() + " names one.");
    addParagraphs(page, program.get_footer(), ".SH");
    return page.str();
}

std::string bashCompletion(const CLI::App& program)
{
    const std::string name = program.get_name();
    std::string commands, cases;
    for (const CLI::App* command : program.get_subcommands(nullptr)) {
        commands += (commands.empty() ? "" : " ") + command->get_name();
        cases += "    " + command->get_name() + ") " + words(*command) + " ;;\n";
    }
    const auto options = optionsOf(program, false);
    return "# Completes the words behind " + name + " for bash.\n_" + name +
           "()\n{\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command= i\n"
           "    local options= valued= paths= files= commands='" +
           commands + "'\n    " + words(program) +
           "\n    for ((i = 1; i < COMP_CWORD; ++i)); do\n"
           "        if [[ \" $valued \" == *\" ${COMP_WORDS[i]} \"* ]]; then\n"
           "            ((++i))\n"
           "        elif [[ ${COMP_WORDS[i]} != -* ]]; then\n"
           "            command=${COMP_WORDS[i]}\n"
           "            break\n"
           "        fi\n"
           "    done\n"
           "    case $command in\n" +
           cases + "    esac\n" + complete + "_" + name + " " + name + "\n";
}
