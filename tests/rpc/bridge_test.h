#pragma once

#include "host/rpc/bridge.h"
#include "host/rpc/json.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace support {

using host::rpc::Json;

inline Json Parse(const std::string& text) { return Json::parse(text); }

/// A bridge on a new database in memory, at eight in the morning of 2026-03-05.
inline host::rpc::Settings InMemory(bool trace = false) {
    host::rpc::Settings settings;
    settings.database = ":memory:";
    settings.create = true;
    settings.trace = trace;
    settings.now = Zontara::WithTime(Zontara::DateOf(2026, 3, 5), {8, 0, 0});
    return settings;
}

/// Requests to a bridge, and what comes back.
class Client {
public:
    explicit Client(const host::rpc::Settings& settings = InMemory()) : bridge(settings) {}

    /// The answer to a line as it stands; null for none.
    Json Line(const std::string& line) {
        const auto answer = bridge.Answer(line);
        return answer ? Json::parse(*answer) : Json();
    }
    /// The whole answer to a request.
    Json Answer(const std::string& method, const Json& params = Json()) {
        Json request{{"jsonrpc", "2.0"}, {"id", 1}, {"method", method}};
        if (!params.is_null()) request["params"] = params;
        return Line(request.dump());
    }
    /// The result of a request that must succeed.
    Json Result(const std::string& method, const Json& params = Json()) {
        const Json answer = Answer(method, params);
        EXPECT_TRUE(answer.contains("result")) << method << " " << params << "\n" << answer;
        return answer.value("result", Json());
    }
    /// The error of a request that must fail.
    Json Error(const std::string& method, const Json& params = Json()) {
        const Json answer = Answer(method, params);
        EXPECT_TRUE(answer.contains("error")) << method << " " << params << "\n" << answer;
        return answer.value("error", Json::object());
    }
    int Code(const std::string& method, const Json& params = Json()) { return Error(method, params).value("code", 0); }

    std::string Create(const std::string& name) { return Result("create", {{"class", name}})["object"]; }
    Json Invoke(const std::string& object, const std::string& member, const Json& args = Json::array()) {
        return Result("invoke", {{"object", object}, {"member", member}, {"args", args}});
    }
    Json Value(const std::string& object, const std::string& member, const Json& args = Json::array()) {
        return Invoke(object, member, args)["value"];
    }
    int InvokeCode(const std::string& object, const std::string& member, const Json& args) {
        return Code("invoke", {{"object", object}, {"member", member}, {"args", args}});
    }
    void Execute(const std::string& sql) { Result("execute", {{"sql", sql}}); }
    /// The rows of a query.
    Json Rows(const std::string& sql) { return Result("query", {{"sql", sql}})["recordset"]["rows"]; }

    host::rpc::Bridge bridge;
};

}  // namespace support
