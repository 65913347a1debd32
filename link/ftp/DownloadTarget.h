#pragma once

#include "link/ftp/DownloadStaging.h"
#include "model/Bytes.h"
#include "model/FetchedFiles.h"
#include "model/PathRules.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvista {

/// Where the files of a download go. Nothing of them is to be seen there before complete().
class DownloadTarget {
public:
    virtual ~DownloadTarget() = default;
    /// False for a bitmap's name (UTF-8) that it cannot hold.
    virtual bool canHold(const std::string& name) const = 0;
    /// All that will come, in this order. \throws std::system_error where one of them cannot
    virtual void expect(const std::vector<std::string>& names) = 0;
    /// For the next file. \throws std::system_error
    virtual std::unique_ptr<ByteSink> next() = 0;
    /// \throws std::system_error
    virtual void complete() = 0;
};

/// A folder: what is there already is replaced, by all of them or none.
class FolderTarget final : public DownloadTarget {
public:
    FolderTarget(const std::string& folder, const PathRules& paths) : folder_(folder), paths_(paths) {}
    bool canHold(const std::string& name) const override;
    void expect(const std::vector<std::string>& names) override;
    std::unique_ptr<ByteSink> next() override;
    void complete() override;

private:
    const std::string& folder_;
    const PathRules& paths_;
    std::optional<DownloadStaging> staging_;
    std::vector<std::string> stagedPaths_;
    std::size_t next_ = 0;
};

/// Files that are looked at and go away again. Their names are those that could lie on the disk.
class FetchedTarget final : public DownloadTarget {
public:
    explicit FetchedTarget(FetchedFiles& files);
    bool canHold(const std::string& name) const override;
    void expect(const std::vector<std::string>& names) override { names_ = names; }
    std::unique_ptr<ByteSink> next() override { return files_.add(names_[next_++]); }
    void complete() override {}

private:
    FetchedFiles& files_;
    std::filesystem::path place_; ///< where they would lie
    std::vector<std::string> names_;
    std::size_t next_ = 0;
};

} // namespace orvista
