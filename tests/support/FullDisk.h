#pragma once

#include <csignal>

#include <sys/resource.h>

namespace orvista::testing {

/// While it stands no file takes more bytes than that, as on a disk that is full.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit less{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &less);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before_{};
    void (*handler_)(int);
};

} // namespace orvista::testing
