#include "model/FileRemarks.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace orvista {

void FileRemarks::add(FileRemark remark) {
    const auto same = std::ranges::find_if(list_, [&remark](const FileRemark& known) {
        return known.kind == remark.kind && known.file == remark.file && known.section == remark.section;
    });
    if (same == list_.end())
        list_.push_back(std::move(remark));
    else
        same->count += remark.count;
}

void FileRemarks::sort() {
    std::ranges::stable_sort(list_, {}, [](const FileRemark& remark) {
        return std::tuple(!remark.file.empty(), remark.line, remark.kind);
    });
}

} // namespace orvista
