#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// What the readers of a project's files did with a part of them that opening loses, moves or passes over.
enum class FileRemarkKind {
    NotAProject,    ///< no line is the header of a section
    ConflictMark,   ///< the three lines that a version control leaves around a conflict
    NotText,        ///< a NUL byte
    CutOff,         ///< the file ends inside a block, or before the rows of its last section are full
    MissingSection, ///< the device file of the folder was read in its place
    DoubleSection,  ///< only the last one was read
    OpenBlock,      ///< a block that stored nothing though there was a row for it
    DoubleItem,     ///< a row filled twice, or a text stored once more
    MovedMessage,   ///< a message block that filled the row of another number
    ExtraItems,     ///< blocks that have no row
    MissingItems,   ///< rows that no block filled, settings and addresses without a line
    MovedVariable,  ///< a variable block that filled the row of another number
    StrayLine,      ///< a line that nothing came of
    Utf8Mark        ///< a byte-order mark at the start, which is skipped
};

/// All that was met of one kind in one section.
struct FileRemark {
    FileRemarkKind kind;
    std::string_view file;    ///< name of the device file that was read; empty for the project file
    std::string_view section; ///< DeviceFile::sectionName or settingsSection; empty for a file as a whole
    std::size_t line = 0;     ///< of the first, from 1; 0 where there is none
    std::size_t count = 1;    ///< how many; of CutOff the rows that stayed empty
    std::string name = {};    ///< of the first item or block: "STDMSG41"; empty where it has none
    std::string row = {};     ///< the row that a moved item filled: "STDMSG6"
    bool operator==(const FileRemark&) const = default;
};

/// The section of a project file that is no device file.
inline constexpr std::string_view settingsSection = "CONFIG";

/// Gathers remarks: those of one kind and section become one, with the place of the first.
class FileRemarks {
public:
    /// \param remark met later than those before it
    void add(FileRemark remark);
    const std::vector<FileRemark>& list() const { return list_; }
    /// Orders them by file and line.
    void sort();

private:
    std::vector<FileRemark> list_;
};

/// What reading one device file, or its section of a project file, did besides filling rows.
struct TableReading {
    bool isRead = false;               ///< false where the file could not be opened
    FileRemarks remarks;               ///< with lines of what was read, and neither file nor section
    std::vector<std::string> unfilled; ///< names of rows that no block filled, or of missing addresses
    bool endsInBlock = false;
    bool hasOddAddress = false; ///< a variable was placed by an address that rounds to its row's
    std::size_t lines = 0; ///< how many were read
};

} // namespace orvista
