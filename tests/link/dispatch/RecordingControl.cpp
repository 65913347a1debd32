#include "tests/link/dispatch/RecordingControl.h"

#include <cstdio>
#include <filesystem>
#include <span>
#include <sstream>
#include <vector>

namespace {

namespace fs = std::filesystem;

LONG livingObjects = 0;

std::wstring setting(const std::wstring& name) {
    wchar_t value[1024];
    const DWORD length = GetEnvironmentVariableW((L"ORVISTA_TEST_CONTROL_" + name).c_str(), value, 1024);
    return {value, length < 1024 ? length : 0};
}

void record(const std::wstring& line) {
    const std::wstring log = setting(L"LOG");
    if (log.empty())
        return;
    std::FILE* file = _wfopen(log.c_str(), L"ab");
    if (!file)
        return;
    std::vector<char> utf8(line.size() * 3 + 1);
    const int size = WideCharToMultiByte(CP_UTF8, 0, line.data(), static_cast<int>(line.size()), utf8.data(),
                                         static_cast<int>(utf8.size()), nullptr, nullptr);
    utf8[static_cast<std::size_t>(size)] = '\n';
    std::fwrite(utf8.data(), 1, static_cast<std::size_t>(size) + 1, file);
    std::fclose(file);
}

std::wstring textOf(BSTR text) {
    return {text, SysStringLen(text)};
}

std::wstring described(const VARIANT& value) {
    switch (value.vt) {
    case VT_BSTR:
        return L"text \"" + textOf(value.bstrVal) + L'"';
    case VT_BSTR | VT_BYREF:
        return L"text by reference \"" + textOf(*value.pbstrVal) + L'"';
    case VT_I2:
        return L"16-bit " + std::to_wstring(value.iVal);
    default:
        return L"variant of type " + std::to_wstring(value.vt);
    }
}

/// In the order they are written, which is not the order they arrive in.
std::vector<VARIANT*> writtenOrder(const DISPPARAMS& parameters) {
    std::vector<VARIANT*> arguments;
    for (UINT i = parameters.cArgs; i > 0; --i)
        arguments.push_back(&parameters.rgvarg[i - 1]);
    return arguments;
}

void recordCall(DISPID operation, WORD kind, const DISPPARAMS& parameters) {
    std::wostringstream line;
    line << (kind == DISPATCH_PROPERTYPUT ? L"set "
             : kind == DISPATCH_METHOD    ? L"call "
                                          : L"other ")
         << operation;
    const wchar_t* separator = L": ";
    for (const VARIANT* argument : writtenOrder(parameters)) {
        line << separator << described(*argument);
        separator = L", ";
    }
    if (kind == DISPATCH_PROPERTYPUT &&
        (parameters.cNamedArgs != 1 || parameters.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT))
        line << L" without the mark of an assignment";
    record(line.str());
}

/// Takes a text by reference and leaves another one there, as its owner must expect.
std::wstring takeReference(VARIANT& argument) {
    const std::wstring text = textOf(*argument.pbstrVal);
    SysReAllocString(argument.pbstrVal, (text + L" (changed by the control)").c_str());
    return text;
}

bool copyFile(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
    return !error;
}

bool upload(const std::wstring& path) {
    const std::wstring device = setting(L"DEVICE");
    return device.empty() || copyFile(path, fs::path(device) / fs::path(path).filename());
}

bool download(const std::wstring& folder) {
    const std::wstring device = setting(L"DEVICE");
    if (device.empty())
        return true;
    std::error_code error;
    bool complete = true;
    for (const fs::directory_entry& file : fs::directory_iterator(device, error))
        complete = copyFile(file.path(), fs::path(folder) / file.path().filename()) && complete;
    return complete && !error;
}

/// What the operation does to the device, and its result where no variable sets another.
bool perform(DISPID operation, const DISPPARAMS& parameters) {
    const auto arguments = writtenOrder(parameters);
    if (arguments.empty() || arguments.back()->vt != (VT_BSTR | VT_BYREF))
        return true;
    const std::wstring path = takeReference(*arguments.back());
    return operation == 10 ? upload(path) : operation == 9 ? download(path) : true;
}

HRESULT describeFailure(EXCEPINFO* exception) {
    if (exception) {
        exception->wCode = 1001;
        exception->bstrSource = SysAllocString(L"test control");
        exception->bstrDescription = SysAllocString(L"failure on request");
    }
    return DISP_E_EXCEPTION;
}

/// Fills `result` from KIND:VALUE.
HRESULT requestedResult(const std::wstring& request, VARIANT& result, EXCEPINFO* exception) {
    static SHORT referenced = 0;
    const auto colon = request.find(L':');
    const std::wstring kind = request.substr(0, colon);
    const std::wstring value = colon == std::wstring::npos ? L"" : request.substr(colon + 1);
    const double number = std::wcstod(value.c_str(), nullptr);
    if (kind == L"FAIL")
        return E_FAIL;
    if (kind == L"EXCEPTION")
        return describeFailure(exception);
    if (kind == L"I2")
        result.vt = VT_I2, result.iVal = static_cast<SHORT>(number);
    else if (kind == L"I4")
        result.vt = VT_I4, result.lVal = static_cast<LONG>(number);
    else if (kind == L"UI4")
        result.vt = VT_UI4, result.ulVal = static_cast<ULONG>(number);
    else if (kind == L"R8")
        result.vt = VT_R8, result.dblVal = number;
    else if (kind == L"BOOL")
        result.vt = VT_BOOL, result.boolVal = static_cast<VARIANT_BOOL>(number);
    else if (kind == L"TEXT")
        result.vt = VT_BSTR, result.bstrVal = SysAllocString(value.c_str());
    else if (kind == L"NULL")
        result.vt = VT_NULL;
    else if (kind == L"REFERENCE")
        referenced = static_cast<SHORT>(number), result.vt = VT_I2 | VT_BYREF, result.piVal = &referenced;
    return S_OK;
}

} // namespace

RecordingControl::RecordingControl() {
    InterlockedIncrement(&livingObjects);
    record(L"created");
}

RecordingControl::~RecordingControl() {
    InterlockedDecrement(&livingObjects);
    record(L"released");
}

LONG RecordingControl::living() {
    return livingObjects;
}

STDMETHODIMP RecordingControl::QueryInterface(REFIID id, void** object) {
    if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch))
        *object = static_cast<IDispatch*>(this);
    else if (IsEqualIID(id, IID_IPersistStreamInit))
        *object = static_cast<IPersistStreamInit*>(this);
    else {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) RecordingControl::AddRef() {
    return static_cast<ULONG>(InterlockedIncrement(&references_));
}

STDMETHODIMP_(ULONG) RecordingControl::Release() {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0)
        delete this;
    return static_cast<ULONG>(left);
}

STDMETHODIMP RecordingControl::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

STDMETHODIMP RecordingControl::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    *info = nullptr;
    return DISP_E_BADINDEX;
}

// The operations are called by number; a name is never asked for.
STDMETHODIMP RecordingControl::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    record(L"asked for a name");
    return DISP_E_UNKNOWNNAME;
}

STDMETHODIMP RecordingControl::Invoke(DISPID operation, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                      VARIANT* result, EXCEPINFO* exception, UINT*) {
    recordCall(operation, kind, *parameters);
    const bool done = perform(operation, *parameters);
    VARIANT ignored{};
    VARIANT& answer = result ? *result : ignored;
    const std::wstring request = setting(L"RESULT_" + std::to_wstring(operation));
    if (request.empty()) {
        answer.vt = VT_I2;
        answer.iVal = done ? 1 : 0;
    }
    const HRESULT outcome = requestedResult(request, answer, exception);
    VariantClear(&ignored);
    return outcome;
}

STDMETHODIMP RecordingControl::GetClassID(CLSID* id) {
    *id = testControlClass;
    return S_OK;
}

STDMETHODIMP RecordingControl::InitNew() {
    record(L"initialized");
    return S_OK;
}
