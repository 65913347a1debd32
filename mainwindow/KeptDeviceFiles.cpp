#include "mainwindow/KeptDeviceFiles.h"

#include "mainwindow/RecoveryFolder.h"
#include "model/DeviceFiles.h"
#include "model/FolderLookup.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

namespace orvista {

namespace {

constexpr QLatin1String keptSuffix(".devicefiles");

void removeOldFolders(const QDir& recovery) {
    const QDateTime oldest = QDateTime::currentDateTime().addDays(-RecoveryFolder::keptDays);
    for (const QFileInfo& kept :
         recovery.entryInfoList({u'*' + keptSuffix}, QDir::Dirs | QDir::NoDotAndDotDot))
        if (kept.lastModified() < oldest)
            QDir(kept.filePath()).removeRecursively();
}

/// Empty where it cannot be made.
QString newKeptFolder(const QString& recoveryFolder) {
    if (recoveryFolder.isEmpty() || !QDir().mkpath(recoveryFolder))
        return {};
    const QDir recovery(recoveryFolder);
    removeOldFolders(recovery);
    const QString time = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyy-MM-ddTHHmmssZ"));
    const QString name =
        time + u' ' + QUuid::createUuid().toString(QUuid::WithoutBraces).left(8) + keptSuffix;
    if (!recovery.mkdir(name))
        return {};
    // Scripts are nobody else's business.
    for (const QString& made : {recoveryFolder, recovery.filePath(name)})
        QFile::setPermissions(made, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return recovery.filePath(name);
}

} // namespace

QStringList keepDeviceFiles(const QString& recoveryFolder, const std::string& folder) {
    const PathRules paths = PathRules::native();
    QString kept;
    QStringList failed;
    for (const DeviceFile* const file : deviceFiles) {
        const QString name = QString::fromUtf8(file->name);
        const QFileInfo found(
            QString::fromStdString(deviceFileOnDisk(paths, paths.join(folder, file->name))));
        if (!found.exists())
            continue;
        if (kept.isEmpty())
            kept = newKeptFolder(recoveryFolder);
        // A pipe would never end.
        if (kept.isEmpty() || !found.isFile() || !QFile::copy(found.filePath(), QDir(kept).filePath(name)))
            failed.append(name);
    }
    return failed;
}

} // namespace orvista
