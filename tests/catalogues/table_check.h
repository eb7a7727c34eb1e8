#pragma once

#include "frame/convert.h"
#include "frame/member_table.h"

#include <string>
#include <vector>

namespace support {

inline std::string LineOf(const Zontara::Argument& argument) {
    std::string line = std::string(argument.name) + " " + Zontara::WordOf(argument.type);
    if (argument.byRef) line += "&";
    if (argument.optional) line += "=" + Zontara::ToText(argument.defaultValue);
    return line;
}

/// The members of a class in one line each: "Buscar(SC_Gama int32, sColumnas text&=): Recordset", where & marks an
/// argument by reference and = an optional one with its default. Properties begin with "get", "put" or "putref".
inline std::vector<std::string> MembersOf(const Zontara::ClassTable& table) {
    static const char* const kKinds[] = {"", "get ", "put ", "putref "};
    std::vector<std::string> lines;
    for (const Zontara::Member& member : table.members) {
        std::string line = kKinds[static_cast<int>(member.kind)] + std::string(member.name) + "(";
        for (std::size_t i = 0; i < member.arguments.size(); ++i) {
            line += (i == 0 ? "" : ", ") + LineOf(member.arguments[i]);
        }
        lines.push_back(line + "): " + Zontara::WordOf(member.result));
    }
    return lines;
}

/// Name, interface and whether clients can create it: "CGama _CGama creatable".
inline std::string HeadOf(const Zontara::ClassTable& table) {
    return std::string(table.name) + " " + std::string(table.interfaceName) + (table.create ? " creatable" : "");
}

}  // namespace support
