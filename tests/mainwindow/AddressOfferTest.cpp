#include "link/TransferCommands.h"
#include "mainwindow/PanelDock.h"
#include "tests/support/EditorFixture.h"

#include <QLabel>
#include <QPushButton>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// A download that has come from there; a cancelled one without an address.
class DownloadFrom final : public TransferCommands {
public:
    explicit DownloadFrom(const std::string& source) : source_(source) {}
    void upload() override {}
    FetchedDisplay download() override {
        if (source_.empty())
            return {};
        return {FetchedDisplay::End::Fetched, source_ + ":7000", {}, source_};
    }
    FetchedDisplay fetch(const std::string&, const std::string&) override { return {}; }

private:
    std::string source_;
};

/// The editor after a download of a project whose System page has the address of a new project.
struct Downloaded : EditorFixture {
    explicit Downloaded(const std::string& source) : transfer(source) {
        startWithNewProject();
        trigger("miFileSave"); // so that its files are there
        window->useTransfer(transfer);
        trigger("miLinkDownload");
    }
    QString line() const {
        const auto* const label = window->findChild<QLabel*>(QStringLiteral("lblUseAddress"));
        return label && label->isVisible() ? label->text() : QString();
    }
    DownloadFrom transfer;
};

} // namespace

class AddressOfferTest : public QObject {
    Q_OBJECT
private slots:
    void theAddressOfTheDisplayIsOffered();
    void useTypesItIntoItsBox();
    void theSameAddressIsNotOffered();
    void aDownloadWithoutADisplayOffersNothing();
    void goesWithTheAddressAndWithTheProject();
};

void AddressOfferTest::theAddressOfTheDisplayIsOffered() {
    const Downloaded editor("127.0.8.11");
    QCOMPARE(editor.line(), QStringLiteral("Downloaded from 127.0.8.11; the System page says 192.168.1.100"));
    QCOMPARE(editor.find<QPushButton>("btnUseAddress")->text(), QStringLiteral("Use 127.0.8.11"));
    QCOMPARE(editor.project.IP, std::string("192.168.1.100"));
}

void AddressOfferTest::useTypesItIntoItsBox() {
    Downloaded editor(" 127.0.8.11 ");
    QVERIFY(!editor.line().isEmpty());
    editor.click("btnUseAddress");
    QCOMPARE(editor.text("txtSystemIP"), QStringLiteral("127.0.8.11"));
    QCOMPARE(editor.project.IP, std::string("127.0.8.11"));
    QVERIFY(editor.project.modified);
    QCOMPARE(editor.line(), QString());
    QVERIFY(!editor.find<PanelDock>("dockPanels")->isVisible());
}

void AddressOfferTest::theSameAddressIsNotOffered() {
    const Downloaded editor("192.168.1.100");
    QCOMPARE(editor.line(), QString());
}

void AddressOfferTest::aDownloadWithoutADisplayOffersNothing() {
    const Downloaded editor("");
    QCOMPARE(editor.line(), QString());
}

void AddressOfferTest::goesWithTheAddressAndWithTheProject() {
    Downloaded editor("127.0.8.11");
    editor.showPage("C1");
    editor.type("txtSystemIP", QStringLiteral("127.0.0.1"));
    QCOMPARE(editor.line(), QString());
    editor.trigger("miLinkDownload");
    QVERIFY(!editor.line().isEmpty());
    editor.messages.answers.push_back(Answer::No);
    editor.newProject("Line4");
    QCOMPARE(editor.line(), QString());
}

QTEST_MAIN(AddressOfferTest)
#include "AddressOfferTest.moc"
