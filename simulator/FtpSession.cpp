#include "simulator/FtpSession.h"

#include "link/ftp/FtpTransferControl.h"
#include "model/Text.h"
#include "model/Windows1252.h"
#include "simulator/Sockets.h"

#include <algorithm>
#include <array>

namespace orvista {

namespace {

constexpr int idleMilliseconds = 300'000;

// A client that is killed in mid-file ends its data as that of a whole file ends, and its control connection
// a moment after that.
constexpr int partingMilliseconds = 5;

constexpr const char* adminUser = "admin";
constexpr const char* anonymousUser = "anonymous";

QByteArray bytesOf(const std::string& text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

QString shown(const std::string& text) {
    return QString::fromStdString(utf8FromWindows1252(text));
}

std::string nameLine(const ListedFile& file) {
    return file.name + "\r\n";
}

} // namespace

FtpSession::FtpSession(QTcpSocket* control, const DeviceFolder& folder, const Faults& faults, QObject* parent)
    : QObject(parent), control_(control), folder_(folder), faults_(faults), peer_(peerText(*control)) {
    control_->setParent(this);
    // Replies are short and waited for: held back to fill a packet, each would cost the client 40 ms.
    control_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    idle_.setSingleShot(true);
    idle_.setInterval(idleMilliseconds);
    connect(&idle_, &QTimer::timeout, this, &FtpSession::drop);
    connect(control_, &QTcpSocket::readyRead, this, &FtpSession::receive);
    connect(control_, &QTcpSocket::disconnected, this, &FtpSession::closed);
}

void FtpSession::greet() {
    idle_.start();
    reply(220, "LX-400D file service");
    receive();
}

const FtpSession::Entry* FtpSession::entryOf(std::string_view verb) {
    static constexpr std::array<Entry, 30> entries{{
        {"USER", Needs::Nothing, &FtpSession::user},     {"PASS", Needs::Nothing, &FtpSession::pass},
        {"QUIT", Needs::Nothing, &FtpSession::quit},     {"FEAT", Needs::Nothing, &FtpSession::feat},
        {"SYST", Needs::Nothing, &FtpSession::syst},     {"NOOP", Needs::Nothing, &FtpSession::noop},
        {"TYPE", Needs::Login, &FtpSession::type},       {"STRU", Needs::Login, &FtpSession::structure},
        {"MODE", Needs::Login, &FtpSession::mode},       {"PWD", Needs::Login, &FtpSession::pwd},
        {"XPWD", Needs::Login, &FtpSession::pwd},        {"CWD", Needs::Login, &FtpSession::cwd},
        {"XCWD", Needs::Login, &FtpSession::cwd},        {"CDUP", Needs::Login, &FtpSession::noop},
        {"PASV", Needs::Login, &FtpSession::pasv},       {"EPSV", Needs::Login, &FtpSession::epsv},
        {"LIST", Needs::Login, &FtpSession::list},       {"NLST", Needs::Login, &FtpSession::nlst},
        {"MLSD", Needs::Login, &FtpSession::mlsd},       {"SIZE", Needs::Login, &FtpSession::size},
        {"MDTM", Needs::Login, &FtpSession::mdtm},       {"RETR", Needs::Login, &FtpSession::retr},
        {"STOR", Needs::Login, &FtpSession::stor},       {"DELE", Needs::Login, &FtpSession::dele},
        {"SITE", Needs::Login, &FtpSession::site},       {"ABOR", Needs::Login, &FtpSession::abor},
        {"PORT", Needs::Login, &FtpSession::activeMode}, {"EPRT", Needs::Login, &FtpSession::activeMode},
        {"ALLO", Needs::Login, &FtpSession::noop},       {"ACCT", Needs::Login, &FtpSession::noop},
    }};
    const auto* const found = std::find_if(entries.begin(), entries.end(),
                                           [verb](const Entry& entry) { return entry.verb == verb; });
    return found == entries.end() ? nullptr : found;
}

void FtpSession::receive() {
    idle_.start();
    received_ += control_->readAll();
    takeLines();
}

void FtpSession::takeLines() {
    while (!transferring_ && !stalled_ && control_ && control_->state() == QAbstractSocket::ConnectedState &&
           !clientIgnoresReplies(*control_)) {
        const qsizetype end = received_.indexOf('\n');
        if (end < 0)
            break;
        QByteArray line = received_.left(end);
        received_.remove(0, end + 1);
        if (line.endsWith('\r'))
            line.chop(1);
        perform(line);
    }
    // A client that talks on without waiting, or without ever ending its line, is not worth its memory.
    if (received_.size() > 64 * static_cast<qsizetype>(longestFtpLine) ||
        (control_ && clientIgnoresReplies(*control_)))
        drop();
}

void FtpSession::perform(const QByteArray& line) {
    const bool tooLong = line.size() > static_cast<qsizetype>(longestFtpLine);
    const FtpCommand command =
        tooLong ? FtpCommand() : parseFtpCommand({line.constData(), static_cast<std::size_t>(line.size())});
    log(command.verb == "PASS" ? QByteArrayLiteral("PASS") : line.left(longestFtpLine),
        shown(describeFtpCommand(command)));
    const Entry* entry = entryOf(command.verb);
    if (entry == nullptr)
        reply(command.verb.empty() ? 500 : 502, "Command not known");
    else if (entry->needs == Needs::Login && !loggedIn_)
        reply(530, "Not logged in");
    else
        (this->*entry->action)(command.argument);
}

void FtpSession::user(const std::string& argument) {
    user_ = argument;
    loggedIn_ = false;
    reply(331, "Password, please");
}

void FtpSession::pass(const std::string& argument) {
    loggedIn_ = (user_ == adminUser && argument.empty()) || user_ == anonymousUser;
    if (loggedIn_)
        reply(230, "Logged in");
    else
        reply(530, "Not the device's account");
}

void FtpSession::quit(const std::string&) {
    reply(221, "Goodbye");
    control_->disconnectFromHost();
}

void FtpSession::feat(const std::string&) {
    replyRaw("211-Features:\r\n EPSV\r\n MDTM\r\n MLSD type*;size*;modify*;\r\n PASV\r\n SIZE\r\n " +
             std::string(uploadBeginsCommand) + "\r\n " + std::string(uploadEndsCommand) + "\r\n211 End\r\n");
}

void FtpSession::syst(const std::string&) {
    reply(215, "UNIX Type: L8");
}

void FtpSession::noop(const std::string&) {
    reply(200, "Done");
}

void FtpSession::type(const std::string& argument) {
    const std::string kind = upperAscii(argument.substr(0, 1));
    // Files are bytes, whatever the client calls them: the device's texts have CR LF already.
    if (kind == "I" || kind == "A" || upperAscii(argument) == "L 8")
        reply(200, "Done; files are sent as they are");
    else
        reply(504, "Only types A and I");
}

void FtpSession::structure(const std::string& argument) {
    if (upperAscii(argument) == "F")
        reply(200, "Done");
    else
        reply(504, "Files only");
}

void FtpSession::mode(const std::string& argument) {
    if (upperAscii(argument) == "S")
        reply(200, "Done");
    else
        reply(504, "Streams only");
}

void FtpSession::pwd(const std::string&) {
    reply(257, "\"/\" is the only folder");
}

void FtpSession::cwd(const std::string& argument) {
    if (namesRootFolder(argument))
        reply(250, "Done");
    else
        reply(550, "There is no such folder");
}

bool FtpSession::openChannel() {
    delete channel_;
    channel_ = new FtpDataChannel(control_->localAddress(), control_->peerAddress(), this);
    if (channel_->port() != 0)
        return true;
    delete channel_;
    reply(425, "No port is free");
    return false;
}

void FtpSession::pasv(const std::string&) {
    bool isIpv4 = false;
    const quint32 address = control_->localAddress().toIPv4Address(&isIpv4);
    if (!isIpv4)
        reply(425, "Use EPSV");
    else if (openChannel())
        replyRaw(passiveReply(address, channel_->port()) + "\r\n");
}

void FtpSession::epsv(const std::string& argument) {
    if (equalsIgnoringCase(argument, "ALL"))
        reply(200, "Done");
    else if (openChannel())
        replyRaw(extendedPassiveReply(channel_->port()) + "\r\n");
}

void FtpSession::activeMode(const std::string&) {
    reply(502, "Only passive transfers");
}

bool FtpSession::hasChannel() {
    if (channel_)
        return true;
    reply(425, "Use PASV or EPSV first");
    return false;
}

void FtpSession::sendListing(const std::string& argument, std::string (*line)(const ListedFile&)) {
    std::string lines;
    // Clients give LIST options such as "-a"; there is nothing to choose.
    if (namesRootFolder(argument) || argument.front() == '-') {
        for (const ListedFile& file : folder_.list())
            lines += line(file);
    } else if (const std::optional<std::string> name = deviceFileName(argument)) {
        if (const std::optional<ListedFile> file = folder_.find(*name))
            lines = line(*file);
    }
    if (hasChannel())
        send(bytesOf(lines), FtpDataChannel::Course::Whole);
}

void FtpSession::list(const std::string& argument) {
    sendListing(argument, longListLine);
}

void FtpSession::nlst(const std::string& argument) {
    sendListing(argument, nameLine);
}

void FtpSession::mlsd(const std::string& argument) {
    sendListing(argument, factListLine);
}

void FtpSession::size(const std::string& argument) {
    const std::optional<std::string> name = deviceFileName(argument);
    const std::optional<ListedFile> file = name ? folder_.find(*name) : std::nullopt;
    if (file)
        reply(213, std::to_string(file->size));
    else
        reply(550, "There is no such file");
}

void FtpSession::mdtm(const std::string& argument) {
    const std::optional<std::string> name = deviceFileName(argument);
    const std::optional<ListedFile> file = name ? folder_.find(*name) : std::nullopt;
    if (file)
        reply(213, ftpTime(file->modified));
    else
        reply(550, "There is no such file");
}

bool FtpSession::refusesNextFile() const {
    return filesBegun_ + 1 == faults_.failingFile && faults_.transfer == TransferFault::Refuse;
}

FtpDataChannel::Course FtpSession::courseOfNextFile() {
    if (++filesBegun_ != faults_.failingFile)
        return FtpDataChannel::Course::Whole;
    switch (faults_.transfer) {
    case TransferFault::HangUp:
        return FtpDataChannel::Course::DropHalfWay;
    case TransferFault::Stall:
        return FtpDataChannel::Course::StallHalfWay;
    default:
        return FtpDataChannel::Course::Whole;
    }
}

void FtpSession::retr(const std::string& argument) {
    if (!hasChannel())
        return;
    const std::optional<std::string> name = deviceFileName(argument);
    const std::optional<std::string> bytes = name ? folder_.read(*name) : std::nullopt;
    if (!bytes) {
        reply(550, "There is no such file");
    } else if (refusesNextFile()) {
        ++filesBegun_;
        reply(451, "The file cannot be read");
    } else {
        send(bytesOf(*bytes), courseOfNextFile());
    }
}

void FtpSession::send(const QByteArray& bytes, FtpDataChannel::Course course) {
    transferring_ = true;
    reply(150, "Here it comes");
    connect(channel_, &FtpDataChannel::finished, this, [this] { endTransfer(226, "Complete"); });
    connect(channel_, &FtpDataChannel::failed, this, [this] { endTransfer(426, "Transfer broken off"); });
    connect(channel_, &FtpDataChannel::dropped, this, [this, course] {
        stalled_ = true;
        if (course == FtpDataChannel::Course::DropHalfWay)
            drop();
    });
    channel_->send(bytes, course);
}

void FtpSession::stor(const std::string& argument) {
    if (!hasChannel())
        return;
    const std::optional<std::string> name = deviceFileName(argument);
    if (!name) {
        reply(553, "Such a name cannot be stored");
    } else if (refusesNextFile()) {
        ++filesBegun_;
        reply(452, "No space left on the device");
    } else {
        store(*name);
    }
}

void FtpSession::store(const std::string& name) {
    transferring_ = true;
    reply(150, "Send it");
    const FtpDataChannel::Course course = courseOfNextFile();
    connect(channel_, &FtpDataChannel::finished, this,
            [this, name] { QTimer::singleShot(partingMilliseconds, this, [this, name] { keep(name); }); });
    connect(channel_, &FtpDataChannel::failed, this, [this] { endTransfer(426, "Transfer broken off"); });
    connect(channel_, &FtpDataChannel::dropped, this, [this, course] {
        stalled_ = true;
        if (course == FtpDataChannel::Course::DropHalfWay)
            drop();
    });
    channel_->collect(static_cast<qsizetype>(largestDeviceFile), course);
}

void FtpSession::keep(const std::string& name) {
    if (control_)
        control_->waitForReadyRead(0);
    if (!channel_ || !control_ || control_->state() != QAbstractSocket::ConnectedState)
        return;
    const QByteArray bytes = channel_->collected();
    if (folder_.store(name, {bytes.constData(), static_cast<std::size_t>(bytes.size())})) {
        log({}, tr("Stored %1, %2 bytes").arg(shown(name)).arg(bytes.size()));
        endTransfer(226, "Stored");
    } else {
        endTransfer(552, "The file could not be stored");
    }
}

void FtpSession::endTransfer(int code, const char* text) {
    transferring_ = false;
    if (channel_) {
        channel_->disconnect(this);
        channel_->deleteLater();
        channel_ = nullptr;
    }
    reply(code, text);
    idle_.start();
    // Not from here: this is often called from inside the loop over the lines.
    QTimer::singleShot(0, this, &FtpSession::takeLines);
}

void FtpSession::dele(const std::string& argument) {
    const std::optional<std::string> name = deviceFileName(argument);
    if (name && folder_.remove(*name))
        reply(250, "Deleted");
    else
        reply(550, "There is no such file");
}

void FtpSession::site(const std::string& argument) {
    const std::string command = "SITE " + argument;
    if (equalsIgnoringCase(command, uploadBeginsCommand)) {
        reply(200, "Ready for the files");
    } else if (equalsIgnoringCase(command, uploadEndsCommand)) {
        emit uploadFinished();
        reply(200, "The files are shown");
    } else {
        reply(504, "The device knows of uploads only");
    }
}

void FtpSession::abor(const std::string&) {
    reply(226, "Nothing to abort");
}

void FtpSession::drop() {
    log({}, tr("Connection dropped"));
    if (channel_)
        channel_->deleteLater();
    if (control_)
        control_->abort();
}

void FtpSession::reply(int code, const std::string& text) {
    if (code >= 400)
        log({}, QStringLiteral("%1 %2").arg(code).arg(shown(text)));
    replyRaw(std::to_string(code) + " " + text + "\r\n");
}

void FtpSession::replyRaw(const std::string& text) {
    if (control_ && control_->state() == QAbstractSocket::ConnectedState)
        control_->write(text.data(), static_cast<qint64>(text.size()));
}

void FtpSession::log(const QByteArray& bytes, const QString& words) {
    emit logged({QDateTime::currentDateTime(), peer_, bytes, words});
}

} // namespace orvista
