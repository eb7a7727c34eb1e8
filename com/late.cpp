#include "com/late.h"

#include "com/text.h"
#include "com/variant.h"
#include "frame/invoke.h"
#include "host/typelib/libraries.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

namespace com {

using Zontara::Member;
using Zontara::MemberKind;
using Zontara::Value;

namespace {

/// The member of that name of any kind, whose arguments have names.
const Member& AnyMember(const Zontara::ClassTable& table, std::string_view name) {
    return *std::find_if(table.members.begin(), table.members.end(),
                         [name](const Member& each) { return each.name == name; });
}

DISPID NumberOfArgument(const Member& member, const std::string& name) {
    const auto found = std::find_if(member.arguments.begin(), member.arguments.end(),
                                    [&](const auto& each) { return Zontara::SameName(each.name, name); });
    return found == member.arguments.end() ? DISPID_UNKNOWN : static_cast<DISPID>(found - member.arguments.begin());
}

/// The member of a number that a call with these flags means; none if there is none.
const Member* Meant(const Zontara::ClassTable& table, DISPID number, WORD flags) {
    static constexpr std::array<std::pair<WORD, MemberKind>, 4> kKinds{{{DISPATCH_METHOD, MemberKind::Method},
                                                                        {DISPATCH_PROPERTYGET, MemberKind::Get},
                                                                        {DISPATCH_PROPERTYPUT, MemberKind::Put},
                                                                        {DISPATCH_PROPERTYPUTREF, MemberKind::PutRef}}};
    const std::vector<std::string_view> names = host::typelib::MemberNames(table);
    if (number < 1 || static_cast<std::size_t>(number) > names.size()) return nullptr;
    const std::string_view name = names[static_cast<std::size_t>(number) - 1];
    for (const auto& [flag, kind] : kKinds) {
        if ((flags & flag) == 0) continue;
        if (const Member* member = table.Find(name, kind)) return member;
    }
    // A property is assigned by value or by reference; languages differ in which word they use for an object.
    if ((flags & DISPATCH_PROPERTYPUT) != 0) return table.Find(name, MemberKind::PutRef);
    if ((flags & DISPATCH_PROPERTYPUTREF) != 0) return table.Find(name, MemberKind::Put);
    return nullptr;
}

/// A call's arguments in the component's terms, and for each argument of the member the client's VARIANT, none for one
/// that was left out.
struct Given {
    Zontara::CallArguments arguments;
    std::vector<const VARIANT*> variants;
};

/// COM hands the arguments over from the last to the first, the named ones ahead of the positional ones.
HRESULT Gather(const Member& member, const DISPPARAMS& given, Given& gathered) {
    if (given.cNamedArgs > given.cArgs) return E_INVALIDARG;
    gathered.variants.assign(member.arguments.size(), nullptr);
    const UINT positional = given.cArgs - given.cNamedArgs;
    for (UINT i = 0; i < positional; ++i) {
        const VARIANT& variant = given.rgvarg[given.cArgs - 1 - i];
        gathered.arguments.positional.push_back(ToValue(variant));
        if (i < gathered.variants.size()) gathered.variants[i] = &variant;
    }
    for (UINT i = 0; i < given.cNamedArgs; ++i) {
        const DISPID number = given.rgdispidNamedArgs[i];
        if (number == DISPID_PROPERTYPUT) {
            gathered.arguments.positional.push_back(ToValue(given.rgvarg[i]));
            continue;
        }
        if (number < 0 || static_cast<std::size_t>(number) >= member.arguments.size()) return DISP_E_UNKNOWNNAME;
        const auto place = static_cast<std::size_t>(number);
        gathered.arguments.named.emplace_back(member.arguments[place].name, ToValue(given.rgvarg[i]));
        gathered.variants[place] = &given.rgvarg[i];
    }
    return S_OK;
}

void WriteBack(const Member& member, const Given& gathered, const Zontara::CallResult& result) {
    for (std::size_t i = 0; i < member.arguments.size(); ++i) {
        const VARIANT* variant = gathered.variants[i];
        if (variant == nullptr || (variant->vt & VT_BYREF) == 0) continue;
        for (const auto& [name, value] : result.changed) {
            if (name == member.arguments[i].name) StoreThrough(*variant, value);
        }
    }
}

}  // namespace

HRESULT NumbersOf(const Zontara::ClassTable& table, LPOLESTR* names, UINT count, DISPID* numbers) {
    std::fill_n(numbers, count, DISPID_UNKNOWN);
    if (count == 0) return S_OK;
    const std::vector<std::string_view> known = host::typelib::MemberNames(table);
    const std::string wanted = Narrow(names[0]);
    const auto found =
        std::find_if(known.begin(), known.end(), [&](const auto& each) { return Zontara::SameName(each, wanted); });
    if (found == known.end()) return DISP_E_UNKNOWNNAME;
    numbers[0] = static_cast<DISPID>(found - known.begin()) + 1;

    const Member& member = AnyMember(table, *found);
    for (UINT i = 1; i < count; ++i)
        numbers[i] = NumberOfArgument(member, Narrow(names[i]));
    return std::find(numbers, numbers + count, DISPID_UNKNOWN) == numbers + count ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT CallLate(Zontara::Object& object, DISPID number, WORD flags, const DISPPARAMS& given, VARIANT* result) {
    const Member* member = Meant(*object.Table(), number, flags);
    if (member == nullptr) return DISP_E_MEMBERNOTFOUND;
    Given gathered;
    const HRESULT fits = Gather(*member, given, gathered);
    if (FAILED(fits)) return fits;
    const Zontara::CallResult outcome = Zontara::Invoke(object, member->name, member->kind, gathered.arguments);
    WriteBack(*member, gathered, outcome);
    if (result != nullptr) ToVariant(outcome.value, *result);
    return S_OK;
}

}  // namespace com
