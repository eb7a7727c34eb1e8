#include "host/rpc/bridge.h"

#include "frame/raised_error.h"

#include <new>
#include <utility>

namespace host::rpc {

namespace {

Json WithId(const Json& id, Json outcome) {
    Json answer{{"jsonrpc", "2.0"}, {"id", id}};
    answer.update(outcome);
    return answer;
}

Json ErrorJson(Code code, const std::string& message) {
    return {{"error", {{"code", static_cast<int>(code)}, {"message", message}}}};
}

bool IsId(const Input& json) { return json.is_string() || json.is_number() || json.is_null(); }

}  // namespace

/// A request as far as it could be read.
struct Bridge::Request {
    /// The id to answer under; null where there is none that can be told.
    Json id;
    /// Why it is no request; empty when it is one.
    std::string fault;
    bool notification = false;
    std::string method;
    const Input* params = nullptr;
};

Bridge::Bridge(const Settings& settings) : session_(settings) {}

Bridge::~Bridge() { handles_.Clear(); }

Bridge::Request Bridge::ReadRequest(const Input& json) {
    Request request;
    if (json.is_array()) {
        request.fault = "a batch is not taken: one request a line";
        return request;
    }
    if (!json.is_object()) {
        request.fault = "a request is an object";
        return request;
    }
    const auto id = json.find("id");
    const bool idIsOne = id == json.end() || IsId(*id);
    if (id != json.end() && idIsOne) request.id = Json(*id);
    const auto version = json.find("jsonrpc");
    const auto method = json.find("method");
    if (!idIsOne) {
        request.fault = "id must be a text, a number or null";
    } else if (version == json.end() || *version != "2.0") {
        request.fault = "jsonrpc must be \"2.0\"";
    } else if (method == json.end() || !method->is_string()) {
        request.fault = "method must be a text";
    } else {
        request.notification = id == json.end();
        request.method = method->get<std::string>();
        const auto params = json.find("params");
        if (params != json.end()) request.params = &*params;
    }
    return request;
}

std::optional<std::string> Bridge::Answer(std::string_view text) {
    const std::optional<Line> line = ReadLine(text);
    if (!line) return WriteLine(WithId(nullptr, ErrorJson(Code::NoJson, "Parse error: the line is no JSON")));
    const Request request = ReadRequest(line->json);
    if (!request.fault.empty()) {
        return WriteLine(WithId(request.id, ErrorJson(Code::NoRequest, "Invalid Request: " + request.fault)));
    }
    Json outcome = Outcome(request, line->numberTooLarge);
    if (request.notification) return std::nullopt;
    return WriteLine(WithId(request.id, std::move(outcome)));
}

Json Bridge::Outcome(const Request& request, bool numberTooLarge) {
    const Method method = MethodOf(request.method);
    if (method == nullptr) return ErrorJson(Code::NoSuchMethod, "Method not found: " + request.method);

    Trace* const trace = session_.Traced();
    const bool traced = trace != nullptr && (method == &Bridge::Invoke || method == &Bridge::Set);
    if (trace != nullptr) trace->Take();
    try {
        if (numberTooLarge) throw Refusal(Code::WrongParameters, "a number is out of the range of any type");
        Json result = (this->*method)(request.params);
        if (traced) result["trace"] = trace->Take();
        return {{"result", std::move(result)}};
    } catch (const Refusal& refusal) {
        return Failed(static_cast<int>(refusal.code()), std::string("Invalid params: ") + refusal.what(), {}, traced);
    } catch (const Zontara::RaisedError& error) {
        Json data{{"source", error.Source()},
                  {"helpFile", error.Record().helpFile},
                  {"helpContext", error.Record().helpContext}};
        return Failed(error.Number(), error.Description(), std::move(data), traced);
    } catch (const std::bad_alloc&) {
        return Failed(static_cast<int>(Code::Internal), "Internal error: out of memory", {}, traced);
    } catch (const std::exception& error) {
        return Failed(static_cast<int>(Code::Internal), std::string("Internal error: ") + error.what(), {}, traced);
    }
}

Json Bridge::Failed(int code, const std::string& message, Json data, bool traced) {
    if (traced) data["trace"] = session_.Traced()->Take();
    Json error{{"code", code}, {"message", message}};
    if (!data.is_null()) error["data"] = std::move(data);
    return {{"error", std::move(error)}};
}

}  // namespace host::rpc
