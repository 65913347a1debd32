#include "mainwindow/RecoveryFolder.h"

#include "mainwindow/RecoveryLock.h"
#include "model/Bytes.h"
#include "model/SystemFile.h"
#include "model/SystemPath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>
#include <QUuid>

#include <algorithm>
#include <array>

namespace orvista {

namespace {

constexpr std::array suffixes{RecoveryFolder::unsavedWork, RecoveryFolder::acceptances};

/// Longer files are none of ours.
constexpr qint64 maximumCopyBytes = qint64{256} << 20;

constexpr QDir::Filters regularFiles = QDir::Files | QDir::NoSymLinks;

/// Our names begin with an identifier.
bool isOurs(const QFileInfo& file) {
    return file.isFile() && !QUuid::fromString(file.fileName().section(u'.', 0, 0)).isNull();
}

/// Null where another editor has it, or it cannot be written.
std::unique_ptr<QLockFile> heldLock(const QString& path) {
    auto lock = recoveryLockOf(path);
    return lock->tryLock(0) ? std::move(lock) : nullptr;
}

/// On a full disk a file can be made, but not filled.
bool canWriteBeside(const QString& path) {
    QTemporaryFile file(QFileInfo(path).dir().filePath(QStringLiteral("XXXXXX")));
    return file.open() && file.write("x") == 1 && file.flush();
}

/// The lock of an abandoned copy, so that no other editor takes it; null where nothing can be written and so
/// nobody can have one. Nothing where another editor was first, or is about to be.
std::optional<std::unique_ptr<QLockFile>> lockOfAbandoned(const QString& path) {
    auto lock = heldLock(path);
    if (!lock && (isRecoveryLockHeld(path) || canWriteBeside(path)))
        return std::nullopt;
    return lock;
}

/// Nothing of what is no regular file, or too long.
QByteArray copyBytes(const QString& path) {
    const QFileInfo info(path);
    QFile file(path);
    if (info.isSymLink() || !info.isFile() || !file.open(QIODevice::ReadOnly) ||
        file.size() > maximumCopyBytes)
        return {};
    return file.read(maximumCopyBytes);
}

std::string_view viewOf(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

} // namespace

bool RecoveryFolder::prepare() {
    if (lock_)
        return true;
    if (folder_.isEmpty() || !QDir().mkpath(folder_))
        return false;
    // Scripts are nobody else's business.
    QFile::setPermissions(folder_, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    path_ = QDir(folder_).filePath(QUuid::createUuid().toString(QUuid::WithoutBraces) + suffix_);
    lock_ = heldLock(path_);
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
    // commit() does not notice that what was buffered finds no room on the disk.
    bool written = file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size &&
                   file.flush() && file.commit();
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

void RecoveryFolder::abandon() {
    lock_.reset();
    path_.clear();
}

std::vector<RecoveryFolder::Copy> RecoveryFolder::copies() const {
    std::vector<Copy> copies;
    const QDir folder(folder_);
    if (folder_.isEmpty())
        return copies;
    for (const QFileInfo& file : folder.entryInfoList({u'*' + suffix_}, regularFiles, QDir::Time))
        if (isOurs(file) && file.filePath() != path_)
            copies.push_back({file.filePath(), file.lastModified()});
    return copies;
}

std::vector<RecoveryFolder::Copy> RecoveryFolder::abandoned() const {
    std::vector<Copy> found = copies();
    std::erase_if(found, [](const Copy& copy) { return isRecoveryLockHeld(copy.path); });
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
        if (const auto lock = heldLock(copy.path); lock && QFile::remove(copy.path))
            bytes -= size;
    }
}

std::vector<RecoveryFolder::Copy> RecoveryFolder::held() const {
    std::vector<Copy> found = copies();
    std::erase_if(found, [](const Copy& copy) { return !isRecoveryLockHeld(copy.path); });
    return found;
}

/// Locks without a copy, and copies that were not yet whole, of editors that were killed.
void RecoveryFolder::removeLeftovers() const {
    const QDir folder(folder_);
    for (const QFileInfo& file : folder.entryInfoList(regularFiles)) {
        const QString name = file.fileName();
        const bool isLock = name.endsWith(recoveryLockSuffix);
        const QString first = name.section(u'.', 0, 0);
        const bool isPart = std::ranges::any_of(suffixes, [&](QLatin1String suffix) {
            return name.mid(first.size()).startsWith(suffix + u'.') && !isLock;
        });
        const bool hasCopy = std::ranges::any_of(
            suffixes, [&](QLatin1String suffix) { return QFile::exists(folder.filePath(first + suffix)); });
        if (!isOurs(file) || !(isPart || (isLock && !hasCopy)))
            continue;
        // Giving the lock back removes its file.
        if (const auto lock = heldLock(file.filePath()); lock && isPart)
            QFile::remove(file.filePath());
    }
}

std::optional<UnsavedWork> RecoveryFolder::read(const QString& path) {
    return readRecovery(viewOf(copyBytes(path)));
}

bool RecoveryFolder::isOfNewerVersion(const QString& path) {
    return isRecoveryOfNewerVersion(viewOf(copyBytes(path)));
}

bool RecoveryFolder::removeAbandoned(const QString& path) {
    const auto lock = lockOfAbandoned(path);
    return lock && QFile::remove(path);
}

std::string RecoveryFolder::bytesOf(const QString& path) {
    return copyBytes(path).toStdString();
}

std::optional<RecoveryFolder::ClaimedBytes> RecoveryFolder::claimBytes(const QString& path) {
    auto lock = lockOfAbandoned(path);
    if (!lock)
        return std::nullopt;
    return ClaimedBytes{*std::move(lock), bytesOf(path)};
}

std::optional<RecoveryFolder::Claimed> RecoveryFolder::claim(const QString& path) {
    auto claimed = claimBytes(path);
    auto work = claimed ? readRecovery(claimed->bytes) : std::nullopt;
    if (!work)
        return std::nullopt;
    return Claimed{path, std::move(claimed->lock), std::move(*work)};
}

void RecoveryFolder::adopt(Claimed claimed) {
    if (!claimed.lock)
        return;
    remove();
    path_ = claimed.path;
    lock_ = std::move(claimed.lock);
}

} // namespace orvista
