#include "link/dispatch/ControlLookup.h"

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <utility>

namespace orvista {

namespace {

constexpr std::size_t point = transferControlName.find(L'.');
constexpr std::wstring_view libraryName = transferControlName.substr(0, point);
constexpr std::wstring_view className = transferControlName.substr(point + 1);

class RegistryKey {
public:
    RegistryKey(HKEY parent, const std::wstring& name) {
        if (RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ, &key_) != ERROR_SUCCESS)
            key_ = nullptr;
    }
    ~RegistryKey() {
        if (key_)
            RegCloseKey(key_);
    }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    HKEY get() const { return key_; }

    std::vector<std::wstring> subkeys() const {
        std::vector<std::wstring> names;
        wchar_t name[256]; // no key's name is longer
        DWORD size = std::size(name);
        for (DWORD i = 0;
             key_ && RegEnumKeyExW(key_, i, name, &size, nullptr, nullptr, nullptr, nullptr) == 0;
             ++i, size = std::size(name))
            names.emplace_back(name, size);
        return names;
    }

    std::wstring text(const std::wstring& subkey) const {
        constexpr DWORD kinds = RRF_RT_REG_SZ; // texts with variables in them count, and arrive expanded
        DWORD bytes = 0;
        if (!key_ ||
            RegGetValueW(key_, subkey.c_str(), nullptr, kinds, nullptr, nullptr, &bytes) != ERROR_SUCCESS)
            return {};
        std::wstring value(bytes / sizeof(wchar_t), L'\0');
        if (RegGetValueW(key_, subkey.c_str(), nullptr, kinds, nullptr, value.data(), &bytes) !=
            ERROR_SUCCESS)
            return {};
        value.resize(std::wcslen(value.c_str()));
        return value;
    }

private:
    HKEY key_ = nullptr;
};

/// A class of the name we look for, and the version of the library that names it.
struct FoundClass {
    WORD major;
    WORD minor;
    CLSID id;
};

bool sameName(const OLECHAR* name, std::wstring_view wanted) {
    return name &&
           CompareStringOrdinal(name, -1, wanted.data(), static_cast<int>(wanted.size()), TRUE) == CSTR_EQUAL;
}

/// The name of one member of a library, or of the library itself for `index` -1.
ComText documentedName(ITypeLib& library, int index) {
    BSTR name = nullptr;
    library.GetDocumentation(index, &name, nullptr, nullptr, nullptr);
    return ComText(name);
}

std::optional<CLSID> typeId(ITypeLib& library, UINT index) {
    ITypeInfo* opened = nullptr;
    if (FAILED(library.GetTypeInfo(index, &opened)))
        return std::nullopt;
    const ComPointer<ITypeInfo> info(opened);
    TYPEATTR* attributes = nullptr;
    if (FAILED(info->GetTypeAttr(&attributes)))
        return std::nullopt;
    const CLSID id = attributes->guid;
    info->ReleaseTypeAttr(attributes);
    return id;
}

void collectClasses(const std::wstring& file, std::vector<FoundClass>& found) {
    ITypeLib* opened = nullptr;
    if (FAILED(LoadTypeLibEx(file.c_str(), REGKIND_NONE, &opened)))
        return;
    const ComPointer<ITypeLib> library(opened);
    TLIBATTR* attributes = nullptr;
    if (!sameName(documentedName(*library, -1).get(), libraryName) ||
        FAILED(library->GetLibAttr(&attributes)))
        return;
    const WORD major = attributes->wMajorVerNum;
    const WORD minor = attributes->wMinorVerNum;
    library->ReleaseTLibAttr(attributes);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        TYPEKIND kind{};
        if (FAILED(library->GetTypeInfoType(i, &kind)) || kind != TKIND_COCLASS ||
            !sameName(documentedName(*library, static_cast<int>(i)).get(), className))
            continue;
        if (const auto id = typeId(*library, i))
            found.push_back({major, minor, *id});
    }
}

} // namespace

std::optional<CLSID> controlClassByName() {
    CLSID id{};
    if (FAILED(CLSIDFromProgID(std::wstring(transferControlName).c_str(), &id)))
        return std::nullopt;
    return id;
}

std::vector<CLSID> controlClassesByTypeLibrary() {
    // TypeLib\{library}\version\language\platform
    const std::wstring platform = sizeof(void*) == 4 ? L"\\win32" : L"\\win64";
    std::vector<FoundClass> found;
    const RegistryKey libraries(HKEY_CLASSES_ROOT, L"TypeLib");
    for (const std::wstring& id : libraries.subkeys()) {
        const RegistryKey library(libraries.get(), id);
        for (const std::wstring& version : library.subkeys()) {
            const RegistryKey languages(library.get(), version);
            for (const std::wstring& language : languages.subkeys())
                if (const std::wstring file = languages.text(language + platform); !file.empty())
                    collectClasses(file, found);
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const FoundClass& one, const FoundClass& other) {
        return std::pair(one.major, one.minor) > std::pair(other.major, other.minor);
    });
    std::vector<CLSID> classes(found.size());
    std::transform(found.begin(), found.end(), classes.begin(),
                   [](const FoundClass& match) { return match.id; });
    return classes;
}

} // namespace orvista
