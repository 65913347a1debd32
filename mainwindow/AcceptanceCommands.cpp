#include "mainwindow/AcceptanceCommands.h"

#include "check/FolderCheck.h"
#include "display/forms/DisplayPreview.h"
#include "items/AcceptanceCopy.h"
#include "items/Master.h"
#include "link/forms/MonitorPanel.h"
#include "link/forms/frmAccept.h"
#include "link/forms/frmPutBack.h"
#include "mainwindow/ComparisonCommands.h"
#include "mainwindow/OpenNotes.h"
#include "mainwindow/PanelDock.h"

#include <QDateTime>

#include <algorithm>
#include <chrono>
#include <utility>

namespace orvista {

namespace {

constexpr const char* cutOffOffer = "CutOff";
constexpr std::chrono::hours offeredFor{1};

QString cutOffText(const QString& display, qint64 minutes) {
    if (minutes < 1)
        return AcceptanceCommands::tr("Acceptance at %1 was cut off just now…").arg(display);
    if (minutes == 1)
        return AcceptanceCommands::tr("Acceptance at %1 was cut off 1 minute ago…").arg(display);
    return AcceptanceCommands::tr("Acceptance at %1 was cut off %2 minutes ago…").arg(display).arg(minutes);
}

QString elsewhereText(const std::string& display) {
    return AcceptanceCommands::tr("Another window of the program is at an acceptance at %1.")
        .arg(QString::fromStdString(display));
}

/// The monitor reads nothing while it stands.
class SilentMonitor {
public:
    explicit SilentMonitor(const PanelDock& dock) {
        for (const PanelDock::Panel& panel : dock.panels())
            if (auto* const monitor = qobject_cast<MonitorPanel*>(panel.widget))
                monitor_ = &monitor->monitor();
        if (monitor_)
            monitor_->hold();
    }
    ~SilentMonitor() {
        if (monitor_)
            monitor_->release();
    }
    SilentMonitor(const SilentMonitor&) = delete;
    SilentMonitor& operator=(const SilentMonitor&) = delete;

private:
    DisplayMonitor* monitor_ = nullptr;
};

} // namespace

AcceptanceCommands::AcceptanceCommands(const Surroundings& surroundings, Settings settings)
    : QObject(&surroundings.window),
      around_(surroundings),
      settings_(std::move(settings)),
      copies_(settings_.copies, RecoveryFolder::acceptances) {}

void AcceptanceCommands::miToolsAccept_Click() {
    if (settings_.isTesterSending())
        return around_.dock.showNotice(tr("The test page is sending. Try again in a moment."));
    if (const auto display = around_.comparison.fetchEqual("Accept at the Display"))
        accept(*display);
}

AcceptanceCommands::Held AcceptanceCommands::heldBy(const EqualDisplay& display) const {
    Held held{around_.lifecycle.project(), around_.notes.notes(), around_.preview.columns()};
    if (!display.row)
        return held;
    held.project = expand(held.project, *display.row).project;
    held.project.ProjName = display.row->name; // so the result is named
    held.notes = expandedNotes(held.notes, *display.row);
    held.columns = display.row->columns.value_or(held.columns);
    return held;
}

void AcceptanceCommands::accept(const EqualDisplay& display) {
    if (isAcceptedElsewhere(display.address))
        return around_.dock.showNotice(elsewhereText(display.address));
    const SilentMonitor silent(around_.dock);
    FolderCheck folder;
    const Held held = heldBy(display);
    frmAccept dialog({{held.project, held.notes, folder, held.columns, around_.preview.clock().localTime},
                      display.address,
                      settings_.modbusPort,
                      display.fingerprint,
                      around_.lifecycle.fileContext().messages,
                      [this, &display] { return claim(display.address); },
                      [this](const CutOffAcceptance& cutOff) {
                          return settings_.copies.isEmpty() || copies_.write(acceptanceCopy(cutOff));
                      }},
                     &around_.window);
    dialog.exec();
    if (dialog.NotPutBack.empty())
        return copies_.remove();
    copies_.abandon();
    offerCutOff();
}

/// Leaves a copy that another window sees, then looks for one of another window: of two that begin at once
/// at most one goes on. Where it cannot be written nothing will be switched anyway.
std::string AcceptanceCommands::claim(const std::string& address) {
    if (!settings_.copies.isEmpty())
        copies_.write(acceptanceCopy({address, {}, {}}));
    if (!isAcceptedElsewhere(address))
        return {};
    copies_.remove();
    return elsewhereText(address).toStdString();
}

bool AcceptanceCommands::isAcceptedElsewhere(const std::string& address) const {
    return std::ranges::any_of(copies_.held(), [&](const RecoveryFolder::Copy& copy) {
        const auto running = readAcceptanceCopy(RecoveryFolder::bytesOf(copy.path));
        return running && QString::fromStdString(running->address)
                                  .compare(QString::fromStdString(address), Qt::CaseInsensitive) == 0;
    });
}

void AcceptanceCommands::offerCutOff() {
    const QDateTime now = QDateTime::currentDateTime();
    for (const RecoveryFolder::Copy& copy : copies_.abandoned()) {
        const qint64 seconds = copy.written.secsTo(now);
        if (seconds > std::chrono::seconds(offeredFor).count())
            continue;
        const auto cutOff = readAcceptanceCopy(RecoveryFolder::bytesOf(copy.path));
        if (!cutOff || cutOff->written.empty())
            continue;
        const QString text = cutOffText(QString::fromStdString(cutOff->address), seconds / 60);
        return around_.dock.offer({QString::fromLatin1(cutOffOffer), text, tr("Put Back"),
                                   [this, path = copy.path] { putBack(path); }});
    }
}

void AcceptanceCommands::putBack(const QString& path) {
    auto claimed = RecoveryFolder::claimBytes(path);
    const auto cutOff = claimed ? readAcceptanceCopy(claimed->bytes) : std::nullopt;
    if (!cutOff)
        return around_.lifecycle.fileContext().messages.show(MessageIcon::Exclamation,
                                                             "Unable to open " + path.toStdString());
    const SilentMonitor silent(around_.dock);
    frmPutBack dialog(*cutOff, settings_.modbusPort, &around_.window);
    dialog.exec();
    claimed->lock.reset();
    if (dialog.IsDone)
        RecoveryFolder::removeAbandoned(path);
    else
        offerCutOff();
}

} // namespace orvista
