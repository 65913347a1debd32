#include "mainwindow/HelpOpener.h"
#include "model/SystemPath.h"

#include "tests/support/EnvironmentSetting.h"
#include "tests/support/TemporaryFolder.h"

#include <QDesktopServices>
#include <QTest>
#include <QUrl>

#include <filesystem>

using namespace orvista;
using namespace orvista::testing;

namespace {

constexpr auto withViewer = [] { return true; };
constexpr auto withoutViewer = [] { return false; };

/// A program folder with the help in both forms.
class HelpFolder {
public:
    HelpFolder() {
        writeBytes(compiled(), "ITSF");
        std::filesystem::create_directory(systemPath(folder_.file("help")));
        writeBytes(html(), "<html></html>");
    }
    std::string compiled() const { return folder_.file("OR102.chm"); }
    std::string html() const { return folder_.file("help/index.html"); }
    static void remove(const std::string& path) { std::filesystem::remove(systemPath(path)); }

private:
    TemporaryFolder folder_;
};

/// Puts an xdg-mime of our own before all others, or none at all.
class FakeDesktop {
public:
    explicit FakeDesktop(const std::string& script) {
        if (!script.empty()) {
            const std::string program = folder_.file("xdg-mime");
            writeBytes(program, "#!/bin/sh\n" + script);
            std::filesystem::permissions(systemPath(program), std::filesystem::perms::owner_all);
        }
    }

private:
    TemporaryFolder folder_;
    EnvironmentSetting path_{"PATH", folder_.path()};
};

/// Stands where the desktop would open a file.
class RecordedDesktop : public QObject {
    Q_OBJECT
public:
    RecordedDesktop() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~RecordedDesktop() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    std::vector<std::string> opened;

public slots:
    void open(const QUrl& url) { opened.push_back(url.toLocalFile().toStdString()); }
};

const std::string xchmForTheOldName =
    "[ \"$1 $2 $3\" = 'query default application/x-chm' ] && echo xchm.desktop\n"
    "exit 0\n";

} // namespace

class HelpOpenerTest : public QObject {
    Q_OBJECT
private slots:
    void theCompiledHelpOpensWhereAViewerIs();
    void theHtmlOpensWithoutAViewer();
    void theHtmlOpensInPlaceOfAMissingFile();
    void nothingOpensWhereBothAreMissing();
    void aFolderIsNoHelpFile();
    void noViewerIsAskedForAMissingFile();
    void aViewerIsKnownByEitherNameOfTheType();
    void noViewerIsKnownWithoutADesktop();
    void theDesktopGetsTheFile();
    void aPageOpensInTheBrowser();
    void theWholeHelpOpensWhereAPageIsMissing();
};

void HelpOpenerTest::theCompiledHelpOpensWhereAViewerIs() {
    const HelpFolder folder;
    QVERIFY(helpToOpen(folder.compiled(), withViewer) == folder.compiled());
}

void HelpOpenerTest::theHtmlOpensWithoutAViewer() {
    const HelpFolder folder;
    QVERIFY(helpToOpen(folder.compiled(), withoutViewer) == folder.html());
}

void HelpOpenerTest::theHtmlOpensInPlaceOfAMissingFile() {
    const HelpFolder folder;
    HelpFolder::remove(folder.compiled());
    QVERIFY(helpToOpen(folder.compiled(), withViewer) == folder.html());
}

void HelpOpenerTest::nothingOpensWhereBothAreMissing() {
    const HelpFolder folder;
    HelpFolder::remove(folder.html());
    QVERIFY(helpToOpen(folder.compiled(), withoutViewer) == std::nullopt);
    HelpFolder::remove(folder.compiled());
    QVERIFY(helpToOpen(folder.compiled(), withViewer) == std::nullopt);
}

void HelpOpenerTest::aFolderIsNoHelpFile() {
    const HelpFolder folder;
    HelpFolder::remove(folder.compiled());
    std::filesystem::create_directory(systemPath(folder.compiled()));
    QVERIFY(helpToOpen(folder.compiled(), withViewer) == folder.html());
}

void HelpOpenerTest::noViewerIsAskedForAMissingFile() {
    const TemporaryFolder folder;
    bool asked = false;
    helpToOpen(folder.file("OR102.chm"), [&asked] { return asked = true; });
    QVERIFY(!asked);
}

void HelpOpenerTest::aViewerIsKnownByEitherNameOfTheType() {
    {
        const FakeDesktop desktop("echo okular.desktop\n");
        QVERIFY(hasCompiledHelpViewer());
    }
    const FakeDesktop desktop(xchmForTheOldName);
    QVERIFY(hasCompiledHelpViewer());
}

void HelpOpenerTest::noViewerIsKnownWithoutADesktop() {
    {
        const FakeDesktop desktop("echo\necho no default >&2\nexit 0\n");
        QVERIFY(!hasCompiledHelpViewer());
    }
    const FakeDesktop desktop("");
    QVERIFY(!hasCompiledHelpViewer());
}

void HelpOpenerTest::theDesktopGetsTheFile() {
    const HelpFolder folder;
    RecordedDesktop recorded;
    SystemHelpOpener opener;
    {
        const FakeDesktop desktop(xchmForTheOldName);
        opener.open(folder.compiled());
    }
    const FakeDesktop desktop("");
    opener.open(folder.compiled());
    HelpFolder::remove(folder.html());
    opener.open(folder.compiled());
    QCOMPARE(recorded.opened, (std::vector<std::string>{folder.compiled(), folder.html()}));
}

void HelpOpenerTest::aPageOpensInTheBrowser() {
    const HelpFolder folder;
    const RecordedDesktop recorded;
    const FakeDesktop desktop(xchmForTheOldName);
    SystemHelpOpener().openPage(folder.compiled(), "index.html");
    QCOMPARE(recorded.opened, std::vector<std::string>{folder.html()});
}

void HelpOpenerTest::theWholeHelpOpensWhereAPageIsMissing() {
    const HelpFolder folder;
    const RecordedDesktop recorded;
    const FakeDesktop desktop(xchmForTheOldName);
    SystemHelpOpener().openPage(folder.compiled(), "system.html");
    QCOMPARE(recorded.opened, std::vector<std::string>{folder.compiled()});
}

QTEST_MAIN(HelpOpenerTest)
#include "HelpOpenerTest.moc"
