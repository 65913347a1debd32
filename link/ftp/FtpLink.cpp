#include "link/ftp/FtpLink.h"

#include <exception>
#include <utility>

namespace orvista {

namespace {

/// Every byte that could mean something in an address is escaped; the bytes themselves arrive in the command.
std::string escaped(const std::string& name) {
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

FtpLink::FtpLink(Server server) : server_(std::move(server)) {
    if (!url_ || !handle_)
        return;
    prepare({});
    set(CURLOPT_NOBODY, 1L);
    open_ = perform();
}

bool FtpLink::command(std::string_view line) {
    prepare({});
    set(CURLOPT_NOBODY, 1L);
    // The asterisk makes a refusal count as success.
    const std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> commands{
        curl_slist_append(nullptr, ("*" + std::string(line)).c_str()), &curl_slist_free_all};
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
        if (rest < 0)
            return false;
        sink.write(bytes);
        return true;
    };
    prepare(remoteName);
    set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(sizeLimit));
    set(CURLOPT_WRITEFUNCTION, &handToReceiver);
    set(CURLOPT_WRITEDATA, static_cast<const void*>(&receiver));
    return perform();
}

bool FtpLink::list(const Receiver& receiver) {
    prepare({});
    set(CURLOPT_DIRLISTONLY, 1L);
    set(CURLOPT_WRITEFUNCTION, &handToReceiver);
    set(CURLOPT_WRITEDATA, static_cast<const void*>(&receiver));
    return perform();
}

std::size_t FtpLink::noteAnswer(char*, std::size_t size, std::size_t count, void* link) {
    static_cast<FtpLink*>(link)->lastHeard_ = Clock::now();
    return size * count;
}

/// The library's own limits count anew in each step of ending a broken transfer: the file, its confirmation
/// and the farewell. Connecting and logging in have a limit of their own.
int FtpLink::endAtSilence(void* link, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent) {
    auto& self = *static_cast<FtpLink*>(link);
    if (self.moved_ != received + sent) {
        self.moved_ = received + sent;
        self.lastHeard_ = Clock::now();
    }
    return self.open_ && Clock::now() - self.lastHeard_ >= self.server_.patience ? 1 : 0;
}

/// The library would quietly connect and log in anew when the device hangs up between two files. A link that
/// broke stays broken, so only the connection that was opened first is accepted.
int FtpLink::acceptConnection(void* link, char*, char*, int, int localPort) {
    auto& self = *static_cast<FtpLink*>(link);
    if (self.localPort_ == 0)
        self.localPort_ = localPort;
    return self.localPort_ == localPort ? CURL_PREREQFUNC_OK : CURL_PREREQFUNC_ABORT;
}

void FtpLink::prepare(const std::string& remoteName) {
    // Keeps the connection.
    curl_easy_reset(handle_.get());
    usable_ = setUrl(remoteName);
    set(CURLOPT_CURLU, url_.get());
    set(CURLOPT_PROTOCOLS_STR, "ftp");
    set(CURLOPT_PROXY, ""); // none from the environment either
    set(CURLOPT_USERNAME, server_.user.c_str());
    set(CURLOPT_PASSWORD, server_.password.c_str());
    const auto seconds = static_cast<long>(server_.patience.count());
    set(CURLOPT_CONNECTTIMEOUT, seconds);
    set(CURLOPT_SERVER_RESPONSE_TIMEOUT, seconds);
    set(CURLOPT_HEADERFUNCTION, &FtpLink::noteAnswer);
    set(CURLOPT_HEADERDATA, static_cast<void*>(this));
    set(CURLOPT_XFERINFOFUNCTION, &FtpLink::endAtSilence);
    set(CURLOPT_XFERINFODATA, static_cast<void*>(this));
    set(CURLOPT_NOPROGRESS, 0L);
    set(CURLOPT_NOSIGNAL, 1L);
    // Files lie where the login lands; data comes from the machine that was asked and from no other.
    set(CURLOPT_FTP_FILEMETHOD, static_cast<long>(CURLFTPMETHOD_NOCWD));
    set(CURLOPT_FTP_SKIP_PASV_IP, 1L);
    set(CURLOPT_PREREQFUNCTION, &FtpLink::acceptConnection);
    set(CURLOPT_PREREQDATA, static_cast<void*>(this));
}

bool FtpLink::setUrl(const std::string& remoteName) {
    const bool isNumericV6 = server_.host.find(':') != std::string::npos;
    const std::string host = isNumericV6 ? "[" + server_.host + "]" : server_.host;
    const std::string port = std::to_string(server_.port);
    const std::string path = "/" + escaped(remoteName);
    return curl_url_set(url_.get(), CURLUPART_SCHEME, "ftp", 0) == CURLUE_OK &&
           curl_url_set(url_.get(), CURLUPART_HOST, host.c_str(), 0) == CURLUE_OK &&
           curl_url_set(url_.get(), CURLUPART_PORT, port.c_str(), 0) == CURLUE_OK &&
           curl_url_set(url_.get(), CURLUPART_PATH, path.c_str(), 0) == CURLUE_OK;
}

bool FtpLink::perform() {
    moved_ = 0;
    lastHeard_ = Clock::now();
    return usable_ && curl_easy_perform(handle_.get()) == CURLE_OK;
}

} // namespace orvista
