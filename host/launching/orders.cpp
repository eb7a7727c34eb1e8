#include "host/launching/orders.h"

#include "frame/convert.h"
#include "frame/invoke.h"
#include "host/failure.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace host::launching {

namespace {

using nlohmann::json;

Zontara::Value ValueOf(const json& member, const std::string& name, const std::string& source) {
    if (member.is_boolean()) return member.get<bool>();
    if (member.is_number_integer()) return static_cast<double>(member.get<std::int64_t>());
    throw Failure(fmt::format("{}: the value of {} must be a whole number, true or false.", source, name));
}

std::string PropertiesOf(const Zontara::ClassTable& table) {
    std::string names;
    for (const Zontara::Member& member : table.members) {
        if (member.kind == Zontara::MemberKind::Get) names += (names.empty() ? "" : ", ") + std::string(member.name);
    }
    return names;
}

}  // namespace

Zontara::Ref<Zontara::CConfiguracionOTBoletin> OrdersFromJson(std::string_view text, const std::string& source) {
    const json object = json::parse(text, nullptr, false);
    if (!object.is_object()) {
        throw Failure(fmt::format("{} holds no JSON object, such as {{\"CodigoEjecutorOT\": 3}}.", source));
    }
    auto orders = std::make_shared<Zontara::CConfiguracionOTBoletin>();
    for (const auto& [name, member] : object.items()) {
        if (orders->Table()->Find(name, Zontara::MemberKind::Put) == nullptr) {
            throw Failure(fmt::format("{}: unknown member {}; the members are {}.", source, name,
                                      PropertiesOf(*orders->Table())));
        }
        const Zontara::Value value = ValueOf(member, name, source);
        try {
            Zontara::Invoke(*orders, name, Zontara::MemberKind::Put, {{value}, {}});
        } catch (const Zontara::RaisedError& error) {
            throw Failure(fmt::format("{}: the value of {} doesn't fit: {}.", source, name, CauseOf(error)));
        }
    }
    return orders;
}

}  // namespace host::launching
