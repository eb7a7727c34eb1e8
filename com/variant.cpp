#include "com/variant.h"

#include "com/failure.h"
#include "com/text.h"
#include "com/wrapper.h"
#include "frame/convert.h"
#include "frame/raised_error.h"

#include <limits>
#include <utility>

namespace com {

using Zontara::ConvertTo;
using Zontara::Money;
using Zontara::Object;
using Zontara::Raise;
using Zontara::Ref;
using Zontara::RunTimeError;
using Zontara::Value;

namespace {

template <class Wide> Value WholeNumber(Wide number) {
    constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr auto kLargest = std::numeric_limits<std::int32_t>::max();
    if (std::cmp_less(number, kLeast) || std::cmp_greater(number, kLargest)) return static_cast<double>(number);
    return static_cast<std::int32_t>(number);
}

/// The decimal as money if nothing is lost, else as float64.
Value OfDecimal(DECIMAL decimal) {
    CY money{};
    DECIMAL back{};
    if (SUCCEEDED(VarCyFromDec(&decimal, &money)) && SUCCEEDED(VarDecFromCy(money, &back)) &&
        VarDecCmp(&decimal, &back) == static_cast<HRESULT>(VARCMP_EQ)) {
        return Money::FromTenThousandths(money.int64);
    }
    double number = 0.0;
    if (FAILED(VarR8FromDec(&decimal, &number))) Raise(RunTimeError::Overflow);
    return number;
}

/// What a foreign object stands for: its default property.
Value OfForeignObject(const VARIANT& variant) {
    OwnVariant text;
    if (FAILED(VariantChangeType(&text.held, const_cast<VARIANT*>(&variant), 0, VT_BSTR)))
        Raise(RunTimeError::TypeMismatch);
    return FromBstr(text.held.bstrVal);
}

Value OfInterface(const VARIANT& variant, IUnknown* given) {
    if (given == nullptr) return nullptr;
    if (const Ref<Object> object = ObjectBehind(given)) return object;
    return OfForeignObject(variant);
}

Value OfPlain(const VARIANT& variant) {
    switch (variant.vt) {
        case VT_EMPTY:
            return {};
        case VT_NULL:
            return Zontara::Null{};
        case VT_ERROR:
            if (variant.scode == DISP_E_PARAMNOTFOUND) return Zontara::Absent{};
            break;
        case VT_BOOL:
            return variant.boolVal != VARIANT_FALSE;
        case VT_UI1:
            return static_cast<std::uint8_t>(variant.bVal);
        case VT_I1:
            return static_cast<std::int16_t>(variant.cVal);
        case VT_I2:
            return static_cast<std::int16_t>(variant.iVal);
        case VT_UI2:
            return WholeNumber(variant.uiVal);
        case VT_I4:
        case VT_INT:
            return WholeNumber(variant.lVal);
        case VT_UI4:
        case VT_UINT:
            return WholeNumber(variant.ulVal);
        case VT_I8:
            return WholeNumber(variant.llVal);
        case VT_UI8:
            return WholeNumber(variant.ullVal);
        case VT_R4:
            return variant.fltVal;
        case VT_R8:
            return variant.dblVal;
        case VT_CY:
            return Money::FromTenThousandths(variant.cyVal.int64);
        case VT_DATE:
            return Zontara::Date{variant.date};
        case VT_DECIMAL:
            return OfDecimal(variant.decVal);
        case VT_BSTR:
            return FromBstr(variant.bstrVal);
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return OfInterface(variant, variant.punkVal);
        default:
            break;
    }
    Raise(RunTimeError::TypeMismatch);
}

void SetText(BSTR& place, const std::string& text) {
    BSTR made = ToBstr(text);
    SysFreeString(place);
    place = made;
}

/// Types that the component has no word for: by way of a VARIANT that holds the value as it is.
void StoreOtherType(const VARIANT& reference, const Value& value) {
    OwnVariant plain;
    ToVariant(value, plain.held);
    const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
    if (FAILED(VariantChangeType(&plain.held, &plain.held, 0, type))) Raise(RunTimeError::TypeMismatch);
    switch (type) {
        case VT_I1:
            *reference.pcVal = plain.held.cVal;
            break;
        case VT_UI2:
            *reference.puiVal = plain.held.uiVal;
            break;
        case VT_UI4:
        case VT_UINT:
            *reference.pulVal = plain.held.ulVal;
            break;
        case VT_I8:
            *reference.pllVal = plain.held.llVal;
            break;
        case VT_UI8:
            *reference.pullVal = plain.held.ullVal;
            break;
        case VT_DECIMAL:
            *reference.pdecVal = plain.held.decVal;
            break;
        default:
            Raise(RunTimeError::TypeMismatch);
    }
}

void StoreObject(IUnknown** place, const Value& value) {
    IDispatch* made = Wrapped(ConvertTo<Ref<Object>>(value));
    if (*place != nullptr) (*place)->Release();
    *place = made;
}

}  // namespace

Value ToValue(const VARIANT& variant) {
    if ((variant.vt & VT_BYREF) == 0) return OfPlain(variant);
    OwnVariant plain;
    // Takes the reference off: the copy holds what it points to, of whatever type.
    if (FAILED(VariantCopyInd(&plain.held, const_cast<VARIANT*>(&variant)))) Raise(RunTimeError::TypeMismatch);
    return OfPlain(plain.held);
}

void ToVariant(const Value& value, VARIANT& variant) {
    VariantInit(&variant);
    switch (value.kind()) {
        case Value::Kind::Empty:
            return;
        case Value::Kind::Null:
            variant.vt = VT_NULL;
            return;
        case Value::Kind::Absent:
            variant.scode = DISP_E_PARAMNOTFOUND;
            variant.vt = VT_ERROR;
            return;
        case Value::Kind::Bool:
            variant.boolVal = value.Get<bool>() ? VARIANT_TRUE : VARIANT_FALSE;
            variant.vt = VT_BOOL;
            return;
        case Value::Kind::Byte:
            variant.bVal = value.Get<std::uint8_t>();
            variant.vt = VT_UI1;
            return;
        case Value::Kind::Int16:
            variant.iVal = value.Get<std::int16_t>();
            variant.vt = VT_I2;
            return;
        case Value::Kind::Int32:
            variant.lVal = value.Get<std::int32_t>();
            variant.vt = VT_I4;
            return;
        case Value::Kind::Float32:
            variant.fltVal = value.Get<float>();
            variant.vt = VT_R4;
            return;
        case Value::Kind::Float64:
            variant.dblVal = value.Get<double>();
            variant.vt = VT_R8;
            return;
        case Value::Kind::Money:
            variant.cyVal.int64 = value.Get<Money>().TenThousandths();
            variant.vt = VT_CY;
            return;
        case Value::Kind::Date:
            variant.date = value.Get<Zontara::Date>().days;
            variant.vt = VT_DATE;
            return;
        case Value::Kind::Text:
            variant.bstrVal = ToBstr(value.Get<std::string>());
            variant.vt = VT_BSTR;
            return;
        case Value::Kind::Object:
            variant.pdispVal = Wrapped(value.Get<Ref<Object>>());
            variant.vt = VT_DISPATCH;
            return;
        case Value::Kind::List:
            Raise(RunTimeError::TypeMismatch);
    }
}

void StoreThrough(const VARIANT& reference, const Value& value) {
    switch (reference.vt & ~VT_BYREF) {
        case VT_VARIANT: {
            OwnVariant made;
            ToVariant(value, made.held);
            std::swap(made.held, *reference.pvarVal);
            return;
        }
        case VT_BOOL:
            *reference.pboolVal = ConvertTo<bool>(value) ? VARIANT_TRUE : VARIANT_FALSE;
            return;
        case VT_UI1:
            *reference.pbVal = ConvertTo<std::uint8_t>(value);
            return;
        case VT_I2:
            *reference.piVal = ConvertTo<std::int16_t>(value);
            return;
        case VT_I4:
        case VT_INT:
            *reference.plVal = ConvertTo<std::int32_t>(value);
            return;
        case VT_R4:
            *reference.pfltVal = ConvertTo<float>(value);
            return;
        case VT_R8:
            *reference.pdblVal = ConvertTo<double>(value);
            return;
        case VT_CY:
            reference.pcyVal->int64 = ConvertTo<Money>(value).TenThousandths();
            return;
        case VT_DATE:
            *reference.pdate = ConvertTo<Zontara::Date>(value).days;
            return;
        case VT_BSTR:
            SetText(*reference.pbstrVal, ConvertTo<std::string>(value));
            return;
        case VT_DISPATCH:
        case VT_UNKNOWN:
            StoreObject(reference.ppunkVal, value);
            return;
        default:
            StoreOtherType(reference, value);
    }
}

}  // namespace com
