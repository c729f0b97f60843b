#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <sqlite3.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

inline std::string contents(const fs::path& file)
{
    std::string bytes(fs::exists(file) ? fs::file_size(file) : 0, '\0');
    std::ifstream(file, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

inline void write(const fs::path& file, const std::string& text) { std::ofstream(file, std::ios::binary) << text; }

inline void sql(const fs::path& file, const std::string& statements)
{
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(db, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
    sqlite3_close(db);
}

/// Overwrites everything after the first bytes; the file still looks like a database.
inline void damage(const fs::path& file)
{
    std::string bytes = contents(file);
    for (std::size_t i = 8192; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 7);
    write(file, bytes);
}

/// Overwrites the first page of one table.
inline void damageTable(const fs::path& file, const std::string& table)
{
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
    sqlite3_stmt* page = nullptr;
    sqlite3_prepare_v2(db, ("SELECT rootpage FROM sqlite_master WHERE name = '" + table + "'").c_str(), -1, &page,
                       nullptr);
    ASSERT_EQ(sqlite3_step(page), SQLITE_ROW);
    const auto at = static_cast<std::size_t>(sqlite3_column_int(page, 0) - 1) * 4096;
    sqlite3_finalize(page);
    sqlite3_close(db);
    std::string bytes = contents(file);
    ASSERT_GT(at, 0u);
    write(file, bytes.replace(at, 4096, 4096, '\7'));
}

/// Lets the engine take the database for one of a later format, which it may only read.
inline void makeReadOnly(const fs::path& file)
{
    std::string bytes = contents(file);
    ASSERT_GT(bytes.size(), 18u);
    bytes[18] = 3;
    write(file, bytes);
}

/// Without the lines "Making Details: 40 %" that a slow machine gets to see.
inline std::string withoutProgress(const std::string& messages)
{
    std::string kept, line;
    for (std::istringstream lines(messages); std::getline(lines, line);)
        if (line.size() < 2 || line.compare(line.size() - 2, 2, " %") != 0)
            kept += line + "\n";
    return kept;
}

struct Outcome {
    int code = -1;
    std::string out, err;
};

inline bool matches(const std::string& text, const std::string& pattern)
{
    return std::regex_search(text, std::regex(pattern));
}

/// Runs the program in a folder of its own, which has the repository "work", one.db and two.db.
class CommandLine : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_made = fs::temp_directory_path() / ("korodbc-command-line-" + std::to_string(::getpid()));
        fs::create_directories(s_made / "pristine");
        const Outcome init = runIn(s_made / "pristine", "init work --country no=Norway");
        ASSERT_EQ(init.code, 0) << init.err;
        ASSERT_EQ(runIn(s_made / "pristine", "export-style 'Plate, single part' one.db").code, 0);
        ASSERT_EQ(runIn(s_made / "pristine", "export-style 1 two.db").code, 0);
        ASSERT_EQ(runIn(s_made / "pristine", "export-style 2 two.db").code, 0);
    }
    static void TearDownTestSuite() { fs::remove_all(s_made); }
    void SetUp() override
    {
        m_folder = s_made / "current";
        fs::remove_all(m_folder);
        fs::copy(s_made / "pristine", m_folder, fs::copy_options::recursive);
    }

    /// `before` are shell commands of the process that becomes the program.
    static Outcome runIn(const fs::path& folder, const std::string& arguments, const std::string& before = {})
    {
        const fs::path out = s_made / "out", err = s_made / "err";
        const std::string command = "exec >'" + out.string() + "' 2>'" + err.string() + "'; cd '" +
                                    folder.string() + "' && " + before +
                                    " KORODBC_CATALOGUE= KORODBC_REPOSITORY=work '" KORODBC_TOOL "' " + arguments;
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(out), withoutProgress(contents(err))};
    }
    /// Runs it as a user who may write nothing.
    Outcome runAsGuest(const std::string& arguments) const
    {
        for (const char* name : {"out", "err"}) {
            write(s_made / name, "");
            fs::permissions(s_made / name, fs::perms::all);
        }
        const pid_t child = ::fork();
        if (child == 0) {
            if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
                ::_exit(99);
            ::_exit(run(arguments).code);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(s_made / "out"),
                withoutProgress(contents(s_made / "err"))};
    }
    Outcome run(const std::string& arguments) const { return runIn(m_folder, arguments); }
    /// The output of a command that has to succeed without a word on stderr.
    std::string output(const std::string& arguments) const
    {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, 0) << arguments;
        EXPECT_EQ(outcome.err, "") << arguments;
        return outcome.out;
    }
    std::map<std::string, std::string> files() const
    {
        std::map<std::string, std::string> bytes;
        for (const auto& entry : fs::recursive_directory_iterator(m_folder))
            bytes[fs::relative(entry.path(), m_folder).string()] =
                entry.is_directory() ? "" : contents(entry.path());
        return bytes;
    }
    /// The command fails with one line, and no file is other than before.
    void expectRefused(const std::string& arguments, int code, const std::string& error) const
    {
        const auto before = files();
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, code) << arguments << "\n" << outcome.err;
        EXPECT_TRUE(matches(outcome.err, "^korodbc: [^\\n]*" + error + "[^\\n]*\\n$")) << arguments << "\n"
                                                                                       << outcome.err;
        const auto after = files();
        for (const auto& [name, bytes] : after) {
            const auto known = before.find(name);
            EXPECT_TRUE(known != before.end() && known->second == bytes) << arguments << " changed " << name;
        }
        EXPECT_EQ(after.size(), before.size()) << arguments;
    }
    struct Refused {
        std::string arguments;
        int code;
        std::string error;
    };
    void expectRefused(std::initializer_list<Refused> commands) const
    {
        for (const Refused& command : commands)
            expectRefused(command.arguments, command.code, command.error);
    }
    /// Commands that succeed, and what is found in their output.
    void expectPrinted(std::initializer_list<std::pair<std::string, std::string>> commands) const
    {
        for (const auto& [arguments, pattern] : commands) {
            const std::string out = output(arguments);
            EXPECT_TRUE(matches(out, pattern)) << arguments << "\n" << out;
        }
    }
    std::string title() const { return output("show DetailStyle 1 --json"); }

    fs::path m_folder;
    static inline fs::path s_made;
};
