#pragma once

#include <curl/curl.h>

#include <memory>

namespace orvista {

/// libcurl's functions. The library is opened when the first link needs it: with the eighteen others that it
/// brings it would take a good part of every start. It stays open until the program ends.
class CurlLibrary {
public:
    /// Null where libcurl is missing or too old to have them all.
    static std::unique_ptr<const CurlLibrary> open();
    ~CurlLibrary();
    CurlLibrary(const CurlLibrary&) = delete;
    CurlLibrary& operator=(const CurlLibrary&) = delete;

    decltype(&curl_easy_init) easyInit = nullptr;
    decltype(&curl_easy_cleanup) easyCleanup = nullptr;
    decltype(&curl_easy_reset) easyReset = nullptr;
    decltype(&curl_easy_setopt) easySetOption = nullptr;
    decltype(&curl_easy_getinfo) easyGetInfo = nullptr;
    decltype(&curl_multi_init) multiInit = nullptr;
    decltype(&curl_multi_cleanup) multiCleanup = nullptr;
    decltype(&curl_multi_add_handle) multiAddHandle = nullptr;
    decltype(&curl_multi_remove_handle) multiRemoveHandle = nullptr;
    decltype(&curl_multi_perform) multiPerform = nullptr;
    decltype(&curl_multi_fdset) multiWatched = nullptr;
    decltype(&curl_multi_poll) multiPoll = nullptr;
    decltype(&curl_multi_info_read) multiInfoRead = nullptr;
    decltype(&curl_slist_append) listAppend = nullptr;
    decltype(&curl_slist_free_all) listFree = nullptr;
    decltype(&curl_url) urlInit = nullptr;
    decltype(&curl_url_cleanup) urlCleanup = nullptr;
    decltype(&curl_url_set) urlSet = nullptr;

private:
    CurlLibrary();

    decltype(&curl_global_init) globalInit_ = nullptr;
    decltype(&curl_global_cleanup) globalCleanup_ = nullptr;
    bool ready_ = false;
};

} // namespace orvista
