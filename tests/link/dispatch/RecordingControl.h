#pragma once

#include <windows.h>

#include <ocidl.h>
#include <oleauto.h>

#include <string>

/// A transfer control whose device is a folder. Variables of the process say what it does:
///   ORVISTA_TEST_CONTROL_LOG       file that gets a line for every call, with the types of the arguments
///   ORVISTA_TEST_CONTROL_DEVICE    folder that holds the device's files; without it nothing is copied
///   ORVISTA_TEST_CONTROL_RESULT_n  what operation n returns, KIND:VALUE, instead of a 16-bit 1:
///                                  I2, I4, UI4, R8, BOOL, TEXT, EMPTY, NULL, REFERENCE (to a 16-bit number),
///                                  FAIL (the call fails), EXCEPTION (it fails and describes why)
class RecordingControl final : public IDispatch, public IPersistStreamInit {
public:
    RecordingControl();
    virtual ~RecordingControl();
    RecordingControl(const RecordingControl&) = delete;
    RecordingControl& operator=(const RecordingControl&) = delete;

    /// How many objects live.
    static LONG living();

    STDMETHODIMP QueryInterface(REFIID id, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID language, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID language, DISPID* numbers) override;
    STDMETHODIMP Invoke(DISPID operation, REFIID, LCID language, WORD kind, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override;

    STDMETHODIMP GetClassID(CLSID* id) override;
    STDMETHODIMP IsDirty() override { return S_FALSE; }
    STDMETHODIMP Load(IStream*) override { return E_NOTIMPL; }
    STDMETHODIMP Save(IStream*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER*) override { return E_NOTIMPL; }
    STDMETHODIMP InitNew() override;

private:
    LONG references_ = 1;
};

/// The class as the type library names it.
inline constexpr CLSID testControlClass = {
    0x26008b2b, 0xc4d0, 0x4482, {0x90, 0xd8, 0x5a, 0x4f, 0x2e, 0xf9, 0xcb, 0xc6}};
