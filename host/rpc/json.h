#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

/// The scripting bridge: calls of every public class by name, as JSON-RPC 2.0 over lines.
namespace host::rpc {

/// What goes out. Members keep the order in which they were put in, so that an answer reads as it is described.
using Json = nlohmann::ordered_json;
/// What comes in. Any number of members is found quickly.
using Input = nlohmann::json;

/// Error codes of JSON-RPC.
enum class Code : int {
    NoJson = -32700,
    NoRequest = -32600,
    NoSuchMethod = -32601,
    WrongParameters = -32602,
    Internal = -32603,
};

/// The bridge turns a request down, before anything was called.
class Refusal : public std::runtime_error {
public:
    Refusal(Code code, const std::string& why) : std::runtime_error(why), code_(code) {}
    Code code() const { return code_; }

private:
    Code code_;
};

/// What a line holds.
struct Line {
    Input json;
    /// A number in it fits no number of this machine, such as 1e999; it stands as a very large one.
    bool numberTooLarge = false;
};

/// Reads a line. None for what is no JSON: broken syntax, invalid UTF-8, lone surrogates. Values nested deeper than any
/// request needs are dropped, so that no nesting is too deep; their surroundings stay.
std::optional<Line> ReadLine(std::string_view text);

/// JSON as one line. Invalid UTF-8 in a text becomes the replacement character.
std::string WriteLine(const Json& json);

}  // namespace host::rpc
