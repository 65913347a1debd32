#include "mainwindow/NotWholeNotice.h"

#include "check/FileFindings.h"
#include "check/forms/FindingsPanel.h"
#include "mainwindow/KeptFiles.h"
#include "mainwindow/PanelDock.h"
#include "model/ProjectLifecycle.h"

namespace orvista {

namespace {

QString notWholeLine() {
    return QStringLiteral("ShowNotWhole");
}
QString notKeptLine() {
    return QStringLiteral("NotKept");
}

} // namespace

NotWholeNotice::NotWholeNotice(const DocMgrModule::ProjectLifecycle& lifecycle, PanelDock& dock,
                               const QString& recoveryFolder, QObject* parent)
    : QObject(parent), lifecycle_(lifecycle), dock_(dock), recoveryFolder_(recoveryFolder) {}

void NotWholeNotice::beforeReplacing(const std::string& folder, const FileRemarks& remarks) {
    if (!isNotWhole(remarks))
        return;
    const QStringList failed = keepDeviceFiles(recoveryFolder_, folder);
    if (!failed.isEmpty())
        dock_.offer({notKeptLine(),
                     tr("No copy was kept of what stood in %1 before").arg(failed.join(QStringLiteral(", "))),
                     {},
                     nullptr});
}

void NotWholeNotice::follow(ProjectTransition transition) {
    const FileRemarks& remarks = lifecycle_.fileRemarks();
    if (transition == ProjectTransition::Reset)
        dock_.withdraw(notKeptLine());
    if (!isNotWhole(remarks))
        dock_.withdraw(notWholeLine());
    else if (transition == ProjectTransition::Opened || transition == ProjectTransition::ProjectCommands)
        dock_.offer(
            {notWholeLine(),
             QString::fromStdString(notWholeText(
                 lifecycle_.project().ProjName + std::string(DocMgrModule::projectExtension), remarks)),
             tr("Show"), [this] { dock_.open<FindingsPanel>().check(); }});
}

} // namespace orvista
