#include "link/ftp/CurlLibrary.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace orvista {

namespace {

#ifdef _WIN32
using LibraryHandle = HMODULE;

/// Beside the program, where the package has it, and nowhere that others may write.
LibraryHandle openLibrary() {
    return LoadLibraryExW(L"libcurl.dll", nullptr,
                          LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
}

template <typename Function>
bool find(LibraryHandle library, const char* name, Function& function) {
    // Through a plain pointer, for the compiler knows the real type no better than we do.
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    return function != nullptr;
}
#else
using LibraryHandle = void*;

/// The name of the interface that the headers describe. What has once been opened stays: the libraries below
/// it leave threads and handlers behind that would outlive them.
LibraryHandle openLibrary() {
    return dlopen("libcurl.so.4", RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
}

template <typename Function>
bool find(LibraryHandle library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}
#endif

} // namespace

std::unique_ptr<const CurlLibrary> CurlLibrary::open() {
    std::unique_ptr<const CurlLibrary> library(new CurlLibrary);
    return library->ready_ ? std::move(library) : nullptr;
}

CurlLibrary::CurlLibrary() {
    const LibraryHandle library = openLibrary();
    if (!library)
        return;
    const bool complete =
        find(library, "curl_global_init", globalInit_) &&
        find(library, "curl_global_cleanup", globalCleanup_) && find(library, "curl_easy_init", easyInit) &&
        find(library, "curl_easy_cleanup", easyCleanup) && find(library, "curl_easy_reset", easyReset) &&
        find(library, "curl_easy_setopt", easySetOption) && find(library, "curl_easy_getinfo", easyGetInfo) &&
        find(library, "curl_multi_init", multiInit) && find(library, "curl_multi_cleanup", multiCleanup) &&
        find(library, "curl_multi_add_handle", multiAddHandle) &&
        find(library, "curl_multi_remove_handle", multiRemoveHandle) &&
        find(library, "curl_multi_perform", multiPerform) &&
        find(library, "curl_multi_fdset", multiWatched) && find(library, "curl_multi_poll", multiPoll) &&
        find(library, "curl_multi_info_read", multiInfoRead) &&
        find(library, "curl_slist_append", listAppend) && find(library, "curl_slist_free_all", listFree) &&
        find(library, "curl_url", urlInit) && find(library, "curl_url_cleanup", urlCleanup) &&
        find(library, "curl_url_set", urlSet);
    ready_ = complete && globalInit_(CURL_GLOBAL_DEFAULT) == CURLE_OK;
}

CurlLibrary::~CurlLibrary() {
    if (ready_)
        globalCleanup_();
}

} // namespace orvista
