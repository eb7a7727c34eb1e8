#include "host/rpc/command.h"

#include "frame/raised_error.h"
#include "frame/regional.h"
#include "host/commands/options.h"
#include "host/failure.h"
#include "host/rpc/bridge.h"
#include "host/rpc/values.h"

#include <fmt/format.h>
#include <csignal>
#include <iostream>
#include <memory>

namespace host {

namespace {

struct RpcOptions {
    rpc::Settings settings;
    std::string now;
};

void CheckShortDate(const std::string& form) {
    try {
        const Zontara::Regional checked(form);
    } catch (const Zontara::RaisedError&) {
        throw UsageFailure(
            fmt::format("--short-date {}: a form holds dd, mm and yyyy with /, - or . between them.", form));
    }
}

void RunRpc(RpcOptions& options, std::istream& in, Console& console) {
    CheckShortDate(options.settings.shortDate);
    if (!options.now.empty()) {
        options.settings.now = rpc::ReadDate(options.now);
        if (!options.settings.now) {
            throw UsageFailure(fmt::format(
                "--now {}: a date and time reads like 2026-03-05T08:00:00, a date like 2026-03-05.", options.now));
        }
    }
#ifdef SIGPIPE
    // A client that stops reading is the end of the session, not of the process.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    rpc::Bridge bridge(options.settings);
    rpc::Serve(bridge, in, console.out);
}

}  // namespace

void AddRpcCommand(CLI::App& app, Console& console) { AddRpcCommand(app, console, std::cin); }

void AddRpcCommand(CLI::App& app, Console& console, std::istream& in) {
    auto options = std::make_shared<RpcOptions>();
    CLI::App* command =
        AddCommand(app, "rpc", "Let another program call the component: JSON-RPC 2.0, one request a line on the input.",
                   R"(echo '{"jsonrpc":"2.0","id":1,"method":"describe"}' | zontara rpc plant.db)");
    command->add_option("DB", options->settings.database, "The database file, or :memory:")->required();
    command->add_flag("--create", options->settings.create, "Make a missing file, and the schema in an empty one");
    command->add_flag("--trace", options->settings.trace, "Tell in each answer what the component asked for");
    command->add_option("--now", options->now, "The present date and time, as 2026-03-05T08:00:00");
    command->add_option("--short-date", options->settings.shortDate, "The short date form (dd/mm/yyyy)");
    command->callback([options, &in, &console] { RunRpc(*options, in, console); });
}

}  // namespace host
