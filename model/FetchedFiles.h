#pragma once

#include "model/Bytes.h"
#include "model/Files.h"
#include "model/ScratchFolder.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// Files that came from elsewhere and go away again: in memory as long as they are small, which spares the
/// disk, else in a folder of their own.
class FetchedFiles {
public:
    /// The most bytes of all files together.
    static constexpr std::size_t mostInMemory = std::size_t{1} << 20;

    /// Writes the next file, as long as no other is begun. The sink must not outlive the files, which stay
    /// where they are meanwhile. Writing throws std::system_error, too, where the folder cannot be made.
    /// \param name UTF-8, one that can stand in a folder and is none of the others'
    std::unique_ptr<ByteSink> add(const std::string& name);

    /// From now on all of them lie in a folder, as do those that somebody else writes there.
    /// \returns it, UTF-8 \throws std::system_error
    const std::string& toFolder();
    /// Nothing while they are in memory.
    std::optional<std::string> folder() const;

    /// Those in memory, in the order in which they came.
    struct File {
        std::string name;
        std::string bytes;
    };
    const std::vector<File>& inMemory() const { return files_; }

private:
    class Sink;
    void moveToFolder();
    void write(std::string_view bytes);
    void close();

    std::vector<File> files_;
    std::size_t size_ = 0;
    std::unique_ptr<ScratchFolder> folder_;
    std::unique_ptr<FileSink> last_; ///< where they lie in the folder
};

} // namespace orvista
