// The test control as a DLL that COM loads, and its entries in the registry. Regsvr32 gives it the name and
// the type library; DllInstall takes "name" or "library" to give it one of them, and "foreign" for a library
// of another name.
#include "tests/link/dispatch/RecordingControl.h"

#include <new>
#include <string>

namespace {

HINSTANCE module = nullptr;

constexpr GUID controlLibrary = {
    0x9c3fb080, 0x3841, 0x49ca, {0xaa, 0x0a, 0xd2, 0x19, 0x7a, 0xcc, 0x96, 0x4d}};
constexpr GUID foreignLibrary = {
    0xa9aec478, 0x4863, 0x48f7, {0xae, 0x6d, 0xa2, 0xb1, 0x3a, 0x16, 0xbc, 0x8a}};
const std::wstring classText = L"{26008B2B-C4D0-4482-90D8-5A4F2EF9CBC6}";
const std::wstring foreignClassText = L"{3BFF82D5-CCDB-4C98-BCAC-575FB1634B17}";
const std::wstring controlName = L"XORFTLib.xORFT";

class ControlFactory final : public IClassFactory {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IClassFactory);
        *object = known ? static_cast<IClassFactory*>(this) : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    // It lives as long as the DLL.
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        *object = nullptr;
        if (outer)
            return CLASS_E_NOAGGREGATION;
        auto* control = new (std::nothrow) RecordingControl;
        if (!control)
            return E_OUTOFMEMORY;
        const HRESULT result = control->QueryInterface(id, object);
        control->Release();
        return result;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

ControlFactory factory;

std::wstring modulePath() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

/// Machine-wide: Wine looks nowhere else.
LSTATUS setKey(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    return RegSetKeyValueW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + key).c_str(), name, REG_SZ,
                           value.c_str(), static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

void removeKey(const std::wstring& key) {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + key).c_str());
}

HRESULT registerClass(const std::wstring& id) {
    const std::wstring server = L"CLSID\\" + id + L"\\InprocServer32";
    LSTATUS error = setKey(L"CLSID\\" + id, nullptr, L"Transfer control of the tests");
    if (!error)
        error = setKey(server, nullptr, modulePath());
    if (!error)
        error = setKey(server, L"ThreadingModel", L"Apartment");
    return HRESULT_FROM_WIN32(error);
}

HRESULT registerName() {
    LSTATUS error = setKey(controlName, nullptr, L"Transfer control of the tests");
    if (!error)
        error = setKey(controlName + L"\\CLSID", nullptr, classText);
    return HRESULT_FROM_WIN32(error);
}

HRESULT registerLibrary(const std::wstring& file) {
    ITypeLib* library = nullptr;
    const HRESULT result = LoadTypeLibEx(file.c_str(), REGKIND_REGISTER, &library);
    if (SUCCEEDED(result))
        library->Release();
    return result;
}

/// A file of its own beside the DLL: of several libraries inside one, Wine registers the first.
std::wstring foreignLibraryPath() {
    std::wstring path = modulePath();
    return path.replace(path.find_last_of(L'\\') + 1, std::wstring::npos, L"ForeignLibrary.tlb");
}

void unregister() {
    removeKey(controlName);
    for (const std::wstring& id : {classText, foreignClassText})
        removeKey(L"CLSID\\" + id);
    UnRegisterTypeLib(controlLibrary, 1, 0, LOCALE_NEUTRAL, SYS_WIN32);
    UnRegisterTypeLib(foreignLibrary, 9, 0, LOCALE_NEUTRAL, SYS_WIN32);
}

} // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH)
        module = instance;
    return TRUE;
}

// The foreign library's class leads here too, so that taking it by mistake would be seen.
STDAPI DllGetClassObject(REFCLSID, REFIID id, void** object) {
    return factory.QueryInterface(id, object);
}

STDAPI DllCanUnloadNow() {
    return RecordingControl::living() ? S_FALSE : S_OK;
}

STDAPI DllInstall(BOOL install, LPCWSTR way) {
    const std::wstring wanted = way ? way : L"";
    if (!install) {
        unregister();
        return S_OK;
    }
    HRESULT result = registerClass(wanted == L"foreign" ? foreignClassText : classText);
    if (SUCCEEDED(result) && wanted == L"foreign")
        return registerLibrary(foreignLibraryPath());
    if (SUCCEEDED(result) && wanted != L"library")
        result = registerName();
    if (SUCCEEDED(result) && wanted != L"name")
        result = registerLibrary(modulePath());
    return result;
}

STDAPI DllRegisterServer() {
    return DllInstall(TRUE, nullptr);
}

STDAPI DllUnregisterServer() {
    return DllInstall(FALSE, nullptr);
}
}
