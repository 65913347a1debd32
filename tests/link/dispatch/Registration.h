#pragma once

#include "link/dispatch/ControlLookup.h"
#include "model/Files.h"
#include "model/Lines.h"
#include "model/SystemPath.h"

#include <filesystem>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvista::testing {

/// The DLL beside the test with the control in it, and its entries in the registry while the object lives.
class Registration {
public:
    explicit Registration(std::initializer_list<const wchar_t*> ways) {
        if (controlClassByName() || !controlClassesByTypeLibrary().empty())
            throw std::runtime_error("a control is registered on this machine already; it is not touched");
        wchar_t program[MAX_PATH];
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        const auto dll = std::filesystem::path(program).replace_filename(L"orvista_test_control.dll");
        module_ = LoadLibraryW(dll.c_str());
        if (!module_)
            throw std::runtime_error("cannot load the control of the tests");
        for (const wchar_t* way : ways)
            if (FAILED(install()(TRUE, way))) {
                remove();
                throw std::runtime_error("cannot register the control of the tests");
            }
    }
    ~Registration() { remove(); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

private:
    using Install = HRESULT(WINAPI*)(BOOL, LPCWSTR);
    Install install() const {
        return reinterpret_cast<Install>(reinterpret_cast<void*>(GetProcAddress(module_, "DllInstall")));
    }

    void remove() const {
        install()(FALSE, nullptr);
        FreeLibrary(module_);
    }

    HMODULE module_;
};

/// What the control was asked, from its making on, as it wrote it into `log`.
inline std::vector<std::string> recordedLines(const std::string& log) {
    std::vector<std::string> lines;
    if (!std::filesystem::exists(systemPath(log)))
        return lines;
    FileSource source(log);
    LineReader reader(source);
    for (std::string line; reader.next(line);)
        lines.push_back(line);
    return lines;
}

} // namespace orvista::testing
