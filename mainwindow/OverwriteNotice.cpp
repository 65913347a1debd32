#include "mainwindow/OverwriteNotice.h"

#include "mainwindow/KeptFiles.h"
#include "mainwindow/PanelDock.h"
#include "widgets/PathText.h"

#include <QFileInfo>

namespace orvista {

namespace {

QString overwrittenLine() {
    return QStringLiteral("Overwritten");
}

} // namespace

OverwriteNotice::OverwriteNotice(PanelDock& dock, const QString& recoveryFolder, QObject* parent)
    : QObject(parent), dock_(dock), recoveryFolder_(recoveryFolder) {}

void OverwriteNotice::keep(const std::string& path) {
    const QString name = QFileInfo(shownPath(path)).fileName();
    const QString copy = keepProjectFile(recoveryFolder_, path);
    dock_.offer({overwrittenLine(),
                 copy.isEmpty() ? tr("No copy was kept of what another program had written to %1").arg(name)
                                : tr("What another program had written to %1 was kept as %2")
                                      .arg(name, shownPath(copy.toStdString())),
                 {},
                 nullptr});
}

} // namespace orvista
