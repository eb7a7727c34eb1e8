#include "frame/convert.h"
#include "frame/neighbours.h"
#include "frame/regional.h"
#include "host/rpc/values.h"

#include <cmath>

namespace host::rpc {

namespace {

using Zontara::Object;
using Zontara::Ref;
using Zontara::Value;

/// The number that reads like the shortest text of a float32: 0.1 and not 0.10000000149011612.
Json Number(float number) {
    if (!std::isfinite(number)) return nullptr;
    return Zontara::NumberIn(Zontara::ToText(number)).value_or(static_cast<double>(number));
}

Json Amount(Zontara::Money amount) {
    constexpr std::int64_t kUnit = 10000;
    if (amount.TenThousandths() % kUnit == 0) return amount.TenThousandths() / kUnit;
    return amount.ToNumber();
}

Json Notices(const Zontara::ListaCambios& list) {
    Json notices = Json::array();
    for (std::int32_t position = 1; position <= list.Total(); ++position)
        notices.push_back(list.Elemento(position));
    return notices;
}

Json Rows(Zontara::Recordset& rows) {
    const std::int32_t columns = rows.TotalColumnas();
    Json names = Json::array();
    for (std::int32_t column = 0; column < columns; ++column)
        names.push_back(rows.NombreColumna(column));
    Json values = Json::array();
    for (rows.MoverPrimero(); !rows.FinDeDatos(); rows.MoverSiguiente()) {
        Json row = Json::array();
        for (std::int32_t column = 0; column < columns; ++column)
            row.push_back(ToJson(rows.ValorEn(column), nullptr));
        values.push_back(std::move(row));
    }
    rows.MoverPrimero();
    return {{"columns", std::move(names)}, {"rows", std::move(values)}};
}

Json ObjectJson(const Ref<Object>& object, Handles* handles) {
    if (!object) return nullptr;
    Json json = Json::object();
    if (handles != nullptr) json["object"] = handles->Of(object);
    if (const auto* list = dynamic_cast<const Zontara::ListaCambios*>(object.get())) json["list"] = Notices(*list);
    if (auto* rows = dynamic_cast<Zontara::Recordset*>(object.get())) json["recordset"] = Rows(*rows);
    return json;
}

Json ListJson(const Zontara::Array& list, Handles* handles) {
    Json json = Json::array();
    for (const Value& each : list)
        json.push_back(ToJson(each, handles));
    return json;
}

}  // namespace

Json ToJson(const Value& value, Handles* handles) {
    switch (value.kind()) {
        case Value::Kind::Empty:
        case Value::Kind::Null:
        case Value::Kind::Absent:
            return nullptr;
        case Value::Kind::Bool:
            return value.Get<bool>();
        case Value::Kind::Byte:
            return value.Get<std::uint8_t>();
        case Value::Kind::Int16:
            return value.Get<std::int16_t>();
        case Value::Kind::Int32:
            return value.Get<std::int32_t>();
        case Value::Kind::Float32:
            return Number(value.Get<float>());
        case Value::Kind::Float64:
            return value.Get<double>();
        case Value::Kind::Money:
            return Amount(value.Get<Zontara::Money>());
        case Value::Kind::Date:
            return WriteDate(value.Get<Zontara::Date>());
        case Value::Kind::Text:
            return value.Get<std::string>();
        case Value::Kind::Object:
            return ObjectJson(value.Get<Ref<Object>>(), handles);
        case Value::Kind::List:
            return ListJson(value.Get<Zontara::Array>(), handles);
    }
    return nullptr;
}

std::string WriteDate(Zontara::Date date) {
    const bool midnight = Zontara::TimeOf(date) == Zontara::TimeOfDay{};
    return Zontara::Format(date, midnight ? "yyyy-mm-dd" : "yyyy-mm-ddThh:nn:ss");
}

}  // namespace host::rpc
