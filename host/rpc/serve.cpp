#include "host/rpc/bridge.h"

#include <string>

namespace host::rpc {

namespace {

enum class Read { Line, TooLong, End };

/// The next line without its end. The last one needs no end. Nothing is kept of a line that is too long.
Read NextLine(std::istream& in, std::string& line) {
    using Traits = std::istream::traits_type;
    line.clear();
    bool any = false;
    bool tooLong = false;
    std::streambuf& buffer = *in.rdbuf();
    for (auto c = buffer.sbumpc(); !Traits::eq_int_type(c, Traits::eof()); c = buffer.sbumpc()) {
        any = true;
        if (Traits::to_char_type(c) == '\n') break;
        if (tooLong) continue;
        line.push_back(Traits::to_char_type(c));
        if (line.size() > kLongestLine) {
            tooLong = true;
            line = std::string();
        }
    }
    if (tooLong) return Read::TooLong;
    return any ? Read::Line : Read::End;
}

constexpr const char* kTooLong =
    R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700,"message":"Parse error: the line is too long"}})";

}  // namespace

void Serve(Bridge& bridge, std::istream& in, std::ostream& out) {
    std::string line;
    while (out) {
        const Read read = NextLine(in, line);
        if (read == Read::End) return;
        const std::optional<std::string> answer =
            read == Read::TooLong ? std::optional<std::string>(kTooLong) : bridge.Answer(line);
        if (answer) out << *answer << '\n' << std::flush;
    }
}

}  // namespace host::rpc
