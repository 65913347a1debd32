#include "mainwindow/KeptFiles.h"

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

constexpr QLatin1String deviceFilesSuffix(".devicefiles");
constexpr QLatin1String projectFileSuffix(".projectfile");

void removeOldFolders(const QDir& recovery) {
    const QDateTime oldest = QDateTime::currentDateTime().addDays(-RecoveryFolder::keptDays);
    for (const QFileInfo& kept : recovery.entryInfoList({u'*' + deviceFilesSuffix, u'*' + projectFileSuffix},
                                                        QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks))
        if (kept.lastModified() < oldest)
            QDir(kept.filePath()).removeRecursively();
}

/// A folder inside the recovery folder, made with the first file that comes into it.
class KeptFolder {
public:
    KeptFolder(const QString& recovery, QLatin1String suffix) : recovery_(recovery), suffix_(suffix) {}

    /// The copy's path; empty where there is none.
    QString keep(const QFileInfo& file, const QString& name) {
        // A pipe would never end.
        if (!file.isFile())
            return {};
        if (path_.isEmpty())
            path_ = made();
        const QString copy = QDir(path_).filePath(name);
        return !path_.isEmpty() && QFile::copy(file.filePath(), copy) ? copy : QString();
    }

private:
    /// Empty where it cannot be made.
    QString made() const {
        if (recovery_.isEmpty() || !QDir().mkpath(recovery_))
            return {};
        const QDir recovery(recovery_);
        removeOldFolders(recovery);
        const QString time = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyy-MM-ddTHHmmssZ"));
        const QString name =
            time + u' ' + QUuid::createUuid().toString(QUuid::WithoutBraces).left(8) + suffix_;
        if (!recovery.mkdir(name))
            return {};
        // Scripts are nobody else's business.
        for (const QString& folder : {recovery_, recovery.filePath(name)})
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return recovery.filePath(name);
    }

    QString recovery_;
    QLatin1String suffix_;
    QString path_;
};

} // namespace

QStringList keepDeviceFiles(const QString& recoveryFolder, const std::string& folder) {
    const PathRules paths = PathRules::native();
    KeptFolder kept(recoveryFolder, deviceFilesSuffix);
    QStringList failed;
    for (const DeviceFile* const file : deviceFiles) {
        const QString name = QString::fromUtf8(file->name);
        const QFileInfo found(
            QString::fromStdString(deviceFileOnDisk(paths, paths.join(folder, file->name))));
        if (found.exists() && kept.keep(found, name).isEmpty())
            failed.append(name);
    }
    return failed;
}

QString keepProjectFile(const QString& recoveryFolder, const std::string& path) {
    const QFileInfo file(QString::fromStdString(path));
    return KeptFolder(recoveryFolder, projectFileSuffix).keep(file, file.fileName());
}

} // namespace orvista
