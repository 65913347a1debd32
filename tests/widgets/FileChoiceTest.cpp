#include "widgets/FileChoice.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/TemporaryFolder.h"

#include <QDialog>
#include <QFile>
#include <QTest>

using namespace orvista;
using namespace orvista::testing;

class FileChoiceTest : public QObject {
    Q_OBJECT
private slots:
    void keepsNothingInTheUsersSettings() {
#ifdef Q_OS_WIN
        QSKIP("the system's own dialogs keep no file");
#endif
        const TemporaryFolder settings;
        qputenv("XDG_CONFIG_HOME", settings.path().c_str()); // before Qt looks for its settings
        const auto kept = [&settings] {
            return QFile::exists(QString::fromStdString(settings.file("QtProject.conf")));
        };
        cancelADialog();
        QVERIFY(kept()); // what Qt does by itself
        QVERIFY(QFile::remove(QString::fromStdString(settings.file("QtProject.conf"))));
        keepNoDialogSettings();
        cancelADialog();
        QVERIFY(!kept());
    }

private:
    static void cancelADialog() {
        onModal(QStringLiteral("comdlg"), [](QWidget* dialog) { dialog->close(); });
        QVERIFY(!chooseFileToWrite({QStringLiteral("Save"), {QStringLiteral("All files (*)")}, {}}, nullptr));
    }
};

QTEST_MAIN(FileChoiceTest)
#include "FileChoiceTest.moc"
