#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the run with what is wrong unless `holds`; the fuzzer keeps the input then.
inline void require(bool holds, const std::string& otherwise)
{
    if (holds)
        return;
    std::fprintf(stderr, "finding: %s\n", otherwise.c_str());
    std::abort();
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

/// An empty folder of this process's own; it goes with the process.
inline const std::filesystem::path& ownFolder()
{
    static const struct Folder {
        Folder() : path(std::filesystem::temp_directory_path() / ("korodbc-fuzz-" + std::to_string(::getpid())))
        {
            std::filesystem::create_directories(path);
        }
        ~Folder()
        {
            std::error_code ignored;
            std::filesystem::remove_all(path, ignored);
        }
        std::filesystem::path path;
    } folder;
    return folder.path;
}

inline void write(const std::filesystem::path& file, std::string_view text)
{
    std::ofstream(file, std::ios::binary | std::ios::trunc)
        .write(text.data(), static_cast<std::streamsize>(text.size()));
}
