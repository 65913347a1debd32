#include "model/FetchedFiles.h"

#include "model/PathRules.h"

namespace orvista {

class FetchedFiles::Sink final : public ByteSink {
public:
    explicit Sink(FetchedFiles& files) : files_(files) {}
    void write(std::string_view bytes) override { files_.write(bytes); }
    void close() override { files_.close(); }

private:
    FetchedFiles& files_;
};

std::unique_ptr<ByteSink> FetchedFiles::add(const std::string& name) {
    if (folder_)
        last_ = std::make_unique<FileSink>(PathRules::native().join(folder_->path(), name));
    else
        files_.push_back({name, {}});
    return std::make_unique<Sink>(*this);
}

void FetchedFiles::write(std::string_view bytes) {
    size_ += bytes.size();
    if (size_ > mostInMemory)
        moveToFolder();
    if (last_)
        last_->write(bytes);
    else
        files_.back().bytes.append(bytes);
}

void FetchedFiles::close() {
    if (last_)
        last_->close();
}

/// The last one may go on.
void FetchedFiles::moveToFolder() {
    if (folder_)
        return;
    folder_ = std::make_unique<ScratchFolder>();
    for (const File& file : files_) {
        close();
        last_ = std::make_unique<FileSink>(PathRules::native().join(folder_->path(), file.name));
        last_->write(file.bytes);
    }
    files_.clear();
}

const std::string& FetchedFiles::toFolder() {
    moveToFolder();
    close();
    return folder_->path();
}

std::optional<std::string> FetchedFiles::folder() const {
    return folder_ ? std::optional(folder_->path()) : std::nullopt;
}

} // namespace orvista
