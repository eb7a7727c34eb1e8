#pragma once

#include "Perluma/tracing_provider.h"
#include "host/rpc/json.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host::rpc {

/// What the component asked of its neighbours, as an array of entries in the order in which it did.
class Trace : public Perluma::TraceSink {
public:
    void Sql(const std::string& text) override;
    void Transaction(std::string_view what) override;
    void Key(const std::string& table, std::int32_t value) override;
    void Service(std::string_view name, const std::vector<Zontara::Value>& arguments,
                 const Zontara::Value& result) override;
    void Event(std::string_view name, const Zontara::Value& argument) override;
    void Notice(const std::string& text) override;

    /// The entries since the last time, which are forgotten.
    Json Take();

private:
    Json entries_ = Json::array();
};

}  // namespace host::rpc
