#include "widgets/PathText.h"
#include "dialogs/FolderContents.h"
#include "tests/support/BoxInput.h"

#include <QLineEdit>

using namespace orvista;
using namespace orvista::testing;

class PathTextTest : public QObject {
    Q_OBJECT
private slots:
    void keepsAnyBytes_data() {
        QTest::addColumn<QByteArray>("path");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("plain") << QByteArray("/plants/Line 3");
        QTest::newRow("several scripts") << QByteArray("/\xC3\x9C/\xE6\xB0\xB4/\xF0\x9F\x98\x80");
        QTest::newRow("single-byte text") << QByteArray("/\xDC"
                                                        "ber");
        QTest::newRow("cut sequence") << QByteArray("/\xE6\xB0");
        QTest::newRow("overlong form") << QByteArray("/\xC0\xAF");
        QTest::newRow("encoded surrogate") << QByteArray("/\xED\xB2\x80");
        QTest::newRow("byte-order mark") << QByteArray("\xEF\xBB\xBF/x");
        QTest::newRow("line end") << QByteArray("/a\r\nb");
        QTest::newRow("every byte") << QByteArray::fromStdString(everyByte());
    }
    void keepsAnyBytes() {
        QFETCH(QByteArray, path);
        const QString shown = shownPath(path.toStdString());
        QCOMPARE(QByteArray::fromStdString(pathFromShown(shown)), path);
        QLineEdit box;
        box.setText(shown);
        QCOMPARE(QByteArray::fromStdString(pathFromShown(box.text())), path);
    }

    void showsTextAsText() {
        QCOMPARE(shownPath("/\xC3\x9C/\xE6\xB0\xB4"), QStringLiteral("/\u00DC/\u6C34"));
    }

    void listsTheFoldersDownToAPath() {
        using Folders = std::vector<std::string>;
        const PathRules rules = PathRules::posix();
        QVERIFY(foldersDownTo(rules, "/a/b c/d/") == Folders({"/", "/a", "/a/b c", "/a/b c/d"}));
        QVERIFY(foldersDownTo(rules, "/") == Folders({"/"}));
        QVERIFY(foldersDownTo(rules, "").empty());
    }

    void dropsTrailingSeparatorsOnly() {
        const PathRules rules = PathRules::posix();
        QCOMPARE(plainFolder(rules, "/a//"), std::string("/a"));
        QCOMPARE(plainFolder(rules, "//"), std::string("/"));
        QCOMPARE(plainFolder(rules, "/"), std::string("/"));
        QCOMPARE(plainFolder(rules, ""), std::string());
        QCOMPARE(plainFolder(rules, "/a\\"), std::string("/a\\"));
    }

    void drivesBeginWithTheRoot() {
        const auto found = drives(PathRules::native());
        QVERIFY(!found.empty());
        QCOMPARE(found.front().root, std::string("/"));
        for (std::size_t i = 1; i < found.size(); ++i)
            QVERIFY(found[i].root != "/");
    }
};

QTEST_MAIN(PathTextTest)
#include "PathTextTest.moc"
