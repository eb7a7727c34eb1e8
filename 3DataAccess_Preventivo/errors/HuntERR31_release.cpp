#include "errors/HuntERR31_parts.h"
#include "errors/current_error.h"
#include "frame/convert.h"

#include <algorithm>
#include <array>

namespace Zontara::HuntERR31 {

namespace {

constexpr std::array<std::string_view, 4> kUndoingCalls = {"Close", "DisableCommit", "SetAbort", "RollbackTrans"};

std::int32_t StateOf(const Ref<Object>& connection) { return ConvertTo<std::int32_t>(connection->ReadMember("State")); }

/// Makes the undoing call and gives what is said of it, empty when there is nothing to undo.
std::string Undo(std::int32_t flags, const Ref<Object>& connection, const Ref<Object>& transControl) {
    if (transControl) {
        return "Attempt to call TransControlObject.SetAbort: " + ErrCallMethod(transControl, "SetAbort");
    }
    const Ref<Object> context = ErrObjectContext();
    if (context && ErrFlagSet(flags, ERRF_SETABORT)) {
        return "Attempt to call ObjectContext.SetAbort " + ErrCallMethod(context, "SetAbort");
    }
    if (context && ErrFlagSet(flags, ERRF_DISABLECOMMIT)) {
        return "Attempt to call ObjectContext.DisableCommit " + ErrCallMethod(context, "DisableCommit");
    }
    if (!connection || !ErrFlagSet(flags, ERRF_ROLLBACK)) return {};
    if (StateOf(connection) == 0) return "Could not call RollbackTrans: Connection is closed ";
    return "Attempt to call RollbackTrans " + ErrCallMethod(connection, "RollbackTrans");
}

}  // namespace

Ref<Object> ErrDbConnection(const Ref<Object>& dbObject, bool detach) {
    Ref<Object> connection;
    UnderTrap("ErrDbConnection", [&] {
        if (!dbObject) {
            connection = Fields().mErrConnection;
            return;
        }
        const std::string type = dbObject->TypeName();
        if (type == "Connection") {
            connection = dbObject;
            return;
        }
        const std::string_view member = type == "Command" || type == "Recordset" ? "ActiveConnection" : "Connection";
        const Value read = dbObject->ReadMember(member);
        if (detach) dbObject->WriteMember(member, Value(nullptr));
        if (read.Is<Ref<Object>>()) connection = read.Get<Ref<Object>>();
    });
    return connection;
}

void ErrRollback(std::int32_t flags, const Ref<Object>& connection, const Ref<Object>& transControl) {
    UnderTrap("ErrRollback", [&] {
        const std::string outcome = Undo(flags, connection, transControl);
        if (!outcome.empty()) ErrAddLine("    Transaction: " + outcome);
    });
}

void ErrCloseConnection(const Ref<Object>& connection) {
    UnderTrap("ErrCloseConnection", [&] {
        if (!connection || StateOf(connection) == 0) return;
        ErrAddLine("    Connection: Attempt to call Close " + ErrCallMethod(connection, "Close"));
    });
}

std::string ErrCallMethod(const Ref<Object>& target, std::string_view member) {
    try {
        if (CurrentSwitches().entering) CurrentSwitches().entering("ErrCallMethod");
        if (std::find(kUndoingCalls.begin(), kUndoingCalls.end(), member) == kUndoingCalls.end()) {
            RaiseError(ERR_GENERAL, "HuntERR.ErrCallMethod", "Unknown method");
        }
        if (!target) Raise(RunTimeError::ObjectNotSet);
        target->CallMember(member);
        return "succeeded";
    } catch (...) {
        return "failed with error '" + ErrorInFlight().description + "'";
    }
}

Ref<Object> ErrObjectContext() { return CurrentSwitches().ErrObjectContext; }

}  // namespace Zontara::HuntERR31
