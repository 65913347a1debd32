#include "mainwindow/ComparisonCommands.h"

#include "check/FileFindings.h"
#include "compare/HeldSentences.h"
#include "items/MasterView.h"
#include "mainwindow/PanelDock.h"
#include "mainwindow/ProjectChanges.h"
#include "model/DeviceFiles.h"
#include "model/ScratchFolder.h"

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

std::optional<Project> otherProject(const std::string& path, const DocMgrModule::FileContext& context,
                                    FileRemarks& remarks) {
    HeardMessages messages(context.messages);
    Project project;
    const bool isRead =
        DocMgrModule::readProjectWithoutWriting(path, project, {context.paths, messages}, &remarks);
    return isRead && !messages.any() ? std::optional(project) : std::nullopt;
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

void ComparisonCommands::compare(const std::function<bool()>& work) {
    try {
        if (work())
            return;
    } catch (const std::system_error& failure) {
        world_.lifecycle.fileContext().messages.show(MessageIcon::Exclamation, failure.what());
    } catch (...) { // who started the command tells the user
        forgetComparison();
        throw;
    }
    forgetComparison();
}

void ComparisonCommands::forgetComparison() {
    for (const PanelDock::Panel& panel : dock_.panels())
        if (auto* const comparison = qobject_cast<ComparisonPanel*>(panel.widget))
            comparison->clear();
}

void ComparisonCommands::sayWhatIsMissing(const std::vector<std::string>& names) {
    if (!names.empty())
        dock_.showNotice(QString::fromStdString(notThereText(names)));
}

bool ComparisonCommands::isReadable(const DisplayContents& contents, const std::string& folder) {
    const DocMgrModule::FileContext context = world_.lifecycle.fileContext();
    HeardMessages messages(context.messages);
    Project project;
    ConfigModule::readDeviceFiles(folder, project, {context.paths, messages}, modbusAdrFile.name);
    sayWhatIsMissing(contents.missingFiles());
    return !messages.any();
}

std::optional<FleetDisplay> ComparisonCommands::rowAt(const std::string& address) {
    const FleetDisplay* const row = world_.master.displayAt(displayAddress(address, fileTransfer));
    if (row == nullptr) {
        dock_.showNotice(
            tr("The list of displays has no display at %1").arg(QString::fromStdString(address)));
        return std::nullopt;
    }
    if (const Expansion own = world_.master.master()->expand(*row); !own.errors.empty()) {
        dock_.showNotice(
            tr("%1 cannot have the project: %2")
                .arg(QString::fromStdString(row->name), QString::fromStdString(own.errors.front().text)));
        return std::nullopt;
    }
    return *row;
}

ComparisonCommands::Fetched ComparisonCommands::fetch(const std::string& title) {
    TransferCommands* const transfer = world_.transfer();
    if (!transfer)
        return {};
    auto folder = std::make_shared<const ScratchFolder>();
    FetchedDisplay display = transfer->fetch(title, folder->path());
    sayWhatIsMissing(display.missing);
    return {std::move(display), std::move(folder)};
}

std::optional<ComparisonPanel::Theirs> ComparisonCommands::sideOf(const Fetched& fetched) {
    const std::string& name = fetched.display.name;
    ComparisonPanel::Theirs theirs{QString::fromStdString(name),
                                   DisplayContents::ofFolder(fetched.folder->path()), fetched.folder};
    if (!world_.master.isMaster())
        return theirs;
    theirs.display = rowAt(name);
    if (!theirs.display)
        return std::nullopt;
    theirs.name = QString::fromStdString(theirs.display->name);
    return theirs;
}

bool ComparisonCommands::isComparedWithDisplay(const std::string& title, ComparisonPanel::Question question) {
    const Fetched fetched = fetch(title);
    if (fetched.display.end != FetchedDisplay::End::Fetched)
        return fetched.display.end == FetchedDisplay::End::Cancelled;
    auto theirs = sideOf(fetched);
    if (!theirs || (question == ComparisonPanel::Question::WhatDiffers &&
                    !isReadable(theirs->contents, fetched.folder->path())))
        return false;
    openPanel().compareWith(std::move(*theirs), question);
    theirFolder_.clear();
    return true;
}

std::optional<EqualDisplay> ComparisonCommands::fetchEqual(const std::string& title) {
    std::optional<EqualDisplay> equal;
    compare([&] {
        const Fetched fetched = fetch(title);
        if (fetched.display.end != FetchedDisplay::End::Fetched)
            return fetched.display.end == FetchedDisplay::End::Cancelled;
        auto theirs = sideOf(fetched);
        if (!theirs)
            return false;
        if (compareContents(ComparisonPanel::ours(project(), *theirs), theirs->contents).isEqual()) {
            equal = {fetched.display.address, fingerprint(theirs->contents), theirs->display};
            return true;
        }
        const QString name = theirs->name;
        openPanel().compareWith(std::move(*theirs), ComparisonPanel::Question::WhatDiffers);
        theirFolder_.clear();
        dock_.showNotice(tr("%1 does not hold what this project sends. Upload it first.").arg(name));
        return true;
    });
    return equal;
}

void ComparisonCommands::miToolsCompareDisplay_Click() {
    compare([this] {
        return isComparedWithDisplay("Compare with Display", ComparisonPanel::Question::WhatDiffers);
    });
}

void ComparisonCommands::miToolsVerify_Click() {
    compare([this] { return isComparedWithDisplay("Verify Display", ComparisonPanel::Question::HoldsAll); });
}

void ComparisonCommands::miToolsCompareProject_Click() {
    if (const auto chosen = world_.chooser.chooseExistingProject("Compare with Project"))
        compareWithProject(*chosen);
}

void ComparisonCommands::compareWithProject(const ChosenProject& other) {
    compare([&] { return isComparedWith(other); });
}

bool ComparisonCommands::isComparedWith(const ChosenProject& other) {
    const DocMgrModule::FileContext context = world_.lifecycle.fileContext();
    const std::string path = DocMgrModule::projectFilePath(context.paths, other.ProjPath, other.ProjName);
    FileRemarks remarks;
    auto theirs = otherProject(path, context, remarks);
    if (!theirs)
        return false;
    if (isToRefuse(remarks)) {
        dock_.showNotice(
            tr("%1.orx is not whole: %2")
                .arg(QString::fromStdString(other.ProjName), QString::fromStdString(gravestText(remarks))));
        return false;
    }
    theirs->ProjPath = other.ProjPath;
    const bool isOwnFile = other.ProjPath == project().ProjPath && other.ProjName == project().ProjName;
    openPanel().compareWith({QString::fromStdString(path), DisplayContents::ofProject(*theirs), nullptr,
                             isOwnFile ? std::optional(theirs->IP) : std::nullopt},
                            ComparisonPanel::Question::WhatDiffers);
    theirFolder_ = other.ProjPath;
    return true;
}

} // namespace orvista
