#pragma once

#include "com/windows_api.h"
#include "frame/value.h"

/// Tagged values as VARIANTs.
///
/// Empty is VT_EMPTY, null VT_NULL, an argument that was left out VT_ERROR with DISP_E_PARAMNOTFOUND. Money is VT_CY, a
/// date VT_DATE, a float32 VT_R4, none VT_DISPATCH with no pointer.
namespace com {

/// A VARIANT that lets go of what it holds.
class OwnVariant {
public:
    OwnVariant() { VariantInit(&held); }
    OwnVariant(const OwnVariant&) = delete;
    OwnVariant& operator=(const OwnVariant&) = delete;
    ~OwnVariant() { VariantClear(&held); }
    VARIANT held;
};

/// The value of a VARIANT, which may be by reference. Whole numbers come as the narrowest type of the component's that
/// holds them all (a 64-bit one beyond 32 bits as float64), a decimal as money if it fits without loss. An object is
/// the component's own behind the interface; of a foreign one its default property is taken. Error 13 for arrays and
/// whatever else there is no value for.
Zontara::Value ToValue(const VARIANT& variant);

/// Puts a value into a VARIANT that holds nothing. An array is error 13.
void ToVariant(const Zontara::Value& value, VARIANT& variant);

/// Puts a value where a by-reference VARIANT points, converted to the type that it points to; what stood there goes.
/// Errors of `ConvertTo`, and 13 for a type that no value goes into.
void StoreThrough(const VARIANT& reference, const Zontara::Value& value);

}  // namespace com
