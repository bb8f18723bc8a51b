// Late-bound calls in plain C++: values, objects and what a failed call says.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace automation {

inline std::string narrow(const wchar_t* text, int length) {
    std::string result(static_cast<std::size_t>(length) * 3, '\0');
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text, length, result.data(), static_cast<int>(result.size()), nullptr, nullptr);
    result.resize(static_cast<std::size_t>(size));
    return result;
}

inline std::wstring wide(const std::string& text) {
    std::wstring result(text.size(), L'\0');
    const int size = MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), result.data(),
                                         static_cast<int>(result.size()));
    result.resize(static_cast<std::size_t>(size));
    return result;
}

/// What went wrong, as every automation host is told it.
class Failure : public std::runtime_error {
public:
    Failure(long number, std::string source, const std::string& description)
        : std::runtime_error(description), number_(number), source_(std::move(source)) {}

    long number() const noexcept { return number_; }
    const std::string& source() const noexcept { return source_; }

private:
    long number_;
    std::string source_;
};

inline void check(HRESULT result, const char* what) {
    if (FAILED(result)) throw Failure(result, "COM", what);
}

/// A VARIANT that frees what it holds.
class Value {
public:
    Value() noexcept { VariantInit(&value_); }
    Value(long number) noexcept : Value() { value_.vt = VT_I4, value_.lVal = number; }
    Value(int number) noexcept : Value(static_cast<long>(number)) {}
    Value(double number) noexcept : Value() { value_.vt = VT_R8, value_.dblVal = number; }
    Value(const wchar_t* text) : Value() {
        value_.bstrVal = SysAllocString(text);
        if (value_.bstrVal == nullptr) throw std::bad_alloc();
        value_.vt = VT_BSTR;
    }
    Value(const std::wstring& text) : Value(text.c_str()) {}
    Value(const Value& other) : Value() { check(VariantCopy(&value_, const_cast<VARIANT*>(&other.value_)), "copy"); }
    Value(Value&& other) noexcept : Value() { std::swap(value_, other.value_); }
    Value& operator=(Value other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    ~Value() { VariantClear(&value_); }

    const VARIANT& get() const noexcept { return value_; }
    VARIANT* put() noexcept { return &value_; }

    std::wstring text() const {
        Value result;
        check(VariantChangeTypeEx(&result.value_, const_cast<VARIANT*>(&value_), LOCALE_INVARIANT, 0, VT_BSTR),
              "not a text");
        return {result.value_.bstrVal, SysStringLen(result.value_.bstrVal)};
    }

    /// For output.
    std::string utf8() const {
        const std::wstring wideText = text();
        return narrow(wideText.data(), static_cast<int>(wideText.size()));
    }

    long number() const {
        Value result;
        check(VariantChangeType(&result.value_, const_cast<VARIANT*>(&value_), 0, VT_I4), "not a number");
        return result.value_.lVal;
    }

    /// The object that it holds, which lives as long as this value does.
    IDispatch* object() const {
        if (value_.vt != VT_DISPATCH || value_.pdispVal == nullptr)
            throw Failure(DISP_E_TYPEMISMATCH, "COM", "no object");
        return value_.pdispVal;
    }

private:
    VARIANT value_;
};

using Named = std::pair<const wchar_t*, Value>;

/// The texts of a failed call; asked for where the server put that off.
inline Failure failureOf(EXCEPINFO& details) {
    if (details.pfnDeferredFillIn != nullptr) details.pfnDeferredFillIn(&details);
    const auto take = [](BSTR text) {
        std::string result = narrow(text == nullptr ? L"" : text, static_cast<int>(SysStringLen(text)));
        SysFreeString(text);
        return result;
    };
    const long number = details.wCode != 0 ? details.wCode : details.scode;
    const std::string source = take(details.bstrSource);
    const std::string description = take(details.bstrDescription);
    SysFreeString(details.bstrHelpFile);
    return {number, source, description};
}

/// Calls a method, or reads a property, with arguments by place and then by name.
inline Value call(IDispatch* object, const wchar_t* member, const std::vector<Value>& placed = {},
                  const std::vector<Named>& named = {}) {
    std::vector<wchar_t*> names{const_cast<wchar_t*>(member)};
    for (const Named& argument : named) names.push_back(const_cast<wchar_t*>(argument.first));
    std::vector<DISPID> ids(names.size());
    check(
        object->GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()), LOCALE_USER_DEFAULT, ids.data()),
        "no such member or argument");

    // The named ones come first, those by place from the last to the first.
    std::vector<VARIANT> arguments(named.size() + placed.size());
    const auto firstPlaced = std::transform(named.begin(), named.end(), arguments.begin(),
                                            [](const Named& argument) { return argument.second.get(); });
    std::transform(placed.rbegin(), placed.rend(), firstPlaced, [](const Value& argument) { return argument.get(); });
    DISPPARAMS given{arguments.data(), ids.data() + 1, static_cast<UINT>(arguments.size()),
                     static_cast<UINT>(named.size())};
    Value result;
    EXCEPINFO details{};
    const HRESULT outcome =
        object->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &given,
                       result.put(), &details, nullptr);
    if (outcome == DISP_E_EXCEPTION) throw failureOf(details);
    check(outcome, "the call failed");
    return result;
}

inline Value create(const wchar_t* className) {
    CLSID id;
    check(CLSIDFromProgID(className, &id), "the class is not registered");
    Value object;
    check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                           reinterpret_cast<void**>(&object.put()->pdispVal)),
          "the object cannot be created");
    object.put()->vt = VT_DISPATCH;
    return object;
}

}  // namespace automation
