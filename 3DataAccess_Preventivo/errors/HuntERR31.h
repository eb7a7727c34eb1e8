#pragma once

#include "frame/object.h"
#include "frame/raised_error.h"
#include "frame/value.h"

#include <cstdint>
#include <string>
#include <string_view>

/// The component's whole answer to failure. Every handler calls `ErrStepMode` and then `ErrorIn`, which writes one more
/// level of a growing text report, sends the undoing calls that its flags ask for, and raises the same number again. So
/// a failure deep down reaches the client as its first number, with the whole report as its description.
///
/// Three ideas hold it together. The failure is captured first, since anything that runs in a handler can disturb it.
/// There is one report: a raised error of the source `kReportSource` carries it in its description, and each level
/// appends. And the errors of one band of numbers pass through plain, with their clean-up but without a report.
///
/// A method doesn't call these itself: `Trap` of errors/trap.h does. All state is per thread, and a thread handles one
/// failure at a time. Nothing here runs unless something failed.
namespace Zontara::HuntERR31 {

/// Source of an error whose description is a report.
inline constexpr std::string_view kReportSource = "HuntERR.ErrorIn";

/// The band of the user errors, both ends included. No code of the component raises one.
inline constexpr std::int32_t kLowestUserError = vbObjectError + 4197;
inline constexpr std::int32_t kHighestUserError = vbObjectError + 5197;
/// First number of the module's own, and the only one that it raises: the error was lost, or a method is unknown.
inline constexpr std::int32_t ERRMAP_APP_FIRST = vbObjectError + 5198;
inline constexpr std::int32_t ERR_GENERAL = ERRMAP_APP_FIRST;

/// What `ErrorIn` is to do, as a sum. Each flag is looked at by itself.
enum Flag : std::int32_t {
    /// Raise the error again at the end.
    ERRF_RAISE = 1,
    /// Start a report, or add this level to the one that came.
    ERRF_REPORT = 2,
    /// Send `SetAbort` to the transaction context, if there is one.
    ERRF_SETABORT = 4,
    /// Send `DisableCommit` to the transaction context, if there is one.
    ERRF_DISABLECOMMIT = 8,
    /// Send `RollbackTrans` to the connection, unless the context or a controller was told.
    ERRF_ROLLBACK = 16,
    /// Put the web section into a new report, if the context has a request.
    ERRF_WEBINFO = 32,
    /// Send `Close` to the connection. Not for a user error.
    ERRF_CLOSE = 64,
};

/// The flags of nearly all handlers, which hand over the shared connection.
inline constexpr std::int32_t kStandardFlags = ERRF_RAISE | ERRF_REPORT | ERRF_ROLLBACK | ERRF_WEBINFO;
/// The flags of the handlers that have no database object to hand over.
inline constexpr std::int32_t kFlagsWithoutConnection = ERRF_RAISE | ERRF_REPORT | ERRF_DISABLECOMMIT | ERRF_WEBINFO;

/// Saves the thread's current error, out of reach of whatever the handler does next. Nothing happens when there is no
/// current error, or when one is saved already. When there is no memory for its texts, error 7 takes its place.
void ErrPreserve();

/// The first call of every handler: saves the current error, and asks the developer, if the step dialog is switched on,
/// whether the failed work is to be done again. True says that it is. The component has the dialog off, so the
/// answer is false and nothing is shown.
bool ErrStepMode();

/// Ends a failure at one level: adds the level to the report, sends the undoing calls, and raises the error again with
/// its first number, its help file and its help context. With no error at hand it raises `ERR_GENERAL`, and says that
/// the error was lost.
///
/// `location` is the method with the names of its arguments, like "CBoletin.Buscar(SC_Boletin,sColumnas)". `arguments`
/// holds their values: a list in that order, the value itself for one, absent for none. Values and names are paired by
/// position; a surplus name is left out, a surplus value stands without a name. `flags` is a sum of `Flag`.
/// `dbObject` is a connection, a command, a recordset, anything with a `Connection` member, or none. `envNames` and
/// `envValues` are shown likewise on a line of their own. `transControl`, unless it is none, gets `SetAbort` instead of
/// any other undoing call, whatever the flags say.
///
/// Gives the report, but only when `ERRF_RAISE` isn't among the flags. For a user error it gives the empty text and the
/// error keeps its source and description.
///
/// Nothing that goes wrong on the way takes the failure's place: a section that fails makes the report shorter, an
/// undoing call that fails is written down. When an undoing call comes back here with a failure of its own, that one is
/// raised as it stands, with no report and no undoing of its own, and the saved error isn't touched.
std::string ErrorIn(std::string_view location, const Value& arguments, std::int32_t flags,
                    const Ref<Object>& dbObject = {}, std::string_view envNames = {}, const Value& envValues = Absent{},
                    const Ref<Object>& transControl = {});

}  // namespace Zontara::HuntERR31
