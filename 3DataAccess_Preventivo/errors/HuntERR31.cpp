#include "errors/HuntERR31.h"

#include "errors/HuntERR31_parts.h"
#include "errors/current_error.h"

#include <charconv>
#include <new>
#include <utility>

namespace Zontara::HuntERR31 {

namespace {

constexpr std::string_view kErrorLost =
    "ErrorIn: Error information was lost. To fix: call ErrPreserve before doing anything in error handler.";

std::int32_t HelpContextOf(const std::string& text) {
    std::int32_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// While it lives `ErrorIn` is at work; afterwards the module is ready for the next failure, however it was left.
class AtWork {
public:
    AtWork() { Fields().inErrorIn = true; }
    ~AtWork() {
        ModuleFields& fields = Fields();
        // Swapped away rather than cleared, so that no thread keeps the memory of a huge report.
        for (std::string* text : {&fields.mErrPending, &fields.mErrReleased, &fields.mErrValues, &fields.mErrReport}) {
            std::string().swap(*text);
        }
        fields.mErrPreserved = false;
        // The object's own end may come back here once more.
        const Ref<Object> connection = std::exchange(fields.mErrConnection, nullptr);
        fields.inErrorIn = false;
    }
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;
};

void SayThatTheErrorWasLost() {
    CurrentError().number = ERR_GENERAL;
    CurrentError().description = kErrorLost;
}

/// What an undoing call that comes back here gets: its own failure, as it stands.
std::string RaiseReentrant(std::int32_t flags) {
    if (CurrentError().number == 0) SayThatTheErrorWasLost();
    if (ErrFlagSet(flags, ERRF_RAISE)) RaiseCurrentError();
    return {};
}

void AddReleasedObjects() {
    UnderTrap("ReleasedObjects", [] {
        if (!Fields().mErrReleased.empty()) ErrAddLine("    Released Objects: " + Fields().mErrReleased);
    });
}

void AddPending() {
    UnderTrap("Pending", [] {
        Fields().mErrReport += Fields().mErrPending;
        Fields().mErrPending.clear();
    });
}

void Save(const ErrorRecord& error) {
    ModuleFields& fields = Fields();
    fields.mErrNumber = error.number;
    fields.mErrDescription = error.description;
    fields.mErrSource = error.source;
    fields.mErrHelpFile = error.helpFile;
    fields.mErrHelpContext = std::to_string(error.helpContext);
    fields.mErrLine = error.line;
    fields.mErrSystemCode = error.systemCode;
}

/// One level's arguments as `ErrorIn` got them.
struct Level {
    std::string_view location;
    const Value& arguments;
    std::int32_t flags;
    const Ref<Object>& dbObject;
    std::string_view envNames;
    const Value& envValues;
};

/// Starts the report, or goes on with the one that came, and writes this level into it.
void ReportLevel(const Level& level, const Ref<Object>& connection) {
    const Location split = ErrSplitLocation(level.location);
    if (ErrIsPropagated()) {
        Fields().mErrReport = std::move(Fields().mErrDescription);
    } else {
        ErrBuildHeader(split.method);
        ErrApiInfo();
        ErrAdoInfo(connection, level.dbObject);
        if (ErrFlagSet(level.flags, ERRF_WEBINFO)) ErrWebInfo();
    }
    ErrCallStack(split.method, split.names, level.arguments, level.envNames, level.envValues);
    AddPending();
    AddReleasedObjects();
}

}  // namespace

ModuleFields& Fields() {
    thread_local ModuleFields fields;
    return fields;
}

void ErrPreserve() {
    if (CurrentError().number == 0 || Fields().mErrPreserved) return;
    try {
        Save(CurrentError());
    } catch (const std::bad_alloc&) {
        CurrentError() = OutOfMemory();
        Save(CurrentError());
    }
    Fields().mErrPreserved = true;
}

void ErrRestore() {
    const ModuleFields& fields = Fields();
    if (!fields.mErrPreserved) return;
    ClearError();
    ErrorRecord& current = CurrentError();
    current.number = fields.mErrNumber;
    current.source = fields.mErrSource;
    current.description = fields.mErrDescription;
    if (!fields.mErrHelpContext.empty()) current.helpContext = HelpContextOf(fields.mErrHelpContext);
    current.helpFile = fields.mErrHelpFile;
}

bool ErrIsUserError() { return Fields().mErrNumber >= kLowestUserError && Fields().mErrNumber <= kHighestUserError; }

bool ErrIsPropagated() { return Fields().mErrSource == kReportSource; }

bool ErrFlagSet(std::int32_t flags, std::int32_t mask) { return (flags & mask) != 0; }

void ErrAddLine(std::string_view text) {
    if (ErrIsUserError()) return;
    std::string& report = Fields().mErrReport;
    report += text;
    report += "\r\n";
}

std::string ErrorIn(std::string_view location, const Value& arguments, std::int32_t flags, const Ref<Object>& dbObject,
                    std::string_view envNames, const Value& envValues, const Ref<Object>& transControl) {
    ModuleFields& fields = Fields();
    if (fields.inErrorIn) return RaiseReentrant(flags);
    const AtWork atWork;
    if (CurrentError().number == 0 && !fields.mErrPreserved) SayThatTheErrorWasLost();
    ErrPreserve();
    const Ref<Object> connection = ErrDbConnection(dbObject, false);
    const bool plain = ErrIsUserError();
    const bool report = !plain && ErrFlagSet(flags, ERRF_REPORT);
    fields.mErrReport.clear();
    if (report) ReportLevel({location, arguments, flags, dbObject, envNames, envValues}, connection);
    ErrRollback(flags, connection, transControl);
    if (!plain && ErrFlagSet(flags, ERRF_CLOSE)) ErrCloseConnection(connection);
    if (report) {
        fields.mErrSource = kReportSource;
        fields.mErrDescription = std::move(fields.mErrReport);
    }
    // Should the memory not be there for the whole report, the number still goes out.
    UnderTrap("ErrRestore", ErrRestore);
    if (ErrFlagSet(flags, ERRF_RAISE)) RaiseCurrentError();
    return report ? fields.mErrDescription : std::string();
}

}  // namespace Zontara::HuntERR31
