#pragma once

#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/host/RepositoryBuilder.h>

#include <filesystem>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>
#include <unistd.h>

/// A repository in a temporary folder, filled from a catalogue or with every table empty, with one country
/// add-in; open while this object lives.
class RepositoryFolder {
public:
    explicit RepositoryFolder(std::filesystem::path catalogue = {})
    {
        static int made = 0;
        m_folder = std::filesystem::temp_directory_path() /
                   ("korodbc-" + std::to_string(::getpid()) + "-" + std::to_string(++made));
        const std::filesystem::path none = m_folder.string() + "-catalogue";
        std::filesystem::create_directories(none);
        if (catalogue.empty())
            catalogue = none;
        std::string error;
        EXPECT_TRUE(
            korodbc::host::buildRepository(m_folder, catalogue, {{"no", "Norway", "sqlite:norway.db"}}, {}, error))
            << error;
        std::filesystem::remove(none);
        EXPECT_TRUE(korodbc::host::openRepository(m_folder, error)) << error;
    }
    ~RepositoryFolder()
    {
        korodbc::host::closeRepository();
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    RepositoryFolder(const RepositoryFolder&) = delete;
    RepositoryFolder& operator=(const RepositoryFolder&) = delete;

    const std::filesystem::path& path() const { return m_folder; }

    /// Executes statements as another process would, past the host.
    void executeOutside(const std::string& database, const std::string& statements) const
    {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open_v2((m_folder / database).c_str(), &db, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK);
        char* message = nullptr;
        EXPECT_EQ(sqlite3_exec(db, statements.c_str(), nullptr, nullptr, &message), SQLITE_OK)
            << (message != nullptr ? message : "");
        sqlite3_free(message);
        sqlite3_close(db);
    }

private:
    std::filesystem::path m_folder;
};
