#include "host/rpc/trace.h"

#include "host/rpc/values.h"

#include <utility>

namespace host::rpc {

void Trace::Sql(const std::string& text) { entries_.push_back({{"sql", text}}); }

void Trace::Transaction(std::string_view what) { entries_.push_back({{"transaction", what}}); }

void Trace::Key(const std::string& table, std::int32_t value) {
    entries_.push_back({{"key", table}, {"value", value}});
}

void Trace::Service(std::string_view name, const std::vector<Zontara::Value>& arguments, const Zontara::Value& result) {
    Json shown = Json::array();
    for (const Zontara::Value& each : arguments)
        shown.push_back(ToJson(each, nullptr));
    entries_.push_back({{"service", name}, {"args", std::move(shown)}, {"result", ToJson(result, nullptr)}});
}

void Trace::Event(std::string_view name, const Zontara::Value& argument) {
    entries_.push_back({{"event", name}, {"args", Json::array({ToJson(argument, nullptr)})}});
}

void Trace::Notice(const std::string& text) { entries_.push_back({{"notice", text}}); }

Json Trace::Take() { return std::exchange(entries_, Json::array()); }

}  // namespace host::rpc
