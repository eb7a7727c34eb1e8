#include "frame/member_table.h"

#include <algorithm>

namespace Zontara {

namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

}  // namespace

std::string WordOf(const TypeOf& type) {
    switch (type.word) {
        case TypeWord::None:
            return "nothing";
        case TypeWord::Text:
            return "text";
        case TypeWord::Int16:
            return "int16";
        case TypeWord::Int32:
            return "int32";
        case TypeWord::Byte:
            return "byte";
        case TypeWord::Float32:
            return "float32";
        case TypeWord::Bool:
            return "bool";
        case TypeWord::Money:
            return "money";
        case TypeWord::Date:
            return "date";
        case TypeWord::Variant:
            return "variant";
        case TypeWord::Object:
            return std::string(type.className);
    }
    return "nothing";
}

bool SameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(), [](char a, char b) { return Lower(a) == Lower(b); });
}

const Member* ClassTable::Find(std::string_view memberName, MemberKind kind) const {
    const auto found = std::find_if(members.begin(), members.end(), [&](const Member& member) {
        return member.kind == kind && SameName(member.name, memberName);
    });
    return found == members.end() ? nullptr : &*found;
}

bool ClassTable::Has(std::string_view memberName) const {
    return std::any_of(members.begin(), members.end(),
                       [&](const Member& member) { return SameName(member.name, memberName); });
}

}  // namespace Zontara
