#include "tools/CommandLine.h"

#include <set>

namespace {

using Words = std::set<std::string>;

Words lines(const std::string& text)
{
    Words all;
    std::string line;
    for (std::istringstream stream(text); std::getline(stream, line);)
        if (!line.empty())
            all.insert(line);
    return all;
}

/// What the pattern's group matches in each line of the text.
Words found(const std::string& text, const char* pattern)
{
    Words all;
    const std::regex expression(pattern, std::regex::multiline);
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
        all.insert((*match)[1]);
    return all;
}

/// Options by their long names, as a help lists them.
Words optionsIn(const std::string& help) { return found(help, "^  (?:-[a-z],)?(--[a-z-]+)"); }

class Manual : public CommandLine {
protected:
    void SetUp() override
    {
        CommandLine::SetUp();
        m_help = output("--help");
        const std::size_t list = m_help.find("\nSubcommands:\n");
        ASSERT_NE(list, std::string::npos);
        m_commands = found(m_help.substr(list, m_help.find("\nExit codes:") - list), "^  ([a-z-]+)  ");
        write(m_folder / "completion", output("--bash-completion"));
    }
    /// What bash offers for the last of the words.
    Words completed(const std::string& words) const
    {
        write(m_folder / "complete", "source completion\nCOMP_WORDS=(korodbc " + words +
                                         ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_korodbc\n"
                                         "[ ${#COMPREPLY[@]} = 0 ] || printf '%s\\n' \"${COMPREPLY[@]}\"\n");
        const std::string folder = "cd '" + m_folder.string() + "' && ";
        EXPECT_EQ(std::system((folder + "bash -u complete >completed 2>&1").c_str()), 0) << words;
        return lines(contents(m_folder / "completed"));
    }

    std::string m_help;
    Words m_commands;
};

TEST_F(Manual, PageAndCompletionSayWhatEveryHelpSays)
{
    EXPECT_GT(m_commands.size(), 40u);
    EXPECT_EQ(completed("''"), m_commands);
    const Words global = optionsIn(m_help);
    EXPECT_TRUE(global.contains("--repository"));
    const std::string page = std::regex_replace(output("--manual-page"), std::regex(R"(\\-)"), "-");
    EXPECT_EQ(found(page, "^\\.SS ([a-z-]+)"), m_commands);
    for (const std::string& command : m_commands) {
        const Words own = optionsIn(output(command + " --help"));
        const std::size_t section = page.find("\n.SS " + command);
        Words onPage =
            found(page.substr(section, page.find("\n.S", section + 1) - section), "^\\.B (?:-[a-z],)?(--[a-z-]+)");
        onPage.insert("--help"); // said once for all
        EXPECT_EQ(onPage, own) << command;
        Words offered = global;
        offered.insert(own.begin(), own.end());
        EXPECT_EQ(completed(command + " --"), offered) << command;
    }
}

TEST_F(Manual, WordsAreCompletedByWhatStandsBeforeThem)
{
    write(m_folder / "a name.csv", "");
    fs::create_directory(m_folder / "folder");
    const struct {
        const char* words;
        Words offered;
    } cases[] = {
        {"imp", {"import-csv", "import-process", "import-style"}},
        {"--trace --repository work sty", {"styles"}},
        {"-r wo", {"work"}},
        {"-r init sty", {"styles"}}, // the folder is called like a command
        {"edit --d", {"--depth"}},
        {"edit --depth ''", {}},
        {"init fo", {"folder"}},
        {"init folder --cat", {"--catalogue"}},
        {"init folder --catalogue fo", {"folder"}},
        {"init folder --country fo", {}},
        {"import-csv Beams a", {"a name.csv"}},
        {"import-csv --source o", {}},
        {"styles o", {}},
        {"frobnicate --re", {"--repository"}},
        {"nothing-is-called-so", {}},
    };
    for (const auto& each : cases)
        EXPECT_EQ(completed(each.words), each.offered) << each.words;
}

} // namespace
