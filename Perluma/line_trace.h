#pragma once

#include "Perluma/change_list.h"
#include "Perluma/tracing_provider.h"
#include "frame/neighbours.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Perluma {

/// What the component asks of its neighbours, one line each, in a list that a client reads:
///
///     sql <text>                       a statement, before it runs
///     begin, commit, rollback          what reached the database
///     key <table> <key>
///     service <name>                   a call that went well
///     event <name> <argument>
///     notice <text>
class LineTrace : public TraceSink {
public:
    void Sql(const std::string& text) override;
    void Transaction(std::string_view what) override;
    void Key(const std::string& table, std::int32_t value) override;
    void Service(std::string_view name, const std::vector<Zontara::Value>& arguments,
                 const Zontara::Value& result) override;
    void Event(std::string_view name, const Zontara::Value& argument) override;
    void Notice(const std::string& text) override;

    const Zontara::Ref<ListaCambios>& Lines() const { return lines_; }

private:
    Zontara::Ref<ListaCambios> lines_ = std::make_shared<ListaCambios>();
};

}  // namespace Perluma
