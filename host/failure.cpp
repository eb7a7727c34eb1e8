#include "host/failure.h"

#include "host/program.h"

#include <fmt/format.h>

namespace host {

namespace {

/// The report with the line ends of this system.
std::string Unix(const std::string& report) {
    std::string lines;
    lines.reserve(report.size());
    for (const char c : report) {
        if (c != '\r') lines += c;
    }
    while (!lines.empty() && lines.back() == '\n')
        lines.pop_back();
    return lines;
}

bool HoldsReport(const Zontara::RaisedError& error) { return error.Source() == "HuntERR.ErrorIn"; }

void ReportError(std::ostream& err, const std::string& command, const Zontara::RaisedError& error) {
    err << fmt::format("zontara {}: {}\n", command, CauseOf(error));
    const std::string advice = AdviceOn(error);
    if (!advice.empty()) err << advice << '\n';
    if (command == "launch") err << "Nothing was launched.\n";
    if (command == "import") err << "Nothing was imported.\n";
    if (HoldsReport(error)) err << "\nError report:\n" << Unix(error.Description()) << '\n';
}

}  // namespace

std::optional<int> EngineCode(const Zontara::RaisedError& error) {
    const std::int64_t code = std::int64_t{error.Number()} - Zontara::vbObjectError;
    if (code < 1 || code > 28) return std::nullopt;
    return static_cast<int>(code);
}

std::string AdviceOn(const Zontara::RaisedError& error) {
    const std::optional<int> code = EngineCode(error);
    // What the connection says of a database that it can't open tells already what to do.
    if (!code || error.Description().rfind("The database \"", 0) == 0) return {};
    switch (*code) {
        case 1:
            if (error.Description().find("no such ") == std::string::npos) return {};
            return "The database isn't of this version's schema. Make a new one with `zontara init`.";
        case 5:
        case 6:
            return "Another program holds the database. Try again when it has finished.";
        case 8:
            return "The database may not be written. Check the rights of the file and of its folder.";
        case 9:
            return "A statement took more steps than one may. Ask for less at a time.";
        case 10:
            return "The disk refused. Check it, then try again.";
        case 11:
            return "The file is damaged. Take a copy that is whole.";
        case 13:
            return "The disk is full. Make room, then try again.";
        case 14:
            return "Check the path, the rights of the file and of its folder, and that the folder exists.";
        case 26:
            return "The file is no database. Name another one, or make one with `zontara init`.";
        default:
            return {};
    }
}

std::string CauseOf(const Zontara::RaisedError& error) {
    std::string cause = Unix(error.Description());
    if (HoldsReport(error)) cause.resize(std::min(cause.find('\n'), cause.size()));
    while (!cause.empty() && cause.back() == ' ')
        cause.pop_back();
    return cause.empty() ? fmt::format("error {}", error.Number()) : cause;
}

int ReportFailure(std::ostream& err, const std::string& command) {
    try {
        throw;
    } catch (const UsageFailure& failure) {
        err << fmt::format("zontara {}: {}\nRun `zontara {} --help` for more.\n", command, failure.what(), command);
        return kUsage;
    } catch (const Failure& failure) {
        err << fmt::format("zontara {}: {}\n", command, failure.what());
    } catch (const Zontara::RaisedError& error) {
        ReportError(err, command, error);
    } catch (const std::bad_alloc&) {
        err << fmt::format("zontara {}: out of memory\n", command);
    } catch (const std::exception& error) {
        err << fmt::format("zontara {}: {}\n", command, error.what());
    }
    return kFailed;
}

}  // namespace host
