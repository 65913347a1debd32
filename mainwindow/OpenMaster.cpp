#include "mainwindow/OpenMaster.h"

#include "display/forms/BitmapWatch.h"
#include "display/forms/DisplayPreview.h"
#include "mainwindow/OpenNotes.h"
#include "mainwindow/PanelDock.h"
#include "model/PathRules.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "sheets/MasterList.h"
#include "widgets/ModalDialogs.h"
#include "widgets/PathText.h"

#include <QFileInfo>

#include <chrono>
#include <system_error>
#include <utility>

namespace orvista {

namespace {

/// Clocks of file systems are coarse: a file that was written just now may be written once more unseen.
constexpr std::chrono::seconds settlingTime{2};

/// The line in the dock.
QString listLine() {
    return QStringLiteral("MasterList");
}

QString firstError(const SheetErrors& errors) {
    const QString first = QString::fromStdString(errorText(errors.sorted().front()));
    const std::size_t more = errors.count() - 1;
    return more == 0 ? first : OpenMaster::tr("%1; and %2 more").arg(first).arg(more);
}

} // namespace

OpenMaster::OpenMaster(const Project& project, const OpenNotes& notes, DisplayPreview& preview,
                       PanelDock& dock, QObject* parent)
    : QObject(parent), project_(project), notes_(notes), preview_(preview), dock_(dock), view_(project) {
    connect(&notes, &OpenNotes::changed, this, &OpenMaster::follow);
    connect(&preview, &DisplayPreview::displayChosen, this, &OpenMaster::choose);
    timer_.setInterval(BitmapWatch::interval);
    connect(&timer_, &QTimer::timeout, this, [this] {
        if (preview_.isVisible() && preview_.isActiveWindow() && !isModalDialogOpen())
            look();
    });
}

void OpenMaster::follow() {
    const auto& list = notes_.notes().masterList;
    const std::string projectFile =
        DocMgrModule::projectFilePath(PathRules::native(), project_.ProjPath, project_.ProjName);
    std::string path =
        list && !project_.ProjName.empty() ? masterListPath(projectFile, *list) : std::string();
    if (path == path_ && projectFile == projectFile_)
        return;
    path_ = std::move(path);
    projectFile_ = projectFile;
    read_.reset();
    stamp_.reset();
    isSettled_ = false;
    view_.setPlain();
    if (path_.empty()) {
        timer_.stop();
        tell({});
        emit changed();
    } else {
        timer_.start();
        look();
    }
}

std::string OpenMaster::firstPlace() const {
    const auto names = view_.isMaster() ? view_.master()->names() : std::vector<std::string>();
    return names.empty() ? std::string() : names.front();
}

void OpenMaster::look() {
    if (path_.empty())
        return;
    const auto stamp = fileStamp(systemPath(path_));
    if (read_ && stamp == stamp_ && isSettled_)
        return;
    stamp_ = stamp;
    isSettled_ = !stamp || std::filesystem::file_time_type::clock::now() - stamp->changed > settlingTime;
    ListFile file = readFile(path_);
    if (read_ != file)
        take(std::move(file));
}

OpenMaster::ListFile OpenMaster::readFile(const std::string& path) {
    try {
        return {sheetBytes(path), {}};
    } catch (const std::system_error& failure) {
        return {{}, failure.code().message()};
    }
}

void OpenMaster::take(ListFile file) {
    read_ = std::move(file);
    const QString name = QFileInfo(shownPath(path_)).fileName();
    SheetErrors errors;
    std::vector<FleetDisplay> displays;
    if (read_->fault.empty())
        displays = masterDisplays(read_->bytes, path_, projectFile_, errors);
    const QString fault = errors.none() ? QString::fromStdString(read_->fault) : firstError(errors);
    tell(fault.isEmpty() ? QString() : tr("The list of displays %1: %2").arg(name, fault));
    view_.setDisplays(errors.none() ? std::move(displays) : std::vector<FleetDisplay>());
    emit changed();
}

void OpenMaster::tell(const QString& fault) {
    if (fault.isEmpty())
        dock_.withdraw(listLine());
    else
        dock_.offer({listLine(), fault, {}, nullptr});
}

void OpenMaster::choose(const QString& name) {
    view_.choose(name.toStdString());
    const FleetDisplay* const display = view_.display();
    const auto columns = display != nullptr && display->columns ? display->columns : notes_.notes().columns;
    emit changed();
    if (columns)
        preview_.setColumns(*columns);
}

} // namespace orvista
