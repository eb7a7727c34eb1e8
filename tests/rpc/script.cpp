#include "tests/rpc/script.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace support {

using host::rpc::Json;

namespace {

/// Takes the first word off a text.
std::string TakeWord(std::string& text) {
    const std::size_t end = text.find(' ');
    std::string word = text.substr(0, end);
    text.erase(0, end == std::string::npos ? end : end + 1);
    return word;
}

/// The JSON strings of a text, one behind the other, joined.
std::string Joined(const std::string& text) {
    std::string joined;
    for (std::size_t at = text.find('"'); at != std::string::npos; at = text.find('"', at)) {
        std::size_t end = at + 1;
        while (text.at(end) != '"')
            end += text[end] == '\\' ? 2 : 1;
        joined += Json::parse(text.substr(at, end + 1 - at)).get<std::string>();
        at = end + 1;
    }
    return joined;
}

Json ServiceEntry(std::string rest) {
    const std::string name = TakeWord(rest);
    const std::size_t arrow = rest.rfind(" -> ");
    return {{"service", name},
            {"args", Json::parse(rest.substr(0, arrow))},
            {"result", Json::parse(rest.substr(arrow + 4))}};
}

/// The trace entry that a line stands for; none for another line.
std::optional<Json> TraceEntry(const std::string& word, std::string rest) {
    if (word == "sql") return Json{{"sql", Joined(rest)}};
    if (word == "begin" || word == "commit" || word == "rollback") return Json{{"transaction", word}};
    if (word == "notice") return Json{{"notice", Joined(rest)}};
    if (word == "service") return ServiceEntry(std::move(rest));
    const bool event = word == "event";
    if (!event && word != "key") return std::nullopt;
    const std::string name = TakeWord(rest);
    return Json{{word, name}, {event ? "args" : "value", Json::parse(rest)}};
}

void Expect(Step& step, const std::string& line) {
    std::string rest = line;
    const std::string word = TakeWord(rest);
    if (std::optional<Json> entry = TraceEntry(word, rest)) {
        step.trace.push_back(std::move(*entry));
    } else if (word == "=") {
        step.value = Json::parse(rest);
    } else if (word == "columns") {
        step.columns = Json::parse(rest);
    } else if (word == "row") {
        step.rows.push_back(Json::parse(rest));
    } else if (word == "byref") {
        step.byref = Json::parse(rest);
    } else if (word == "error") {
        step.error = std::stoi(TakeWord(rest));
        step.words = Joined(rest);
    } else if (word == "stack") {
        step.stack = Joined(rest);
    } else {
        throw std::runtime_error("unknown expectation: " + line);
    }
}

Step Request(int number, std::string line) {
    Step step;
    step.line = number;
    step.verb = TakeWord(line);
    if (step.verb == "execute" || step.verb == "query") {
        step.target = line;
        return step;
    }
    step.target = TakeWord(line);
    step.member = TakeWord(line);
    step.arguments = line;
    return step;
}

}  // namespace

std::vector<Step> ReadScript(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("no script " + path);
    std::vector<Step> steps;
    std::string pending;
    const auto finish = [&] {
        if (!pending.empty()) Expect(steps.at(steps.size() - 1), pending);
        pending.clear();
    };
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        const std::size_t start = line.find_first_not_of(' ');
        if (start != std::string::npos && start > 0 && line[start] == '"') {
            pending += " " + line.substr(start);
            continue;
        }
        finish();
        if (start == std::string::npos || line[start] == '#') continue;
        if (start > 0) {
            pending = line.substr(start);
        } else {
            steps.push_back(Request(number, line));
        }
    }
    finish();
    return steps;
}

}  // namespace support
