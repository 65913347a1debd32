#include "simulator/FtpService.h"

#include "simulator/FtpDataChannel.h"
#include "simulator/Sockets.h"
#include "tests/simulator/Flood.h"
#include "tests/support/SimulatorProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>
#include <memory>

namespace orvista {

namespace {

using testing::floods;

/// A client that speaks line by line.
class Conversation {
public:
    explicit Conversation(quint16 port) { socket_.connectToHost(QHostAddress::LocalHost, port); }

    /// The next reply's last line; empty when none comes or the connection ends.
    QString reply(int milliseconds = 5'000) {
        QString line;
        do {
            const auto hasCome = [this] {
                return socket_.canReadLine() || socket_.state() == QAbstractSocket::UnconnectedState;
            };
            const bool came = QTest::qWaitFor(hasCome, milliseconds);
            if (!came || !socket_.canReadLine())
                return {};
            line = QString::fromLatin1(socket_.readLine()).trimmed();
        } while (line.size() < 4 || line[3] != ' ' || !line[0].isDigit());
        return line;
    }
    QString say(const QByteArray& line) {
        socket_.write(line + "\r\n");
        return reply();
    }
    bool logIn() {
        return reply().startsWith("220") && say("USER admin").startsWith("331") &&
               say("PASS ").startsWith("230");
    }
    /// Opens a data connection by EPSV.
    bool openData(QTcpSocket& data) {
        const QString opened = say("EPSV");
        const auto match = QRegularExpression(R"(\(\|\|\|(\d+)\|\)$)").match(opened);
        data.connectToHost(QHostAddress::LocalHost, match.captured(1).toUShort());
        return match.hasMatch() &&
               QTest::qWaitFor([&] { return data.state() == QAbstractSocket::ConnectedState; });
    }
    QTcpSocket& socket() { return socket_; }

private:
    QTcpSocket socket_;
};

QByteArray allOf(QTcpSocket& data) {
    if (!QTest::qWaitFor([&] { return data.state() == QAbstractSocket::UnconnectedState; }))
        return "STILL OPEN";
    return data.readAll();
}

} // namespace

class FtpServiceTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        root_ = std::make_unique<testing::TemporaryFolder>();
        folder_ = std::make_unique<DeviceFolder>(root_->path());
        faults_ = {};
        service_ = std::make_unique<FtpService>(*folder_, faults_);
        QVERIFY(service_->start(QHostAddress::LocalHost, 0));
    }
    void cleanup() { service_.reset(); }

    void knowsTheDevicesAccountAndGuests() {
        Conversation admin(service_->port());
        QVERIFY(admin.logIn());
        Conversation guest(service_->port());
        QVERIFY(guest.reply().startsWith("220"));
        QVERIFY(guest.say("PWD").startsWith("530"));
        QVERIFY(guest.say("USER admin").startsWith("331"));
        QVERIFY(guest.say("PASS wrong").startsWith("530"));
        QVERIFY(guest.say("STOR x").startsWith("530"));
        QVERIFY(guest.say("USER anonymous").startsWith("331"));
        QVERIFY(guest.say("PASS ftp@example.com").startsWith("230"));
        QCOMPARE(guest.say("PWD"), "257 \"/\" is the only folder");
        QVERIFY(guest.say("USER nobody").startsWith("331"));
        QVERIFY(guest.say("PWD").startsWith("530"));
    }

    void answersEveryCommandOfASession() {
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        const QList<std::pair<QByteArray, QString>> table{{"noop", "200"},
                                                          {"SYST", "215"},
                                                          {"FEAT", "211"},
                                                          {"TYPE I", "200"},
                                                          {"TYPE A", "200"},
                                                          {"TYPE E", "504"},
                                                          {"STRU F", "200"},
                                                          {"STRU R", "504"},
                                                          {"MODE S", "200"},
                                                          {"MODE B", "504"},
                                                          {"CWD /", "250"},
                                                          {"CWD ..", "550"},
                                                          {"CWD sub", "550"},
                                                          {"CDUP", "200"},
                                                          {"PASV", "227"},
                                                          {"EPSV", "229"},
                                                          {"EPSV ALL", "200"},
                                                          {"SIZE no", "550"},
                                                          {"MDTM no", "550"},
                                                          {"RETR no", "550"},
                                                          {"DELE no", "550"},
                                                          {"STOR ../x", "553"},
                                                          {"SITE X", "504"},
                                                          {"ABOR", "226"},
                                                          {"PORT 1,2", "502"},
                                                          {"MKD x", "502"},
                                                          {"RETR ../x", "550"},
                                                          {"", "500"},
                                                          {"\x01\x02", "500"},
                                                          {"SITE UPLOAD BEGIN", "200"},
                                                          {"site upload end", "200"},
                                                          {"QUIT", "221"}};
        for (const auto& [command, code] : table)
            QVERIFY2(client.say(command).startsWith(code), command.constData());
        QTRY_COMPARE(client.socket().state(), QAbstractSocket::UnconnectedState);
    }

    void asksForADataConnectionFirst() {
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        for (const char* command : {"LIST", "NLST", "MLSD", "STOR x", "RETR x"})
            QVERIFY2(client.say(command).startsWith("425"), command);
    }

    void storesWhenTheDataEnds() {
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        QTcpSocket data;
        QVERIFY(client.openData(data));
        QVERIFY(client.say("STOR caf\xE9 1%.bmp").startsWith("150"));
        const QByteArray bytes(300'000, '\xAB');
        data.write(bytes);
        QVERIFY(!std::filesystem::exists(root_->file("café 1%.bmp")));
        data.disconnectFromHost();
        QVERIFY(client.reply().startsWith("226"));
        QCOMPARE(QByteArray::fromStdString(testing::fileBytes(root_->file("café 1%.bmp"))), bytes);
    }

    void keepsTheOldFileWhenTheClientVanishes() {
        testing::writeBytes(root_->file("a"), "old");
        {
            Conversation client(service_->port());
            QVERIFY(client.logIn());
            QTcpSocket data;
            QVERIFY(client.openData(data));
            QVERIFY(client.say("STOR a").startsWith("150"));
            data.write("ne");
            QTRY_COMPARE(data.bytesToWrite(), 0);
            client.socket().abort();
            data.abort();
        }
        Conversation next(service_->port());
        QVERIFY(next.logIn());
        QVERIFY(next.say("SIZE a").startsWith("213 3"));
        QCOMPARE(testing::fileBytes(root_->file("a")), "old");
    }

    void takesCommandsThatCameDuringATransferAfterIt() {
        testing::writeBytes(root_->file("a"), "12345");
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        QTcpSocket data;
        QVERIFY(client.openData(data));
        client.socket().write("RETR a\r\nSIZE a\r\nNOOP\r\n");
        QVERIFY(client.reply().startsWith("150"));
        QVERIFY(client.reply().startsWith("226"));
        QCOMPARE(client.reply(), "213 5");
        QVERIFY(client.reply().startsWith("200"));
        QCOMPARE(allOf(data), "12345");
    }

    void takesDataThatCameBeforeTheCommand() {
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        QTcpSocket data;
        QVERIFY(client.openData(data));
        data.write("early");
        data.disconnectFromHost();
        QTRY_COMPARE(data.state(), QAbstractSocket::UnconnectedState);
        QVERIFY(client.say("STOR a").startsWith("150"));
        QVERIFY(client.reply().startsWith("226"));
        QCOMPARE(testing::fileBytes(root_->file("a")), "early");
    }

    void lists() {
        testing::writeBytes(root_->file("b"), "12");
        testing::writeBytes(root_->file("a"), "");
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        QTcpSocket data;
        QVERIFY(client.openData(data));
        QVERIFY(client.say("NLST").startsWith("150"));
        QCOMPARE(allOf(data), "a\r\nb\r\n");
        QVERIFY(client.reply().startsWith("226"));
        QTcpSocket one;
        QVERIFY(client.openData(one));
        QVERIFY(client.say("LIST b").startsWith("150"));
        QVERIFY(allOf(one).startsWith("-rw-r--r-- 1 admin admin 2 "));
    }

    void survivesNoise() {
        Conversation client(service_->port());
        QVERIFY(client.reply().startsWith("220"));
        client.socket().write(QByteArray(100'000, 'x'));
        QTRY_COMPARE(client.socket().state(), QAbstractSocket::UnconnectedState);
        Conversation longLine(service_->port());
        QVERIFY(longLine.reply().startsWith("220"));
        QVERIFY(longLine.say("USER " + QByteArray(5000, 'x')).startsWith("500"));
        QVERIFY(longLine.say("NOOP").startsWith("200"));
    }

    void dropsAClientThatLeavesItsAnswersUnread() {
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        client.socket().setReadBufferSize(1);
        QVERIFY(floods(client.socket(), QByteArray("FEAT\r\n").repeated(1000)));
        QVERIFY(Conversation(service_->port()).logIn());
    }

    void keepsNothingOfDataThatNobodyAskedFor() {
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        QTcpSocket data;
        QVERIFY(client.openData(data));
        const QByteArray bytes(40'000'000, 'B');
        data.write(bytes);
        data.disconnectFromHost();
        const auto* const kept = service_->findChild<FtpDataChannel*>();
        QVERIFY(kept);
        const auto* const connection = kept->findChild<QTcpSocket*>();
        QVERIFY(connection);
        QTRY_COMPARE(connection->bytesAvailable(), connection->readBufferSize());
        QVERIFY(connection->readBufferSize() > 0);
        QVERIFY(client.say("STOR a").startsWith("150"));
        QVERIFY(client.reply().startsWith("226"));
        QCOMPARE(folder_->find("a")->size, static_cast<std::uintmax_t>(bytes.size()));
    }

    void aClientThatIsGoneInMidFileStoresNothing() {
        for (int attempt = 0; attempt < 20; ++attempt) {
            Conversation client(service_->port());
            QVERIFY(client.logIn());
            QTcpSocket data;
            QVERIFY(client.openData(data));
            QVERIFY(client.say("STOR half").startsWith("150"));
            data.write("half of the file");
            QVERIFY(data.flush());
            // As the system ends them for a program that was killed.
            client.socket().abort();
            data.abort();
        }
        Conversation next(service_->port());
        QVERIFY(next.logIn());
        QVERIFY(store(next, "whole").startsWith("226"));
        QCOMPARE(folder_->list().size(), 1U);
    }

    void aDataConnectionThatIsResetStoresNothing() {
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        QTcpSocket data;
        QVERIFY(client.openData(data));
        QVERIFY(client.say("STOR half").startsWith("150"));
        data.write("half of the file");
        QVERIFY(data.flush());
        resetConnection(data);
        QVERIFY(client.reply().startsWith("426"));
        QCOMPARE(folder_->list().size(), 0U);
        QVERIFY(store(client, "whole").startsWith("226"));
    }

    void takes64MegabytesAndNotAByteMore() {
        constexpr qsizetype longest = qsizetype{64} << 20;
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        QVERIFY(store(client, "longest", QByteArray(longest, '\0')).startsWith("226"));
        QCOMPARE(folder_->find("longest")->size, static_cast<std::uintmax_t>(longest));
        QVERIFY(store(client, "too long", QByteArray(longest + 1, '\0')).startsWith("426"));
        QVERIFY(!folder_->find("too long"));
    }

    void aClientThatLeavesInMidFileIsToldSo() {
        QVERIFY(folder_->store("large", std::string(std::size_t{20} << 20, 'x')));
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        QTcpSocket data;
        QVERIFY(client.openData(data));
        QVERIFY(client.say("RETR large").startsWith("150"));
        QTRY_VERIFY(data.bytesAvailable() > 0);
        data.abort();
        QVERIFY(client.reply().startsWith("426"));
        QVERIFY(store(client, "after").startsWith("226"));
    }

    void turnsAwayTooManyClients() {
        std::vector<std::unique_ptr<Conversation>> clients;
        for (int count = 0; count < 8; ++count) {
            clients.push_back(std::make_unique<Conversation>(service_->port()));
            QVERIFY(clients.back()->logIn());
        }
        Conversation ninth(service_->port());
        QVERIFY(ninth.reply().startsWith("421"));
        clients.pop_back();
        QTRY_VERIFY(Conversation(service_->port()).reply().startsWith("220"));
    }

    void tellsWhenAnUploadIsComplete() {
        const QSignalSpy finished(service_.get(), &FtpService::uploadFinished);
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        QVERIFY(client.say("SITE UPLOAD BEGIN").startsWith("200"));
        QCOMPARE(finished.count(), 0);
        QVERIFY(client.say("SITE UPLOAD END").startsWith("200"));
        QCOMPARE(finished.count(), 1);
    }

    void failsAtTheFileAskedFor_data() {
        QTest::addColumn<int>("how");
        QTest::addColumn<QString>("ending");
        QTest::newRow("refuse") << static_cast<int>(TransferFault::Refuse) << "452";
        QTest::newRow("hang up") << static_cast<int>(TransferFault::HangUp) << "";
    }
    void failsAtTheFileAskedFor() {
        QFETCH(int, how);
        QFETCH(QString, ending);
        faults_.failingFile = 2;
        faults_.transfer = static_cast<TransferFault>(how);
        for (int session = 0; session < 2; ++session) {
            Conversation client(service_->port());
            QVERIFY(client.logIn());
            QVERIFY(store(client, "first").startsWith("226"));
            const QString result = store(client, "second");
            QVERIFY2(ending.isEmpty() ? result.isEmpty() : result.startsWith(ending), qPrintable(result));
        }
        QCOMPARE(folder_->list().size(), 1U);
    }

    void fallsSilentInTheMiddleOfAFile() {
        testing::writeBytes(root_->file("a"), std::string(1000, 'a'));
        faults_.failingFile = 1;
        faults_.transfer = TransferFault::Stall;
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        QTcpSocket data;
        QVERIFY(client.openData(data));
        QVERIFY(client.say("RETR a").startsWith("150"));
        QTRY_COMPARE(data.bytesAvailable(), 500);
        client.socket().write("NOOP\r\n");
        // Another client is served meanwhile; when it has been, the first would have had its answer.
        Conversation other(service_->port());
        QVERIFY(other.logIn());
        QCOMPARE(client.socket().bytesAvailable(), 0);
        QCOMPARE(data.state(), QAbstractSocket::ConnectedState);
        QCOMPARE(data.bytesAvailable(), 500);
    }

    void hangsUpInTheMiddleOfAFetchedFile() {
        testing::writeBytes(root_->file("a"), std::string(1000, 'a'));
        faults_.failingFile = 1;
        faults_.transfer = TransferFault::HangUp;
        Conversation client(service_->port());
        QVERIFY(client.logIn());
        QTcpSocket data;
        QVERIFY(client.openData(data));
        QVERIFY(client.say("RETR a").startsWith("150"));
        QVERIFY(client.reply().isEmpty());
        QVERIFY(allOf(data).size() <= 500);
    }

    void satisfiesPython() {
        const testing::TemporaryFolder source;
        testing::writeBytes(source.file("modbus.adr"), "AnalogInput    100\r\n");
        testing::writeBytes(source.file("pump house 100% #1.bmp"), std::string("BM\0\xFF", 4));
        testing::writeBytes(source.file("é.bmp"), std::string(1'000'000, 'x'));
        testing::writeBytes(source.file("empty"), "");
        const QString output =
            testing::outputOf("/usr/bin/python3", {ORVISTA_FTP_JUDGE, QString::number(service_->port()),
                                                   QString::fromStdString(source.path())});
        QCOMPARE(output, "empty\nmodbus.adr\npump house 100% #1.bmp\né.bmp\n"
                         "empty 0\nmodbus.adr 20\npump house 100% #1.bmp 4\né.bmp 1000000\n"
                         "3\n");
    }

    void satisfiesCurl() {
        testing::writeBytes(root_->file("stdmsg.ilm"), "DEFMSG STDMSG1\r\n");
        const testing::TemporaryFolder source;
        testing::writeBytes(source.file("large.bmp"), std::string(20'000'000, 'B'));
        const QString url = QStringLiteral("ftp://127.0.0.1:%1/").arg(service_->port());
        QCOMPARE(testing::outputOf("curl", {"-sS", "--noproxy", "*", url + "stdmsg.ilm"}),
                 "DEFMSG STDMSG1\r\n");
        QCOMPARE(testing::outputOf("curl", {"-sS", "--noproxy", "*", "--user", "admin:", "--disable-epsv",
                                            "-T", QString::fromStdString(source.file("large.bmp")),
                                            url + "caf%E9%20x.bmp"}),
                 "");
        QCOMPARE(folder_->find("caf\xE9 x.bmp")->size, 20'000'000U);
        QVERIFY(testing::outputOf("curl", {"-sS", "--noproxy", "*", url + "none"}).startsWith("FAILED 78"));
        QVERIFY(testing::outputOf("curl", {"-sS", "--noproxy", "*", url + "%2Fetc/passwd"})
                    .startsWith("FAILED 9"));
        QVERIFY(testing::outputOf("curl", {"-sS", "--noproxy", "*", "--user", "admin:x", url})
                    .startsWith("FAILED 67"));
    }

private:
    /// The last reply, empty when the connection ended.
    static QString store(Conversation& client, const QByteArray& name,
                         const QByteArray& bytes = "some bytes") {
        QTcpSocket data;
        if (!client.openData(data))
            return "no data connection";
        const QString begun = client.say("STOR " + name);
        if (!begun.startsWith("150"))
            return begun;
        data.write(bytes);
        data.disconnectFromHost();
        constexpr int longFileMilliseconds = 60'000;
        return client.reply(longFileMilliseconds);
    }

    std::unique_ptr<testing::TemporaryFolder> root_;
    std::unique_ptr<DeviceFolder> folder_;
    Faults faults_;
    std::unique_ptr<FtpService> service_;
};

} // namespace orvista

QTEST_GUILESS_MAIN(orvista::FtpServiceTest)
#include "FtpServiceTest.moc"
