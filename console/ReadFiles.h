#pragma once

#include <string>
#include <vector>

namespace orvista::console {

/// The files that a command reads. Nothing that it writes may take the place of one of them.
class ReadFiles {
public:
    /// Paths are UTF-8; what is not there is no file, nor is an empty path.
    void add(const std::string& path);
    /// The device files and bitmaps of a folder.
    void addFolder(const std::string& folder);
    /// The project file, its notes, the list of a master, and the files of its folder.
    void addProject(const std::string& path);

    /// \param output what is to be written; an empty path is none
    /// \throws CommandFailure where it is one of them, the same file on the disk, links followed
    void expectApart(const std::string& output) const;

private:
    std::vector<std::string> paths_;
};

/// For a command that reads a project and writes one file. \throws CommandFailure as expectApart()
void expectApartFromProject(const std::string& output, const std::string& project);

/// Whether both are there and are the same file on the disk, links followed.
bool isSameFile(const std::string& path, const std::string& other);

} // namespace orvista::console
