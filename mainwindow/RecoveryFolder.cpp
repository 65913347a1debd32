#include "mainwindow/RecoveryFolder.h"

#include "model/Bytes.h"
#include "model/SystemFile.h"
#include "model/SystemPath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QUuid>

#include <algorithm>

namespace orvista {

namespace {

constexpr QLatin1String copySuffix(".recovery");
constexpr QLatin1String lockSuffix(".lock");

/// Longer files are none of ours.
constexpr qint64 maximumCopyBytes = qint64{256} << 20;

/// The lock of the editor whose copy, or what was to become one, is at `path`. Held when it can be had.
std::unique_ptr<QLockFile> lockOf(const QString& path) {
    const QFileInfo file(path);
    auto lock =
        std::make_unique<QLockFile>(file.dir().filePath(file.fileName().section(u'.', 0, 0) + lockSuffix));
    lock->setStaleLockTime(0); // an editor may run for days: only that it has ended counts
    return lock->tryLock(0) ? std::move(lock) : nullptr;
}

} // namespace

bool RecoveryFolder::prepare() {
    if (lock_)
        return true;
    if (folder_.isEmpty() || !QDir().mkpath(folder_))
        return false;
    // Scripts are nobody else's business.
    QFile::setPermissions(folder_, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    path_ = QDir(folder_).filePath(QUuid::createUuid().toString(QUuid::WithoutBraces) + copySuffix);
    lock_ = lockOf(path_);
    if (lock_)
        removeLeftovers();
    return lock_ != nullptr;
}

bool RecoveryFolder::write(const std::string& bytes) {
    if (!prepare())
        return false;
    const bool isFirst = !QFile::exists(path_);
    QSaveFile file(path_);
    const auto size = static_cast<qint64>(bytes.size());
    bool written = file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size && file.commit();
    if (written && isFirst)
        written = syncNames();
    removeOld();
    return written;
}

/// The bytes of a file that is new are of no use while its name is not on the disk. A name that was there
/// before leads to one copy or the next.
bool RecoveryFolder::syncNames() const {
    try {
        syncFolder(systemPath(folder_.toStdString()));
        return true;
    } catch (const WriteFailure&) {
        return false;
    }
}

void RecoveryFolder::remove() {
    if (!path_.isEmpty())
        QFile::remove(path_);
}

std::vector<RecoveryFolder::Copy> RecoveryFolder::copies() const {
    std::vector<Copy> copies;
    const QDir folder(folder_);
    if (folder_.isEmpty())
        return copies;
    for (const QFileInfo& file : folder.entryInfoList({u'*' + copySuffix}, QDir::Files, QDir::Time))
        if (file.filePath() != path_)
            copies.push_back({file.filePath(), file.lastModified()});
    return copies;
}

std::vector<RecoveryFolder::Copy> RecoveryFolder::abandoned() const {
    std::vector<Copy> found = copies();
    std::erase_if(found, [](const Copy& copy) { return !lockOf(copy.path); });
    return found;
}

void RecoveryFolder::removeOld() const {
    std::vector<Copy> others = copies();
    qint64 bytes = QFileInfo(path_).size();
    for (const Copy& copy : others)
        bytes += QFileInfo(copy.path).size();
    const QDateTime oldest = QDateTime::currentDateTime().addDays(-keptDays);
    std::reverse(others.begin(), others.end());
    for (const Copy& copy : others) {
        if (copy.written >= oldest && bytes <= keptBytes)
            return;
        const qint64 size = QFileInfo(copy.path).size();
        if (const auto lock = lockOf(copy.path); lock && QFile::remove(copy.path))
            bytes -= size;
    }
}

/// Locks without a copy, and copies that were not yet whole, of editors that were killed.
void RecoveryFolder::removeLeftovers() const {
    const QDir folder(folder_);
    for (const QString& name : folder.entryList(QDir::Files)) {
        const bool isLock = name.endsWith(lockSuffix);
        const bool hasCopy = QFile::exists(folder.filePath(name.section(u'.', 0, 0) + copySuffix));
        if (name.endsWith(copySuffix) || (isLock && hasCopy))
            continue;
        // Giving the lock back removes its file.
        if (const auto lock = lockOf(folder.filePath(name)); lock && !isLock)
            QFile::remove(folder.filePath(name));
    }
}

std::optional<UnsavedWork> RecoveryFolder::read(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > maximumCopyBytes)
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    return readRecovery({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

std::optional<RecoveryFolder::Claimed> RecoveryFolder::claim(const QString& path) {
    auto lock = lockOf(path);
    if (!lock)
        return std::nullopt;
    auto work = read(path);
    if (!work)
        return std::nullopt;
    return Claimed{path, std::move(lock), std::move(*work)};
}

void RecoveryFolder::adopt(Claimed claimed) {
    remove();
    path_ = claimed.path;
    lock_ = std::move(claimed.lock);
}

} // namespace orvista
