#include "com/words.h"

#include "com/text.h"
#include "com/variant.h"
#include "com/wrapper.h"
#include "frame/convert.h"
#include "frame/raised_error.h"

namespace com {

using Zontara::Argument;
using Zontara::ConvertTo;
using Zontara::Object;
using Zontara::Ref;
using Zontara::TypeWord;
using Zontara::Value;

namespace {

template <class T> const T& At(const void* place) { return *static_cast<const T*>(place); }

template <class T> void Put(void* place, T held) { *static_cast<T*>(place) = held; }

void* PlaceIn(Word word) { return reinterpret_cast<void*>(word); }

/// The value that lies at a place, laid out as COM lays out its type.
Value ReadAt(TypeWord type, const void* place) {
    switch (type) {
        case TypeWord::Text:
            return FromBstr(At<BSTR>(place));
        case TypeWord::Int16:
            return At<std::int16_t>(place);
        case TypeWord::Int32:
            return At<std::int32_t>(place);
        case TypeWord::Byte:
            return At<std::uint8_t>(place);
        case TypeWord::Float32:
            return At<float>(place);
        case TypeWord::Bool:
            return At<VARIANT_BOOL>(place) != VARIANT_FALSE;
        case TypeWord::Money:
            return Zontara::Money::FromTenThousandths(At<CY>(place).int64);
        case TypeWord::Date:
            return Zontara::Date{At<DATE>(place)};
        case TypeWord::Variant:
            return ToValue(At<VARIANT>(place));
        case TypeWord::Object: {
            IUnknown* given = At<IUnknown*>(place);
            if (given == nullptr) return nullptr;
            const Ref<Object> object = ObjectBehind(given);
            if (!object) Zontara::Raise(Zontara::RunTimeError::TypeMismatch);
            return object;
        }
        case TypeWord::None:
            break;
    }
    return {};
}

/// Puts a value at a place, over whatever stands there.
void WriteAt(TypeWord type, void* place, const Value& value) {
    switch (type) {
        case TypeWord::Text:
            return Put(place, ToBstr(ConvertTo<std::string>(value)));
        case TypeWord::Int16:
            return Put(place, ConvertTo<std::int16_t>(value));
        case TypeWord::Int32:
            return Put(place, ConvertTo<std::int32_t>(value));
        case TypeWord::Byte:
            return Put(place, ConvertTo<std::uint8_t>(value));
        case TypeWord::Float32:
            return Put(place, ConvertTo<float>(value));
        case TypeWord::Bool:
            return Put<VARIANT_BOOL>(place, ConvertTo<bool>(value) ? VARIANT_TRUE : VARIANT_FALSE);
        case TypeWord::Money:
            return Put(place, ConvertTo<Zontara::Money>(value).TenThousandths());
        case TypeWord::Date:
            return Put(place, ConvertTo<Zontara::Date>(value).days);
        case TypeWord::Variant:
            return ToVariant(value, *static_cast<VARIANT*>(place));
        case TypeWord::Object:
            return Put<IUnknown*>(place, WrappedAsItsOwn(ConvertTo<Ref<Object>>(value)));
        case TypeWord::None:
            return;
    }
}

/// Lets go of what a by-reference argument held.
void Clear(TypeWord type, VARIANT& held) {
    if (type == TypeWord::Text) SysFreeString(At<BSTR>(&held));
    if (type == TypeWord::Variant) VariantClear(&held);
    if (type == TypeWord::Object && At<IUnknown*>(&held) != nullptr) At<IUnknown*>(&held)->Release();
}

}  // namespace

bool IsFloating(const Argument& argument) {
    return !argument.byRef && (argument.type.word == TypeWord::Float32 || argument.type.word == TypeWord::Date);
}

Value TakeWord(const Argument& argument, Word word) {
    const bool pointed = argument.byRef || argument.type.word == TypeWord::Variant;
    if (!pointed) return ReadAt(argument.type.word, &word);
    if (word == 0) return Zontara::Absent{};
    return ReadAt(argument.type.word, PlaceIn(word));
}

void GiveBack(const Argument& argument, Word word, const Value& value) {
    if (word == 0) return;
    const TypeWord type = argument.type.word;
    // What stood there goes last: making its successor may fail. Only these three types own anything.
    VARIANT before{};
    if (type == TypeWord::Variant) before = At<VARIANT>(PlaceIn(word));
    if (type == TypeWord::Text || type == TypeWord::Object) Put(&before, At<void*>(PlaceIn(word)));
    WriteAt(type, PlaceIn(word), value);
    Clear(type, before);
}

void EmptyResult(const Zontara::TypeOf& type, Word word) {
    if (type.word == TypeWord::Text || type.word == TypeWord::Object) Put<void*>(PlaceIn(word), nullptr);
    if (type.word == TypeWord::Variant) VariantInit(static_cast<VARIANT*>(PlaceIn(word)));
}

void GiveResult(const Zontara::TypeOf& type, Word word, const Value& value) {
    WriteAt(type.word, PlaceIn(word), value);
}

}  // namespace com
