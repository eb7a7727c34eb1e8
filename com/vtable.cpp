#include "com/vtable.h"

#include "com/failure.h"
#include "com/words.h"
#include "frame/invoke.h"
#include "frame/raised_error.h"

#include <bit>
#include <cstdarg>
#include <map>
#include <type_traits>
#include <utility>
#include <vector>

namespace com {

using Zontara::Member;
using Zontara::TypeWord;
using Zontara::Value;

namespace {

/// Arguments behind the object that travel in registers.
constexpr std::size_t kInRegisters = 3;
/// One bit for each of them, set for a floating-point register.
using FloatMask = unsigned;
constexpr FloatMask kFloatMasks = 1U << kInRegisters;

FloatMask MaskOf(const Member& member) {
    FloatMask mask = 0;
    for (std::size_t i = 0; i < kInRegisters && i < member.arguments.size(); ++i) {
        if (IsFloating(member.arguments[i])) mask |= 1U << i;
    }
    return mask;
}

/// Calls a member with its arguments as words, and behind them where the result goes, if it has one.
HRESULT CallWithWords(Zontara::Object& object, const Member& member, const std::vector<Word>& words) {
    const bool hasResult = member.result.word != TypeWord::None;
    if (hasResult && words.back() == 0) return E_POINTER;
    if (hasResult) EmptyResult(member.result, words.back());
    Zontara::CallArguments given;
    for (std::size_t i = 0; i < member.arguments.size(); ++i)
        given.positional.push_back(TakeWord(member.arguments[i], words[i]));

    std::vector<Value> values = Zontara::Arrange(member, std::move(given));
    const std::vector<Value> before = values;
    const Value result = member.invoke(object, values);
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (member.arguments[i].byRef && !(values[i] == before[i])) GiveBack(member.arguments[i], words[i], values[i]);
    }
    if (hasResult) GiveResult(member.result, words.back(), result);
    return S_OK;
}

/// A call that came in at a slot: the words of the registers, the others behind them on the stack.
HRESULT CallSlot(Dual& dual, std::size_t slot, const std::array<Word, kInRegisters>& registers, va_list rest) noexcept {
    return Guarded(dual.interfaceId, [&] {
        const Member& member = dual.object->Table()->members[slot];
        const std::size_t count = member.arguments.size() + (member.result.word != TypeWord::None ? 1 : 0);
        std::vector<Word> words(registers.begin(), registers.end());
        words.resize(count);
        for (std::size_t i = kInRegisters; i < count; ++i)
            words[i] = va_arg(rest, Word);
        return CallWithWords(*dual.object, member, words);
    });
}

template <bool Floating> using Register = std::conditional_t<Floating, double, Word>;

/// The entry of a slot. Its parameters take the registers by their kind; a float32 is the lower half of its register.
template <std::size_t Slot, FloatMask Mask>
HRESULT STDMETHODCALLTYPE Enter(Dual* dual, Register<(Mask & 1U) != 0> first, Register<(Mask & 2U) != 0> second,
                                Register<(Mask & 4U) != 0> third, ...) {
    va_list rest;
    va_start(rest, third);
    const std::array<Word, kInRegisters> registers{std::bit_cast<Word>(first), std::bit_cast<Word>(second),
                                                   std::bit_cast<Word>(third)};
    const HRESULT result = CallSlot(*dual, Slot, registers, rest);
    va_end(rest);
    return result;
}

template <std::size_t Slot, FloatMask... Masks>
std::array<const void*, kFloatMasks> EntriesOf(std::integer_sequence<FloatMask, Masks...>) {
    return {reinterpret_cast<const void*>(&Enter<Slot, Masks>)...};
}

using Entries = std::array<std::array<const void*, kFloatMasks>, kMostMembers>;

template <std::size_t... Slots> Entries MakeEntries(std::index_sequence<Slots...>) {
    return {EntriesOf<Slots>(std::make_integer_sequence<FloatMask, kFloatMasks>())...};
}

/// Every entry that any class can need, by slot and by floating registers.
const Entries& AllEntries() {
    static const Entries entries = MakeEntries(std::make_index_sequence<kMostMembers>());
    return entries;
}

HRESULT STDMETHODCALLTYPE QueryInterface(Dual* dual, REFIID id, void** made) {
    return dual->owner->QueryInterface(id, made);
}
ULONG STDMETHODCALLTYPE AddRef(Dual* dual) { return dual->owner->AddRef(); }
ULONG STDMETHODCALLTYPE Release(Dual* dual) { return dual->owner->Release(); }
HRESULT STDMETHODCALLTYPE GetTypeInfoCount(Dual* dual, UINT* count) { return dual->owner->GetTypeInfoCount(count); }
HRESULT STDMETHODCALLTYPE GetTypeInfo(Dual* dual, UINT which, LCID locale, ITypeInfo** made) {
    return dual->owner->GetTypeInfo(which, locale, made);
}
HRESULT STDMETHODCALLTYPE GetIDsOfNames(Dual* dual, REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                        DISPID* numbers) {
    return dual->owner->GetIDsOfNames(id, names, count, locale, numbers);
}
HRESULT STDMETHODCALLTYPE Invoke(Dual* dual, DISPID number, REFIID id, LCID locale, WORD flags, DISPPARAMS* given,
                                 VARIANT* result, EXCEPINFO* exception, UINT* wrong) {
    return dual->owner->Invoke(number, id, locale, flags, given, result, exception, wrong);
}

template <class Function> const void* Entry(Function* function) { return reinterpret_cast<const void*>(function); }

std::vector<const void*> MakeVtable(const Zontara::ClassTable& table) {
    if (table.members.size() > kMostMembers) Zontara::Raise(Zontara::RunTimeError::InvalidCall);
    std::vector<const void*> vtable{
        Entry(&QueryInterface), Entry(&AddRef),        Entry(&Release), Entry(&GetTypeInfoCount),
        Entry(&GetTypeInfo),    Entry(&GetIDsOfNames), Entry(&Invoke)};
    for (std::size_t slot = 0; slot < table.members.size(); ++slot)
        vtable.push_back(AllEntries()[slot][MaskOf(table.members[slot])]);
    return vtable;
}

}  // namespace

const void* const* VtableOf(const Zontara::ClassTable& table) {
    static std::map<const Zontara::ClassTable*, std::vector<const void*>> made;
    const auto known = made.find(&table);
    if (known != made.end()) return known->second.data();
    return made.emplace(&table, MakeVtable(table)).first->second.data();
}

}  // namespace com
