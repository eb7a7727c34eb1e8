#pragma once

#include "frame/member_table.h"
#include "frame/value.h"

#include <cstdint>

/// Arguments of a call through a vtable, each one machine word: what fits is in it, what doesn't (a VARIANT, anything
/// by reference) is where it points.
namespace com {

using Word = std::uint64_t;

/// The value of an argument. A reference that points nowhere is an argument that was left out.
Zontara::Value TakeWord(const Zontara::Argument& argument, Word word);

/// Puts a value where a by-reference argument points; what stood there goes. Nowhere is no error.
void GiveBack(const Zontara::Argument& argument, Word word, const Zontara::Value& value);

/// Leaves nothing where a result that has to be let go of may stay away: a caller looks there after a failure too.
void EmptyResult(const Zontara::TypeOf& type, Word word);
/// Puts a result where the caller wants it, over whatever stands there.
void GiveResult(const Zontara::TypeOf& type, Word word, const Zontara::Value& value);

/// Whether an argument of that type travels in a floating-point register.
bool IsFloating(const Zontara::Argument& argument);

}  // namespace com
