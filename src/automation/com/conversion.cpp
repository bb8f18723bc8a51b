#include "automation/com/conversion.hpp"

#include "automation/com/collection_object.hpp"
#include "automation/com/host_nodes.hpp"
#include "platform/windows/dom.hpp"
#include "platform/windows/errors.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <functional>
#include <limits>
#include <stdexcept>

namespace quill1xml::automation {
namespace {

/// A value as the source of a system call, which only reads it, whatever its declaration says.
VARIANT* source(const VARIANT& value) { return const_cast<VARIANT*>(&value); }

/// What a value refers to; the copy holds it where it is not a variant itself.
const VARIANT& dereferenced(const VARIANT& value, com::Variant& copy) {
    const VARIANT* target = &value;
    if (target->vt == (VT_BYREF | VT_VARIANT)) target = target->pvarVal;
    if ((target->vt & VT_BYREF) == 0 || (target->vt & VT_ARRAY) != 0) return *target;
    const HRESULT result = VariantCopyInd(copy.put(), source(*target));
    if (result == E_OUTOFMEMORY) throw std::bad_alloc();
    return SUCCEEDED(result) ? copy.get() : *target;
}

VARTYPE variantType(ParameterType type) {
    switch (type) {
        case ParameterType::text:
        case ParameterType::variantText: return VT_BSTR;
        case ParameterType::integer:
        case ParameterType::variantInteger: return VT_I2;
        case ParameterType::longInteger: return VT_I4;
        case ParameterType::floating: return VT_R8;
        case ParameterType::boolean: return VT_BOOL;
        case ParameterType::date: return VT_DATE;
        case ParameterType::currency: return VT_CY;
        case ParameterType::node:
        case ParameterType::nodeList: return VT_UNKNOWN;
    }
    throw std::logic_error("a parameter of an unknown type");
}

Error mismatch(const Parameter& parameter) { return runtimeError(RuntimeError::typeMismatch, toUtf16(parameter.name)); }

/// The value in the type that a parameter wants; the copy holds it where it had to be converted.
const VARIANT& coerced(const VARIANT& value, const Parameter& parameter, LCID locale, com::Variant& copy) {
    const VARTYPE wanted = variantType(parameter.type);
    // An object is taken as it is: a conversion could ask it for its default value.
    if (value.vt == wanted || (wanted == VT_UNKNOWN && value.vt == VT_DISPATCH)) return value;
    // Null is no value of any type, and an array of bytes would pass for text.
    const bool fits = value.vt != VT_NULL && (value.vt & VT_ARRAY) == 0;
    const auto convert = [&](LCID by) {
        return fits ? VariantChangeTypeEx(copy.put(), source(value), by, VARIANT_ALPHABOOL, wanted)
                    : DISP_E_TYPEMISMATCH;
    };
    HRESULT result = convert(locale);
    // Not every system knows every host's locale.
    if (FAILED(result) && result != DISP_E_OVERFLOW) result = convert(LOCALE_USER_DEFAULT);
    if (result == E_OUTOFMEMORY) throw std::bad_alloc();
    if (result == DISP_E_OVERFLOW) throw runtimeError(RuntimeError::overflow, toUtf16(parameter.name));
    if (FAILED(result)) throw mismatch(parameter);
    return copy.get();
}

/// Sets a parameter to a value of its type, which may be lent until the call has returned.
void set(Arguments& arguments, std::size_t index, const Parameter& parameter, const VARIANT& value, bool lent) {
    switch (parameter.type) {
        case ParameterType::node:
            return arguments.setNodes(index, std::vector{nodeOf(value.punkVal, toUtf16(parameter.name))});
        case ParameterType::nodeList: return arguments.setNodes(index, nodesOf(value.punkVal, toUtf16(parameter.name)));
        case ParameterType::text:
        case ParameterType::variantText: {
            const Text text = com::asText(value.bstrVal, SysStringLen(value.bstrVal));
            return lent ? arguments.lendText(index, text) : arguments.setText(index, text);
        }
        case ParameterType::integer:
        case ParameterType::variantInteger: return arguments.setWhole(index, value.iVal);
        case ParameterType::longInteger: return arguments.setWhole(index, value.lVal);
        case ParameterType::floating: return arguments.setDouble(index, value.dblVal);
        case ParameterType::boolean: return arguments.setBoolean(index, value.boolVal != VARIANT_FALSE);
        case ParameterType::date: return arguments.setDate(index, {value.date});
        case ParameterType::currency: return arguments.setCurrency(index, {value.cyVal.int64});
    }
}

/// "Not sent" (-1) as hosts write it whose importers give enumerations no sign.
bool isUnsignedNotSent(const VARIANT& value, const Member& member, const Parameter& parameter) {
    return (value.vt == VT_UI4 || value.vt == VT_UINT) && value.ulVal == std::numeric_limits<ULONG>::max() &&
           isThreeState(member, parameter);
}

void bindOne(Arguments& arguments, const Member& member, std::size_t index, const VARIANT& given, LCID locale) {
    const Parameter& parameter = member.parameters[index];
    com::Variant target;
    const VARIANT& value = dereferenced(given, target);
    if (isMissing(value) || (value.vt == VT_EMPTY && !parameter.required)) return;
    if (isUnsignedNotSent(value, member, parameter)) return;
    com::Variant copy;
    const VARIANT& fitting = coerced(value, parameter, locale, copy);
    // What the host passes by value is its own until the call returns; what it refers to may change in an event.
    set(arguments, index, parameter, fitting, &fitting == &given);
}

template <class Fill>
com::Variant filled(Fill fill) {
    com::Variant result;
    fill(*result.put());
    return result;
}

struct Conversion {
    com::Variant operator()(std::monostate) const { return {}; }
    com::Variant operator()(Long number) const { return com::Variant(static_cast<long>(number)); }
    com::Variant operator()(Integer number) const {
        return filled([number](VARIANT& place) { place.vt = VT_I2, place.iVal = number; });
    }
    com::Variant operator()(Double number) const {
        return filled([number](VARIANT& place) { place.vt = VT_R8, place.dblVal = number; });
    }
    com::Variant operator()(Date date) const {
        return filled([date](VARIANT& place) { place.vt = VT_DATE, place.date = date.days; });
    }
    com::Variant operator()(const std::u16string& text) const { return com::Variant(Text(text)); }
    com::Variant operator()(const Bytes& bytes) const { return com::Variant::ofBytes(std::as_bytes(std::span(bytes))); }
    com::Variant operator()(const Document& document) const {
        return com::Variant(platform::documentDispatch(*document.document()));
    }
    com::Variant operator()(const Collection& collection) const {
        return com::Variant(makeCollection(collection).get());
    }
};

}  // namespace

bool isMissing(const VARIANT& value) { return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND; }

bool isInOrder(const DISPPARAMS& given) {
    const DISPID* const names = given.rgdispidNamedArgs;
    const DISPID* const end = names + given.cNamedArgs;
    return std::adjacent_find(names, end, std::less_equal()) == end;
}

std::size_t parameterAt(UINT place, const Member& member, const DISPPARAMS& given, bool inOrder) {
    if (place >= given.cNamedArgs) {
        // By place, the last one first.
        const std::size_t index = given.cArgs - 1 - place;
        if (index >= member.parameters.size()) throw runtimeError(RuntimeError::wrongArgumentCount);
        return index;
    }
    const DISPID* const names = given.rgdispidNamedArgs;
    const DISPID* const end = names + given.cNamedArgs;
    const DISPID named = names[place];
    // None is given twice, by place and by name or by its name alone.
    const bool again = static_cast<UINT>(named) < given.cArgs - given.cNamedArgs ||
                       (!inOrder && std::find(names + place + 1, end, named) != end);
    if (again || named < 0 || static_cast<std::size_t>(named) >= member.parameters.size()) {
        throw runtimeError(RuntimeError::namedArgumentNotFound);
    }
    return static_cast<std::size_t>(named);
}

void bind(Arguments& arguments, const Member& member, const DISPPARAMS& given, LCID locale, UINT* faulty) {
    const bool inOrder = isInOrder(given);
    for (UINT place = given.cArgs; place-- > 0;) {
        if (faulty != nullptr) *faulty = place;
        bindOne(arguments, member, parameterAt(place, member, given, inOrder), given.rgvarg[place], locale);
    }
    arguments.requireAll();
}

com::Variant toVariant(const Value& value) { return std::visit(Conversion{}, value); }

}  // namespace quill1xml::automation
