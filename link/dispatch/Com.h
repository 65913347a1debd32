#pragma once

#include <windows.h>

#include <oleauto.h>

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

/// What the calls into COM need of ownership and text, and no more.
namespace orvista {

struct ReleaseInterface {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Interface>
using ComPointer = std::unique_ptr<Interface, ReleaseInterface>;

struct FreeText {
    void operator()(OLECHAR* text) const { SysFreeString(text); }
};
/// A BSTR of ours. An empty text may be a null pointer, as everywhere in COM.
using ComText = std::unique_ptr<OLECHAR, FreeText>;

/// The calling thread inside a COM apartment for as long as the object lives.
class ComApartment {
public:
    ComApartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~ComApartment() {
        if (SUCCEEDED(result_)) // a thread that is in another kind of apartment already stays there
            CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

private:
    HRESULT result_;
};

/// A variant that is cleared with its scope.
class ComVariant {
public:
    ComVariant() { VariantInit(&value_); }
    ~ComVariant() { VariantClear(&value_); }
    ComVariant(const ComVariant&) = delete;
    ComVariant& operator=(const ComVariant&) = delete;
    VARIANT* operator&() { return &value_; }
    VARIANT* operator->() { return &value_; }

private:
    VARIANT value_{};
};

/// UTF-8 as the system's UTF-16; bytes that are no UTF-8 become replacement characters.
inline std::wstring wideText(std::string_view utf8) {
    const int length = static_cast<int>(utf8.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

inline ComText comText(std::wstring_view text) {
    return ComText(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
}

} // namespace orvista
