#include "link/ftp/FtpLink.h"

#include "link/TransferCause.h"
#include "link/ftp/FtpCause.h"
#include "model/Bytes.h"

#include <algorithm>
#include <exception>
#include <system_error>
#include <utility>

namespace orvista {

namespace {

/// Before it opens a data connection the library waits for nothing that could be seen to come; left to itself
/// it goes on after a second, asked once more mostly at once.
constexpr int pollMilliseconds = 1;
/// While it waits for the device it is woken at once. In between only silence, and that all is to end, are
/// looked for.
constexpr int watchMilliseconds = 10;

/// Every byte that could mean something in an address is escaped; the bytes themselves arrive in the command.
std::string escapedForUrl(const std::string& name) {
    static constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        text.append({'%', digits[byte >> 4], digits[byte & 0xF]});
    }
    return text;
}

/// No exception may pass through the library, which is written in C.
std::size_t readFromSource(char* buffer, std::size_t size, std::size_t count, void* source) {
    try {
        return static_cast<ByteSource*>(source)->read(buffer, size * count);
    } catch (const std::exception&) {
        return CURL_READFUNC_ABORT;
    }
}

std::size_t handToReceiver(char* bytes, std::size_t size, std::size_t count, void* receiver) {
    try {
        const auto& receive = *static_cast<const FtpLink::Receiver*>(receiver);
        // Fewer bytes than were given make the library end the transfer.
        return receive({bytes, size * count}) ? size * count : 0;
    } catch (const std::exception&) {
        return 0;
    }
}

} // namespace

FtpLink::FtpLink(std::unique_ptr<const CurlLibrary> library, Server server, TransferWatch::Clock clock,
                 EndCondition isToEnd)
    : curl_(std::move(library)),
      server_(std::move(server)),
      clock_(std::move(clock)),
      isToEnd_(std::move(isToEnd)),
      watch_(clock_(), server_.timeout),
      url_(curl_->urlInit(), curl_->urlCleanup),
      multi_(curl_->multiInit(), curl_->multiCleanup),
      handle_(curl_->easyInit(), curl_->easyCleanup) {
    if (!url_ || !multi_ || !handle_ || !setServer())
        return;
    prepare({});
    set(CURLOPT_NOBODY, 1L);
    open_ = perform();
}

FtpLink::~FtpLink() = default;

bool FtpLink::command(std::string_view line) {
    prepare({});
    set(CURLOPT_NOBODY, 1L);
    // The asterisk makes a refusal count as success.
    const std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> commands{
        curl_->listAppend(nullptr, ("*" + std::string(line)).c_str()), curl_->listFree};
    set(CURLOPT_QUOTE, commands.get());
    return commands && perform();
}

bool FtpLink::store(const std::string& remoteName, ByteSource& source) {
    prepare(remoteName);
    set(CURLOPT_UPLOAD, 1L);
    set(CURLOPT_READFUNCTION, &readFromSource);
    set(CURLOPT_READDATA, static_cast<void*>(&source));
    return perform();
}

bool FtpLink::fetch(const std::string& remoteName, std::int64_t sizeLimit, ByteSink& sink) {
    std::int64_t rest = sizeLimit;
    // A server may give no size beforehand, or a wrong one.
    const Receiver receiver = [&](std::string_view bytes) {
        rest -= static_cast<std::int64_t>(bytes.size());
        return rest < 0 ? refuse(causeTooLong) : takeInto(sink, bytes);
    };
    prepare(remoteName);
    set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(sizeLimit));
    set(CURLOPT_SOCKOPTFUNCTION, &FtpLink::noteDataConnection);
    set(CURLOPT_SOCKOPTDATA, static_cast<void*>(this));
    set(CURLOPT_WRITEFUNCTION, &handToReceiver);
    set(CURLOPT_WRITEDATA, static_cast<const void*>(&receiver));
    return perform();
}

bool FtpLink::takeInto(ByteSink& sink, std::string_view bytes) {
    try {
        sink.write(bytes);
        return true;
    } catch (const std::system_error& failure) {
        return refuse("it cannot be written here: " + failure.code().message());
    }
}

/// What arrives. The display may then have more than it told of, which is not the cause.
bool FtpLink::refuse(std::string_view cause) {
    givenUpCause_ = cause;
    return false;
}

bool FtpLink::list(const Receiver& receiver) {
    prepare({});
    set(CURLOPT_DIRLISTONLY, 1L);
    set(CURLOPT_WRITEFUNCTION, &handToReceiver);
    set(CURLOPT_WRITEDATA, static_cast<const void*>(&receiver));
    return perform();
}

std::size_t FtpLink::noteAnswer(char* bytes, std::size_t size, std::size_t count, void* link) {
    auto& self = *static_cast<FtpLink*>(link);
    self.watch_.noteAnswer(self.clock_());
    std::string_view line(bytes, size * count);
    line = line.substr(0, std::min(line.find_last_not_of("\r\n") + 1, line.size()));
    if (isFtpReply(line))
        self.lastReply_ = line;
    else if (self.lastReply_.empty() && !self.open_ && !line.empty() &&
             (line.front() < '0' || line.front() > '9'))
        self.hasStrangeLine_ = true; // no greeting, nor the beginning of a long one
    return size * count;
}

int FtpLink::noteDataConnection(void* link, curl_socket_t socket, curlsocktype) {
    static_cast<FtpLink*>(link)->dataEnd_.noteOpened(socket);
    return CURL_SOCKOPT_OK;
}

int FtpLink::closeConnection(void* link, curl_socket_t socket) {
    static_cast<FtpLink*>(link)->dataEnd_.close(socket);
    return 0;
}

/// The library would quietly connect and log in again when the device hangs up between two files. A link that
/// broke stays broken, so only the connection that was opened first is accepted.
int FtpLink::acceptConnection(void* link, char*, char*, int, int localPort) {
    auto& self = *static_cast<FtpLink*>(link);
    if (self.localPort_ == 0)
        self.localPort_ = localPort;
    self.isReconnect_ = self.localPort_ != localPort;
    return self.isReconnect_ ? CURL_PREREQFUNC_ABORT : CURL_PREREQFUNC_OK;
}

void FtpLink::prepare(const std::string& remoteName) {
    // Keeps the connection.
    curl_->easyReset(handle_.get());
    const std::string path = "/" + escapedForUrl(remoteName);
    usable_ = curl_->urlSet(url_.get(), CURLUPART_PATH, path.c_str(), 0) == CURLUE_OK;
    set(CURLOPT_CURLU, url_.get());
    set(CURLOPT_PROTOCOLS_STR, "ftp");
    set(CURLOPT_PROXY, ""); // none from the environment either
    set(CURLOPT_USERNAME, server_.user.c_str());
    set(CURLOPT_PASSWORD, server_.password.c_str());
    const auto seconds = static_cast<long>(server_.timeout.count());
    set(CURLOPT_CONNECTTIMEOUT, seconds);
    set(CURLOPT_SERVER_RESPONSE_TIMEOUT, seconds);
    set(CURLOPT_HEADERFUNCTION, &FtpLink::noteAnswer);
    set(CURLOPT_HEADERDATA, static_cast<void*>(this));
    set(CURLOPT_NOSIGNAL, 1L);
    // Files lie where the login lands; data comes from the machine that was asked and from no other.
    set(CURLOPT_FTP_FILEMETHOD, static_cast<long>(CURLFTPMETHOD_NOCWD));
    set(CURLOPT_FTP_SKIP_PASV_IP, 1L);
    set(CURLOPT_CLOSESOCKETFUNCTION, &FtpLink::closeConnection);
    set(CURLOPT_CLOSESOCKETDATA, static_cast<void*>(this));
    set(CURLOPT_PREREQFUNCTION, &FtpLink::acceptConnection);
    set(CURLOPT_PREREQDATA, static_cast<void*>(this));
}

bool FtpLink::setServer() {
    const bool isNumericV6 = server_.host.find(':') != std::string::npos;
    const std::string host = isNumericV6 ? "[" + server_.host + "]" : server_.host;
    const std::string port = std::to_string(server_.port);
    return curl_->urlSet(url_.get(), CURLUPART_SCHEME, "ftp", 0) == CURLUE_OK &&
           curl_->urlSet(url_.get(), CURLUPART_HOST, host.c_str(), 0) == CURLUE_OK &&
           curl_->urlSet(url_.get(), CURLUPART_PORT, port.c_str(), 0) == CURLUE_OK;
}

bool FtpLink::perform() {
    code_ = CURLE_OK;
    lastReply_.clear();
    givenUpCause_.clear();
    cause_.clear();
    if (!usable_ || curl_->multiAddHandle(multi_.get(), handle_.get()) != CURLM_OK)
        return false;
    watch_ = TransferWatch(clock_(), server_.timeout);
    idle_ = false;
    const bool done = runToItsEnd();
    if (!done)
        cause_ = causeOfFailure();
    // Closes the connection of a transfer that was given up, without a farewell nobody would answer.
    curl_->multiRemoveHandle(multi_.get(), handle_.get());
    dataEnd_.clear();
    return done;
}

bool FtpLink::runToItsEnd() {
    for (int running = 1;;) {
        if (curl_->multiPerform(multi_.get(), &running) != CURLM_OK || hasMoreThanToldOf())
            return false;
        if (running == 0)
            break;
        if (isGivenUp() || !waitForMore())
            return false;
    }
    int others = 0;
    const CURLMsg* const end = curl_->multiInfoRead(multi_.get(), &others);
    code_ = end ? end->data.result : CURLE_OK;
    return end && code_ == CURLE_OK && seesEndOfData();
}

bool FtpLink::waitForMore() {
    fd_set reading;
    fd_set writing;
    fd_set failing;
    FD_ZERO(&reading);
    FD_ZERO(&writing);
    FD_ZERO(&failing);
    int highest = -1;
    const bool known =
        curl_->multiWatched(multi_.get(), &reading, &writing, &failing, &highest) == CURLM_OK && highest >= 0;
    const bool wasIdle = std::exchange(idle_, !known);
    const int milliseconds = known ? watchMilliseconds : wasIdle ? pollMilliseconds : 0;
    return curl_->multiPoll(multi_.get(), nullptr, 0, milliseconds, nullptr) == CURLM_OK;
}

/// The device may say that all is sent before the last of it is here.
bool FtpLink::seesEndOfData() {
    while (dataEnd_.isAwaited()) {
        if (isGivenUp())
            return false;
        dataEnd_.wait(pollMilliseconds);
        if (hasMoreThanToldOf())
            return false;
    }
    return true;
}

bool FtpLink::hasMoreThanToldOf() {
    if (!dataEnd_.hasMore())
        return false;
    if (givenUpCause_.empty())
        givenUpCause_ = "it is longer than the display said";
    return true;
}

bool FtpLink::isGivenUp() {
    if (isToEnd_ && isToEnd_()) {
        givenUpCause_ = "interrupted";
        return true;
    }
    // Connecting and logging in have a limit of their own, and so has each answer.
    const TransferWatch::Time now = clock_();
    if (!open_ || !watch_.isOver(now, movedBytes()))
        return false;
    givenUpCause_ = watch_.isSilent(now) ? silenceCause(server_.timeout) : "less than 1 KB in 30 s";
    return true;
}

std::string FtpLink::causeOfFailure() {
    if (!givenUpCause_.empty())
        return givenUpCause_;
    long error = 0;
    curl_->easyGetInfo(handle_.get(), CURLINFO_OS_ERRNO, &error);
    return ftpCause({code_, !open_, isReconnect_, hasStrangeLine_, error, lastReply_, server_.timeout});
}

std::int64_t FtpLink::movedBytes() const {
    const auto bytes = [this](CURLINFO direction) {
        curl_off_t moved{};
        curl_->easyGetInfo(handle_.get(), direction, &moved);
        return moved;
    };
    return bytes(CURLINFO_SIZE_UPLOAD_T) + bytes(CURLINFO_SIZE_DOWNLOAD_T);
}

} // namespace orvista
