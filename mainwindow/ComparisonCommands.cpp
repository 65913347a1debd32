#include "mainwindow/ComparisonCommands.h"

#include "check/FileFindings.h"
#include "link/TransferCommands.h"
#include "link/TransferredFiles.h"
#include "mainwindow/PanelDock.h"
#include "mainwindow/ProjectChanges.h"
#include "model/DeviceFiles.h"
#include "model/FolderLookup.h"
#include "model/ScratchFolder.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <system_error>
#include <utility>

namespace orvista {

namespace {

/// Passes on what the core has to say, and knows whether it had: what was read is not whole then.
class HeardMessages final : public Messages {
public:
    explicit HeardMessages(Messages& messages) : messages_(messages) {}
    void show(MessageIcon icon, const std::string& text) override {
        any_ = true;
        messages_.show(icon, text);
    }
    bool askYesNo(const std::string& text) override { return messages_.askYesNo(text); }
    Answer askYesNoCancel(const std::string& text) override { return messages_.askYesNoCancel(text); }
    bool any() const { return any_; }

private:
    Messages& messages_;
    bool any_ = false;
};

std::optional<Project> fetchedProject(const std::string& folder, const DocMgrModule::FileContext& context) {
    HeardMessages messages(context.messages);
    Project project;
    ConfigModule::readDeviceFiles(folder, project, {context.paths, messages}, modbusAdrFile.name);
    return messages.any() ? std::nullopt : std::optional(project);
}

std::optional<Project> otherProject(const std::string& path, const DocMgrModule::FileContext& context,
                                    FileRemarks& remarks) {
    HeardMessages messages(context.messages);
    Project project;
    const bool isRead =
        DocMgrModule::readProjectWithoutWriting(path, project, {context.paths, messages}, &remarks);
    return isRead && !messages.any() ? std::optional(project) : std::nullopt;
}

/// The five files that an upload sends, which saves a modified project first.
/// \param scratch for what a save would write
std::optional<std::vector<NamedFile>> deviceFilesToSend(const Project& project, const std::string& scratch,
                                                        const DocMgrModule::FileContext& context) {
    std::vector<NamedFile> files;
    for (const DeviceFile* const file : deviceFiles) {
        const std::string name(file->name);
        const std::string& folder = project.modified ? scratch : project.ProjPath;
        const std::string path = deviceFileOnDisk(context.paths, context.paths.join(folder, name));
        if (project.modified && !file->Write(path, project, context))
            return std::nullopt;
        files.push_back({name, path});
    }
    return files;
}

/// Runs what works on files and tells the user of a failure.
void withFiles(Messages& messages, const std::function<void()>& work) {
    try {
        work();
    } catch (const std::system_error& failure) {
        messages.show(MessageIcon::Exclamation, failure.what());
    }
}

} // namespace

ComparisonCommands::ComparisonCommands(World world, ProjectChanges& changes, PanelDock& dock, QObject* parent)
    : QObject(parent), world_(std::move(world)), changes_(changes), dock_(dock) {}

ComparisonPanel& ComparisonCommands::openPanel() {
    auto& panel = dock_.open<ComparisonPanel>();
    connect(&panel, &ComparisonPanel::takeWanted, this, &ComparisonCommands::takeOver, Qt::UniqueConnection);
    return panel;
}

void ComparisonCommands::takeOver(const std::vector<Change>& changes) {
    if (changes_.change(tr("Take Theirs"), changes) && !theirFolder_.empty())
        emit itemsCameFrom(theirFolder_);
}

void ComparisonCommands::miToolsCompareDisplay_Click() {
    const DocMgrModule::FileContext context = world_.lifecycle.fileContext();
    withFiles(context.messages, [&] {
        const ScratchFolder fetched;
        TransferCommands* const transfer = world_.transfer();
        const auto display =
            transfer ? transfer->fetch("Compare with Display", fetched.path()) : std::nullopt;
        auto theirs = display ? fetchedProject(fetched.path(), context) : std::nullopt;
        if (!theirs)
            return;
        openPanel().compareWith({QString::fromStdString(*display), std::move(*theirs),
                                 compareFiles(bitmapsIn(project().ProjPath), bitmapsIn(fetched.path()))});
        theirFolder_.clear();
    });
}

void ComparisonCommands::miToolsCompareProject_Click() {
    if (const auto chosen = world_.chooser.chooseExistingProject("Compare with Project"))
        compareWithProject(*chosen);
}

void ComparisonCommands::compareWithProject(const ChosenProject& other) {
    const DocMgrModule::FileContext context = world_.lifecycle.fileContext();
    withFiles(context.messages, [&] {
        const std::string path = DocMgrModule::projectFilePath(context.paths, other.ProjPath, other.ProjName);
        FileRemarks remarks;
        auto theirs = otherProject(path, context, remarks);
        if (!theirs)
            return;
        if (isToRefuse(remarks)) {
            dock_.showNotice(tr("%1.orx is not whole: %2")
                                 .arg(QString::fromStdString(other.ProjName),
                                      QString::fromStdString(gravestText(remarks))));
            return;
        }
        openPanel().compareWith({QString::fromStdString(path), std::move(*theirs),
                                 compareFiles(bitmapsIn(project().ProjPath), bitmapsIn(other.ProjPath))});
        theirFolder_ = other.ProjPath;
    });
}

void ComparisonCommands::miToolsVerify_Click() {
    const DocMgrModule::FileContext context = world_.lifecycle.fileContext();
    withFiles(context.messages, [&] {
        const ScratchFolder saved;
        auto sent = deviceFilesToSend(project(), saved.path(), context);
        if (!sent)
            return;
        const ScratchFolder fetched;
        TransferCommands* const transfer = world_.transfer();
        const auto display = transfer ? transfer->fetch("Verify Display", fetched.path()) : std::nullopt;
        if (!display)
            return;
        std::vector<NamedFile> theirs = bitmapsIn(fetched.path());
        for (const NamedFile& file : *sent)
            theirs.push_back({file.name, context.paths.join(fetched.path(), file.name)});
        std::ranges::move(bitmapsIn(project().ProjPath), std::back_inserter(*sent));
        ComparisonPanel::Verified verified{QString::fromStdString(*display), sent->size(),
                                           compareFiles(*sent, theirs)};
        // What only the display has is not sent.
        std::erase_if(verified.differences, [](const FileDifference& file) { return !file.sizeBefore; });
        openPanel().showVerified(verified);
    });
}

} // namespace orvista
