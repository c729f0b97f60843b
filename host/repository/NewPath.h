#pragma once

#include <korodbc/host/HostError.h>

#include <filesystem>

namespace korodbc::host {

/// A file or folder in the making. It is made in a temporary folder beside its place,
/// "beam.db.korodbc-new-x1Y2z3", and appears in its place complete or not at all, never over one that is there
/// already, not even over one that another program has just made. The temporary folder is deleted with this
/// object; those of programs that were killed go with the next one for the same place.
class NewPath {
public:
    explicit NewPath(const std::filesystem::path& target);
    ~NewPath();
    NewPath(const NewPath&) = delete;
    NewPath& operator=(const NewPath&) = delete;

    /// Why nothing can be made there; of no kind: it can.
    const HostError& error() const { return m_error; }
    /// Where to make the file or folder.
    const std::filesystem::path& path() const { return m_path; }
    enum class Placed { Yes, Exists, Failed };
    /// Puts what was made into its place, or into another one in the same folder; a folder takes the place of an
    /// empty one. Unless Placed::Yes, `error` says why in one line.
    Placed place(HostError& error) { return place(m_target, error); }
    Placed place(const std::filesystem::path& target, HostError& error);

private:
    void removeLeftOvers() const;

    const std::filesystem::path m_target;
    std::filesystem::path m_folder, m_path;
    int m_lock = -1; // of the folder: the system drops it with this program
    HostError m_error;
};

} // namespace korodbc::host
