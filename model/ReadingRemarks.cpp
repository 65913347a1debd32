#include "model/ReadingRemarks.h"

#include <algorithm>

namespace orvista {

using DocMgrModule::ProjectFileSection;

namespace {

/// Rows that no block filled, or that a file which was cut off does not have any more.
void addUnfilled(FileRemarkKind kind, FileRemark at, const std::vector<std::string>& names,
                 FileRemarks& remarks) {
    at.kind = kind;
    at.count = names.size();
    if (!names.empty())
        at.name = names.front();
    if (kind == FileRemarkKind::CutOff || !names.empty())
        remarks.add(std::move(at));
}

} // namespace

void addRemarks(const DeviceFile& file, const TableReading& reading, FileRemarks& remarks) {
    if (!reading.isRead)
        return;
    for (FileRemark remark : reading.remarks.list()) {
        remark.file = file.name;
        remark.section = file.sectionName;
        remarks.add(std::move(remark));
    }
    const FileRemarkKind kind = reading.endsInBlock ? FileRemarkKind::CutOff : FileRemarkKind::MissingItems;
    addUnfilled(kind, {kind, file.name, file.sectionName, reading.endsInBlock ? reading.lines : 0},
                reading.unfilled, remarks);
}

void SectionRemarks::add(const ProjectFileSection& section, const TableReading& reading) {
    for (FileRemark remark : reading.remarks.list()) {
        // Of these the project file's lines have told.
        if (remark.kind == FileRemarkKind::ConflictMark || remark.kind == FileRemarkKind::NotText)
            continue;
        remark.section = section.file->sectionName;
        remark.line = section.lineInFile(remark.line);
        remarks_.add(std::move(remark));
    }
    unfilled_.push_back({&section, reading.unfilled});
    if (&section == &sections_.back() && !outline_.endsInSettings)
        endsInBlock_ = reading.endsInBlock;
}

bool SectionRemarks::isCutBehind(const Unfilled& last) const {
    if (last.section != &sections_.back() || outline_.endsInSettings)
        return false;
    const auto areOthersFull = [&] {
        return std::ranges::all_of(unfilled_, [&](const Unfilled& section) {
            return section.section == last.section || section.names.empty();
        });
    };
    return endsInBlock_ || (last.section->file != &modbusAdrFile && !last.names.empty() && areOthersFull());
}

void SectionRemarks::finish() {
    for (const Unfilled& section : unfilled_) {
        const bool isCut = isCutBehind(section);
        const FileRemarkKind kind = isCut ? FileRemarkKind::CutOff : FileRemarkKind::MissingItems;
        addUnfilled(
            kind,
            {kind, {}, section.section->file->sectionName, isCut ? outline_.lines : section.section->header},
            section.names, remarks_);
    }
    remarks_.sort();
}

} // namespace orvista
