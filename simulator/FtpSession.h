#pragma once

#include "simulator/DeviceFolder.h"
#include "simulator/Faults.h"
#include "simulator/FtpCommands.h"
#include "simulator/FtpDataChannel.h"
#include "simulator/RequestRecord.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

namespace orvista {

/// One client of the file service. Commands are taken one after the other: those that arrive during a
/// transfer wait for its end.
class FtpSession final : public QObject {
    Q_OBJECT

public:
    /// Takes over the connection.
    FtpSession(QTcpSocket* control, const DeviceFolder& folder, const Faults& faults, QObject* parent);

    void greet();

signals:
    void logged(const orvista::RequestRecord& record);
    /// The client said that its upload is complete.
    void uploadFinished();
    void closed();

private:
    using Action = void (FtpSession::*)(const std::string& argument);
    enum class Needs { Nothing, Login };
    struct Entry {
        std::string_view verb;
        Needs needs;
        Action action;
    };
    static const Entry* entryOf(std::string_view verb);

    void receive();
    void takeLines();
    void perform(const QByteArray& line);

    void user(const std::string& argument);
    void pass(const std::string& argument);
    void quit(const std::string& argument);
    void feat(const std::string& argument);
    void syst(const std::string& argument);
    void noop(const std::string& argument);
    void type(const std::string& argument);
    void structure(const std::string& argument);
    void mode(const std::string& argument);
    void pwd(const std::string& argument);
    void cwd(const std::string& argument);
    void pasv(const std::string& argument);
    void epsv(const std::string& argument);
    void list(const std::string& argument);
    void nlst(const std::string& argument);
    void mlsd(const std::string& argument);
    void size(const std::string& argument);
    void mdtm(const std::string& argument);
    void retr(const std::string& argument);
    void stor(const std::string& argument);
    void dele(const std::string& argument);
    void site(const std::string& argument);
    void abor(const std::string& argument);
    void activeMode(const std::string& argument);

    bool openChannel();
    void sendListing(const std::string& argument, std::string (*line)(const ListedFile&));
    void send(const QByteArray& bytes, FtpDataChannel::Course course);
    void store(const std::string& name);
    /// Stores what came, unless the client is gone.
    void keep(const std::string& name);
    /// The way the next file goes, after the fault that is asked for.
    FtpDataChannel::Course courseOfNextFile();
    bool refusesNextFile() const;
    bool hasChannel();
    void endTransfer(int code, const char* text);
    void drop();

    void reply(int code, const std::string& text);
    void replyRaw(const std::string& text);
    void log(const QByteArray& bytes, const QString& words);

    QPointer<QTcpSocket> control_;
    const DeviceFolder& folder_;
    const Faults& faults_;
    QString peer_;
    QByteArray received_;
    QTimer idle_;
    QPointer<FtpDataChannel> channel_;
    std::string user_;
    bool loggedIn_ = false;
    bool transferring_ = false;
    bool stalled_ = false;
    int filesBegun_ = 0;
};

} // namespace orvista
