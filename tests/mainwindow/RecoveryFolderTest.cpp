#include "mainwindow/RecoveryFolder.h"

#include "model/SystemPath.h"
#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

#include <atomic>
#include <barrier>
#include <chrono>
#include <filesystem>
#include <thread>
#ifdef Q_OS_UNIX
#include "tests/support/FullDisk.h"
#include "tests/support/Unprivileged.h"
#endif

using namespace orvista;
using namespace orvista::testing;
namespace fs = std::filesystem;

namespace {

/// What was waited for until it is on the disk.
QStringList syncs;

std::string workOf(const std::string& name) {
    Project project;
    project.ProjName = name;
    return recoveryBytes(project, {});
}

/// A folder of copies as several editors leave it.
struct Copies {
    QString path() const { return QString::fromStdString(folder.path()) + QStringLiteral("/recovery"); }

    /// A copy of that age, left by an editor that has ended.
    QString leave(const std::string& name, int days, qint64 size = 0) const {
        RecoveryFolder editor(path());
        const QStringList before = files();
        if (!editor.write(workOf(name)))
            throw std::runtime_error("no copy was written");
        for (const QString& file : files()) {
            if (before.contains(file) || !file.endsWith(QStringLiteral(".recovery")))
                continue;
            QFile copy(path() + u'/' + file);
            if (!copy.open(QIODevice::ReadWrite) || (size > 0 && !copy.resize(size)) ||
                !copy.setFileTime(QDateTime::currentDateTime().addDays(-days),
                                  QFileDevice::FileModificationTime))
                throw std::runtime_error("the copy cannot be made old");
            return file;
        }
        throw std::runtime_error("no copy is there");
    }
    /// The lock of that copy, as an editor leaves it that is killed.
    void leaveLock(const QString& copy) const {
        // A process that is gone, on this machine.
        writeBytes((path() + u'/' + copy.section(u'.', 0, 0) + QStringLiteral(".lock")).toStdString(),
                   "999999999\norvista-editor\n" + QSysInfo::machineHostName().toStdString() + "\n");
    }
    QStringList files() const { return QDir(path()).entryList(QDir::Files, QDir::Name); }

    TemporaryFolder folder;
};

QStringList namesIn(const RecoveryFolder& folder) {
    QStringList names;
    for (const RecoveryFolder::Copy& copy : folder.abandoned()) {
        const auto work = RecoveryFolder::read(copy.path);
        names << (work ? QString::fromStdString(work->project.ProjName) : QStringLiteral("?"));
    }
    return names;
}

constexpr qint64 megabyte = qint64{1} << 20;

} // namespace

#ifdef __linux__
extern "C" {
int fsync(int file) {
    syncs << QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(file));
    return 0;
}
int fdatasync(int file) {
    return fsync(file);
}
}
#endif

class RecoveryFolderTest : public QObject {
    Q_OBJECT
private slots:
    void isMadeWithTheFirstCopyForItsOwnerOnly();
    void theNameOfTheFirstCopyIsOnTheDisk();
    void longScriptsComeBack();
    void copiesOfEndedEditorsAreListedNewestFirst();
    void theCopyOfARunningEditorIsNotListed();
    void anEditorThatRunsForDaysKeepsItsCopy();
    void aCopyThatIsOlderThanThirtyDaysIsRemoved();
    void theOldestAreRemovedWhileAllAreLargerThanFiftyMegabytes();
    void theCopyOfARunningEditorIsNeverRemoved();
    void whatKilledEditorsLeftIsRemoved();
    void aCopyIsClaimedOnce();
    void anAdoptedCopyIsTheEditorsOwn();
    void whatCannotBeReadCannotBeClaimed();
    void listingWritesNothing();
    void aFolderThatMayNotBeWrittenIsListedAndOpened();
    void aLockThatCannotBeTakenOverIsNoHindrance();
    void ofTwoEditorsAtOnceOneTakesTheCopy();
    void aLockOfAnEarlierStartOfTheSystemCountsNoMore();
    void whatIsNotOursIsLeftAlone();
    void aLinkToADeviceIsNoCopy();
    void anAbandonedCopyCanBeRemoved();
    void withoutAFolderNothingIsKept();
    void aFolderThatCannotBeMadeIsNoError();
    void aFullDiskLeavesTheCopyBefore();
};

void RecoveryFolderTest::isMadeWithTheFirstCopyForItsOwnerOnly() {
    const Copies copies;
    RecoveryFolder editor(copies.path());
    QVERIFY(editor.abandoned().empty());
    editor.remove();
    QVERIFY(!QDir(copies.path()).exists());
    QVERIFY(editor.write(workOf("Line3")));
    QCOMPARE(copies.files().size(), 2); // the copy and its lock
    QVERIFY(!(QFile::permissions(copies.path()) & (QFile::ReadGroup | QFile::ReadOther)));
    editor.remove();
    QCOMPARE(copies.files().size(), 1);
}

void RecoveryFolderTest::theNameOfTheFirstCopyIsOnTheDisk() {
#ifdef __linux__
    const Copies copies;
    RecoveryFolder editor(copies.path());
    syncs.clear();
    QVERIFY(editor.write(workOf("Line3")));
    QVERIFY(!syncs.filter(copies.path() + u'/').empty()); // before it has its name
    QCOMPARE(syncs.count(copies.path()), 1);
    QCOMPARE(syncs.back(), copies.path());
    syncs.clear();
    QVERIFY(editor.write(workOf("Line4")));
    QVERIFY(!syncs.filter(copies.path() + u'/').empty());
    QCOMPARE(syncs.count(copies.path()), 0); // an old copy or the new one has the name
#else
    QSKIP("names are written through here");
#endif
}

void RecoveryFolderTest::longScriptsComeBack() {
    const Copies copies;
    Project project;
    project.STDMSG[0] = std::string(3 * megabyte, 'x');
    {
        RecoveryFolder editor(copies.path());
        QVERIFY(editor.write(recoveryBytes(project, {})));
    }
    const auto abandoned = RecoveryFolder(copies.path()).abandoned();
    QCOMPARE(abandoned.size(), std::size_t{1});
    const auto work = RecoveryFolder::read(abandoned.front().path);
    QVERIFY(work.has_value());
    QVERIFY(work->project.STDMSG[0] == project.STDMSG[0]);
}

void RecoveryFolderTest::copiesOfEndedEditorsAreListedNewestFirst() {
    const Copies copies;
    copies.leave("old", 20);
    copies.leave("new", 1);
    copies.leave("middle", 10);
    QCOMPARE(namesIn(RecoveryFolder(copies.path())), (QStringList{"new", "middle", "old"}));
    QCOMPARE(copies.files().size(), 3); // their locks went with them
}

void RecoveryFolderTest::theCopyOfARunningEditorIsNotListed() {
    const Copies copies;
    RecoveryFolder running(copies.path());
    QVERIFY(running.write(workOf("running")));
    copies.leave("ended", 1);
    QCOMPARE(namesIn(RecoveryFolder(copies.path())), QStringList{"ended"});
    QCOMPARE(namesIn(running), QStringList{"ended"});
}

void RecoveryFolderTest::anEditorThatRunsForDaysKeepsItsCopy() {
    const Copies copies;
    RecoveryFolder running(copies.path());
    QVERIFY(running.write(workOf("running")));
    QFile lock(copies.path() + u'/' + copies.files().filter(".lock").value(0));
    QVERIFY(lock.open(QIODevice::ReadWrite));
    QVERIFY(lock.setFileTime(QDateTime::currentDateTime().addDays(-3), QFileDevice::FileModificationTime));
    lock.close();
    const RecoveryFolder editor(copies.path());
    QVERIFY(editor.abandoned().empty());
    QVERIFY(!RecoveryFolder::claim(copies.path() + u'/' + copies.files().filter(".recovery").value(0)));
}

void RecoveryFolderTest::aCopyThatIsOlderThanThirtyDaysIsRemoved() {
    const Copies copies;
    copies.leave("kept", 29);
    copies.leave("removed", 31);
    RecoveryFolder editor(copies.path());
    QVERIFY(editor.write(workOf("Line3")));
    QCOMPARE(namesIn(editor), QStringList{"kept"});
}

void RecoveryFolderTest::theOldestAreRemovedWhileAllAreLargerThanFiftyMegabytes() {
    const Copies copies;
    copies.leave("oldest", 20, 20 * megabyte);
    copies.leave("old", 10, 20 * megabyte);
    const QString newest = copies.leave("newest", 1, 29 * megabyte);
    RecoveryFolder editor(copies.path());
    QVERIFY(editor.write(workOf("Line3")));
    QCOMPARE(editor.abandoned().size(), std::size_t{2}); // 49 MB and this editor's own
    copies.leave("small", 2);
    QVERIFY(editor.write(std::string(2 * megabyte, 'x')));
    QCOMPARE(editor.abandoned().size(), std::size_t{2}); // the newest and the small one
    QVERIFY(editor.abandoned()[0].path.endsWith(newest));
}

void RecoveryFolderTest::theCopyOfARunningEditorIsNeverRemoved() {
    const Copies copies;
    RecoveryFolder running(copies.path());
    QVERIFY(running.write(std::string(51 * megabyte, 'x')));
    const QString copy = copies.files().filter(".recovery").value(0);
    QFile file(copies.path() + u'/' + copy);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addDays(-40), QFileDevice::FileModificationTime));
    file.close();
    RecoveryFolder editor(copies.path());
    QVERIFY(editor.write(workOf("Line3")));
    QVERIFY(copies.files().contains(copy));
}

void RecoveryFolderTest::whatKilledEditorsLeftIsRemoved() {
    const Copies copies;
    const QString kept = copies.leave("kept", 1);
    const QString dead = QStringLiteral("01234567-89ab-cdef-0123-456789abcdef");
    copies.leaveLock(dead);
    writeBytes((copies.path() + u'/' + dead + QStringLiteral(".recovery.AbCdEf")).toStdString(),
               "orvista-rec");
    copies.leaveLock(kept);
    RecoveryFolder running(copies.path());
    QVERIFY(running.write(workOf("running")));
    RecoveryFolder editor(copies.path());
    QVERIFY(editor.write(workOf("Line3")));
    QCOMPARE(copies.files().filter(dead), QStringList());
    QCOMPARE(copies.files().filter(".recovery").size(), 3);
    QCOMPARE(namesIn(editor), QStringList{"kept"});
}

void RecoveryFolderTest::aCopyIsClaimedOnce() {
    const Copies copies;
    const QString path = copies.path() + u'/' + copies.leave("Line3", 1);
    const auto claimed = RecoveryFolder::claim(path);
    QVERIFY(claimed.has_value());
    QCOMPARE(claimed->work.project.ProjName, std::string("Line3"));
    QVERIFY(!RecoveryFolder::claim(path));
    QVERIFY(RecoveryFolder(copies.path()).abandoned().empty());
}

void RecoveryFolderTest::anAdoptedCopyIsTheEditorsOwn() {
    const Copies copies;
    const QString path = copies.path() + u'/' + copies.leave("Line3", 1);
    {
        RecoveryFolder editor(copies.path());
        QVERIFY(editor.write(workOf("before")));
        editor.adopt(std::move(*RecoveryFolder::claim(path)));
        QCOMPARE(copies.files().filter(".recovery").size(), 1);
        QVERIFY(editor.abandoned().empty());
        QVERIFY(editor.write(workOf("after")));
        QCOMPARE(RecoveryFolder::read(path)->project.ProjName, std::string("after"));
    }
    QCOMPARE(namesIn(RecoveryFolder(copies.path())), QStringList{"after"});
}

void RecoveryFolderTest::whatCannotBeReadCannotBeClaimed() {
    const Copies copies;
    const QString path = copies.path() + u'/' + copies.leave("Line3", 1, 20);
    QVERIFY(!RecoveryFolder::claim(path));
    QVERIFY(QFile::resize(path, 300 * megabyte));
    QVERIFY(!RecoveryFolder::read(path));
    QVERIFY(!RecoveryFolder::claim(copies.path() + QStringLiteral("/none.recovery")));
    QCOMPARE(RecoveryFolder(copies.path()).abandoned().size(), std::size_t{1});
}

void RecoveryFolderTest::listingWritesNothing() {
    const Copies copies;
    copies.leave("Line3", 1);
    const fs::path folder = systemPath(copies.path().toStdString());
    const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(folder, longAgo);
    QCOMPARE(namesIn(RecoveryFolder(copies.path())), QStringList{"Line3"});
    QVERIFY(fs::last_write_time(folder) == longAgo);
}

void RecoveryFolderTest::aFolderThatMayNotBeWrittenIsListedAndOpened() {
#ifdef Q_OS_UNIX
    const Copies copies;
    const std::string copy = copies.path().toStdString() + "/" + copies.leave("Line3", 1).toStdString();
    fs::permissions(copies.folder.path(), fs::perms(0755));
    fs::permissions(copies.path().toStdString(), fs::perms(0555));
    fs::permissions(copy, fs::perms(0444));
    QVERIFY(holdsUnprivileged([&] {
        RecoveryFolder editor(copies.path());
        auto claimed = RecoveryFolder::claim(QString::fromStdString(copy));
        if (namesIn(editor) != QStringList{"Line3"} || !claimed || claimed->lock)
            return false;
        editor.adopt(std::move(*claimed));
        return !editor.write(workOf("Line3")) &&
               !RecoveryFolder::removeAbandoned(QString::fromStdString(copy));
    }));
    fs::permissions(copies.path().toStdString(), fs::perms(0755));
    QCOMPARE(namesIn(RecoveryFolder(copies.path())), QStringList{"Line3"});
#endif
}

void RecoveryFolderTest::aLockThatCannotBeTakenOverIsNoHindrance() {
#ifdef Q_OS_UNIX
    const Copies copies;
    const QString name = copies.leave("Line3", 1);
    const QString copy = copies.path() + u'/' + name;
    copies.leaveLock(name);
    const auto isOpened = [&copy] {
        const auto claimed = RecoveryFolder::claim(copy);
        return claimed && !claimed->lock && claimed->work.project.ProjName == "Line3";
    };
    fs::permissions(copies.folder.path(), fs::perms(0755));
    fs::permissions(copies.path().toStdString(), fs::perms(0555));
    fs::permissions(copy.toStdString(), fs::perms(0444));
    QVERIFY(holdsUnprivileged([&] { return isOpened() && !RecoveryFolder::removeAbandoned(copy); }));
    fs::permissions(copies.path().toStdString(), fs::perms(0755));
    const FullDisk disk(0);
    QVERIFY(isOpened());
    QVERIFY(RecoveryFolder::removeAbandoned(copy));
    QVERIFY(!QFile::exists(copy));
#endif
}

void RecoveryFolderTest::ofTwoEditorsAtOnceOneTakesTheCopy() {
    const Copies copies;
    const QString copy = copies.leave("Line1", 0);
    // Taking over what an editor left that was killed has several steps.
    for (int round = 0; round < 60; ++round) {
        copies.leaveLock(copy);
        std::barrier begin(2);
        std::barrier end(2);
        std::atomic<int> claims = 0;
        const auto claim = [&] {
            begin.arrive_and_wait();
            const auto claimed = RecoveryFolder::claimBytes(copies.path() + u'/' + copy);
            claims += claimed ? 1 : 0;
            end.arrive_and_wait();
        };
        std::thread other(claim);
        claim();
        other.join();
        QVERIFY2(claims <= 1, qPrintable(QString::number(round)));
    }
}

void RecoveryFolderTest::aFullDiskLeavesTheCopyBefore() {
#ifdef Q_OS_UNIX
    const Copies copies;
    RecoveryFolder editor(copies.path());
    QVERIFY(editor.write(workOf("Line3")));
    for (const rlim_t room : {0, 100}) {
        const FullDisk disk(room);
        QVERIFY(!editor.write(workOf("Line4")));
    }
    editor.abandon();
    QCOMPARE(namesIn(editor), QStringList{"Line3"});
#endif
}

void RecoveryFolderTest::aLockOfAnEarlierStartOfTheSystemCountsNoMore() {
    if (QSysInfo::bootUniqueId().isEmpty())
        QSKIP("this system does not tell its starts apart");
    const Copies copies;
    RecoveryFolder running(copies.path());
    QVERIFY(running.write(workOf("running")));
    const std::string lock =
        copies.path().toStdString() + "/" + copies.files().filter(".lock").value(0).toStdString();
    std::string bytes = fileBytes(lock);
    const std::string start = QSysInfo::bootUniqueId().toStdString();
    QCOMPARE(namesIn(RecoveryFolder(copies.path())), QStringList());
    writeBytes(lock, bytes.replace(bytes.find(start), start.size(), "another start"));
    QCOMPARE(namesIn(RecoveryFolder(copies.path())), QStringList{"running"});
}

void RecoveryFolderTest::whatIsNotOursIsLeftAlone() {
    const Copies copies;
    copies.leave("Line3", 1);
    const QStringList others{"notes.txt", "notes.recovery", "notes.lock", "notes.recovery.AbCdEf",
                             "01234567-89ab-cdef-0123-456789abcdef.txt"};
    for (const QString& name : others) {
        QFile file(copies.path() + u'/' + name);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(60 * megabyte));
        QVERIFY(
            file.setFileTime(QDateTime::currentDateTime().addDays(-40), QFileDevice::FileModificationTime));
    }
    RecoveryFolder editor(copies.path());
    QVERIFY(editor.write(workOf("Line4")));
    for (const QString& name : others)
        QVERIFY2(copies.files().contains(name), qPrintable(name));
    QCOMPARE(namesIn(editor), QStringList{"Line3"}); // their size does not count
}

void RecoveryFolderTest::aLinkToADeviceIsNoCopy() {
#ifdef Q_OS_UNIX
    const Copies copies;
    QVERIFY(QDir().mkpath(copies.path()));
    const QString link = copies.path() + QStringLiteral("/01234567-89ab-cdef-0123-456789abcdef.recovery");
    fs::create_symlink("/dev/zero", link.toStdString());
    QVERIFY(!RecoveryFolder::read(link));
    RecoveryFolder editor(copies.path());
    QVERIFY(editor.write(workOf("Line3")));
    QVERIFY(editor.abandoned().empty());
    QVERIFY(fs::is_symlink(link.toStdString()));
#endif
}

void RecoveryFolderTest::anAbandonedCopyCanBeRemoved() {
    const Copies copies;
    const QString path = copies.path() + u'/' + copies.leave("Line3", 1);
    RecoveryFolder running(copies.path());
    QVERIFY(running.write(workOf("running")));
    const QString own = copies.path() + u'/' +
                        copies.files()
                            .filter(".recovery")
                            .filter(QRegularExpression("^(?!" + path.section(u'/', -1) + ")"))
                            .value(0);
    QVERIFY(RecoveryFolder::removeAbandoned(path));
    QVERIFY(!RecoveryFolder::removeAbandoned(path));
    QVERIFY(!RecoveryFolder::removeAbandoned(own));
    QCOMPARE(copies.files().filter(".recovery").size(), 1);
}

void RecoveryFolderTest::withoutAFolderNothingIsKept() {
    RecoveryFolder editor({});
    QVERIFY(!editor.write(workOf("Line3")));
    QVERIFY(editor.abandoned().empty());
    editor.remove();
}

void RecoveryFolderTest::aFolderThatCannotBeMadeIsNoError() {
    const TemporaryFolder folder;
    writeBytes(folder.file("file"), "x");
    RecoveryFolder editor(QString::fromStdString(folder.file("file")) + QStringLiteral("/recovery"));
    QVERIFY(!editor.write(workOf("Line3")));
    QVERIFY(editor.abandoned().empty());
}

QTEST_GUILESS_MAIN(RecoveryFolderTest)
#include "RecoveryFolderTest.moc"
