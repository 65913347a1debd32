#include "link/dispatch/DispatchTransferControl.h"

#include "link/dispatch/ControlLookup.h"

#include <ocidl.h>

#include <array>

namespace orvista {

namespace {

/// The numbers the control gives its operations.
enum Operation : DISPID {
    remoteAddress = 1,
    remotePort = 2,
    openLink = 5,
    closeLink = 6,
    finishUpload = 7,
    prepareUpload = 8,
    downloadFiles = 9,
    uploadFile = 10,
};

VARIANT argument(BSTR text) {
    VARIANT value{};
    value.vt = VT_BSTR;
    value.bstrVal = text;
    return value;
}

VARIANT argument(BSTR* text) {
    VARIANT value{};
    value.vt = VT_BSTR | VT_BYREF;
    value.pbstrVal = text;
    return value;
}

VARIANT argument(std::int16_t number) {
    VARIANT value{};
    value.vt = VT_I2;
    value.iVal = number;
    return value;
}

/// A text the control may replace while it holds the reference.
class TextByReference {
public:
    explicit TextByReference(const std::string& utf8) : text_(comText(wideText(utf8)).release()) {}
    ~TextByReference() { SysFreeString(text_); }
    TextByReference(const TextByReference&) = delete;
    TextByReference& operator=(const TextByReference&) = delete;
    VARIANT argument() { return orvista::argument(&text_); }

private:
    BSTR text_;
};

ComPointer<IDispatch> createControl(const CLSID& id) {
    void* created = nullptr;
    if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &created)))
        return {};
    ComPointer<IDispatch> control(static_cast<IDispatch*>(created));
    void* offered = nullptr;
    if (SUCCEEDED(control->QueryInterface(IID_IPersistStreamInit, &offered))) {
        const ComPointer<IPersistStreamInit> persistence(static_cast<IPersistStreamInit*>(offered));
        persistence->InitNew();
    }
    return control;
}

ComPointer<IDispatch> findControl() {
    if (const auto id = controlClassByName())
        if (auto control = createControl(*id))
            return control;
    for (const CLSID& id : controlClassesByTypeLibrary())
        if (auto control = createControl(id))
            return control;
    return {};
}

void freeTexts(const EXCEPINFO& exception) {
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
}

} // namespace

std::unique_ptr<DispatchTransferControl> DispatchTransferControl::create() {
    auto instance = std::make_unique<Instance>();
    instance->control = findControl();
    if (!instance->control)
        return {};
    return std::unique_ptr<DispatchTransferControl>(new DispatchTransferControl(std::move(instance)));
}

void DispatchTransferControl::RemoteAddress(const std::string& address) {
    const ComText text = comText(wideText(address));
    addressTaken_ = set(remoteAddress, argument(text.get()));
}

void DispatchTransferControl::RemotePort(std::int16_t port) {
    portTaken_ = set(remotePort, argument(port));
}

std::int64_t DispatchTransferControl::OpenLink() {
    return addressTaken_ && portTaken_ ? ask(openLink, {}) : 0;
}

void DispatchTransferControl::CloseLink() {
    invoke(closeLink, DISPATCH_METHOD, {}, nullptr);
}

void DispatchTransferControl::PrepareUpload(const std::string& text) {
    const ComText owned = comText(wideText(text));
    std::array arguments{argument(owned.get())};
    invoke(prepareUpload, DISPATCH_METHOD, arguments, nullptr);
}

void DispatchTransferControl::FinishUpload() {
    invoke(finishUpload, DISPATCH_METHOD, {}, nullptr);
}

std::int64_t DispatchTransferControl::UploadFile(const std::string& path) {
    TextByReference text(path);
    std::array arguments{text.argument()};
    return ask(uploadFile, arguments);
}

std::int64_t DispatchTransferControl::DownloadFiles(const std::string& text, const std::string& folder) {
    const ComText first = comText(wideText(text));
    TextByReference second(folder);
    std::array arguments{second.argument(), argument(first.get())}; // the last argument comes first
    return ask(downloadFiles, arguments);
}

HRESULT DispatchTransferControl::invoke(DISPID operation, WORD kind, std::span<VARIANT> arguments,
                                        VARIANT* result) {
    DISPPARAMS parameters{};
    parameters.rgvarg = arguments.data();
    parameters.cArgs = static_cast<UINT>(arguments.size());
    DISPID assigned = DISPID_PROPERTYPUT;
    if (kind == DISPATCH_PROPERTYPUT) {
        parameters.rgdispidNamedArgs = &assigned;
        parameters.cNamedArgs = 1;
    }
    EXCEPINFO exception{};
    UINT wrongArgument = 0;
    const HRESULT outcome = instance_->control->Invoke(operation, IID_NULL, LOCALE_USER_DEFAULT, kind,
                                                       &parameters, result, &exception, &wrongArgument);
    freeTexts(exception);
    return outcome;
}

bool DispatchTransferControl::set(DISPID property, VARIANT value) {
    return SUCCEEDED(invoke(property, DISPATCH_PROPERTYPUT, {&value, 1}, nullptr));
}

/// The result as a 16-bit signed number; 0 for a call that failed and for a result that is none.
std::int64_t DispatchTransferControl::ask(DISPID operation, std::span<VARIANT> arguments) {
    ComVariant result;
    if (FAILED(invoke(operation, DISPATCH_METHOD, arguments, &result)))
        return 0;
    ComVariant number;
    return SUCCEEDED(VariantChangeType(&number, &result, 0, VT_I2)) ? number->iVal : 0;
}

} // namespace orvista
