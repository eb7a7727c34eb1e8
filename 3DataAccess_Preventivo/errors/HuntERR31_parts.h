#pragma once

#include "errors/HuntERR31.h"
#include "errors/switches.h"

#include <cstdint>
#include <string>
#include <string_view>

/// What is private to the module: its fields and the operations that `ErrorIn` and `ErrStepMode` are made of. The words
/// "under a trap" say that an operation leaves at its first failure and gives what it has by then, with no message.
namespace Zontara::HuntERR31 {

/// The fields of the module, one set per thread. Between two failures only the saved number, source, description and
/// help values of the last one are left in them, which nobody reads.
struct ModuleFields {
    std::int32_t mErrNumber = 0;
    std::string mErrSource;
    /// The saved description, which the report replaces before the raise.
    std::string mErrDescription;
    std::int32_t mErrLine = 0;
    /// "NoStop" switches the step dialog off for all levels above.
    std::string mErrHelpFile;
    std::string mErrHelpContext;
    /// The report under construction.
    std::string mErrReport;
    std::int32_t mErrSystemCode = 0;
    /// A failure is being handled, and its error is saved.
    bool mErrPreserved = false;
    /// Text waiting to be put behind the call-stack line.
    std::string mErrPending;
    /// Names of released objects.
    std::string mErrReleased;
    /// Long argument values collected for the call-stack line under construction.
    std::string mErrValues;
    /// A connection kept over from an object that is gone.
    Ref<Object> mErrConnection;
    /// `ErrorIn` is at work further up on this thread: an undoing call has come back with a failure of its own.
    bool inErrorIn = false;
};

ModuleFields& Fields();

/// Runs the work of an operation under a trap.
template <class Work> void UnderTrap(std::string_view operation, Work work) {
    try {
        if (CurrentSwitches().entering) CurrentSwitches().entering(operation);
        work();
    } catch (...) {
        // What the operation has by now stands; the failure that is being reported matters more than this one.
    }
}

// ---- the saved error
// -------------------------------------------------------------------------------------------------

/// Makes the saved error the current one. Nothing happens when none is saved.
void ErrRestore();
/// Whether the saved number lies in the band of the user errors.
bool ErrIsUserError();
/// Whether the saved description is a report already.
bool ErrIsPropagated();
/// Whether flags and mask have a bit in common.
bool ErrFlagSet(std::int32_t flags, std::int32_t mask);

// ---- header, system error, database and web section
// --------------------------------------------------------------------

/// Starts a report with its five header lines. Under a trap: a positive number from 262144 overflows, and the report
/// stays with the marks of the fields that weren't filled by then.
void ErrBuildHeader(std::string_view method);
/// Adds the line of the system's last error, unless its code is 0 or 203. Under a trap.
void ErrApiInfo();
/// The system's text for a code given as text, without line breaks and zero characters.
std::string ErrApiMessage(std::string_view code);
/// Adds the database section; nothing for no connection. Under a trap.
/// A collection gives its items as members named by their position from 0.
void ErrAdoInfo(const Ref<Object>& connection, const Ref<Object>& dbObject);
/// Version of the data-access runtime, or "?". Never fails.
std::string ErrAdoVersion();
/// Adds the web section, if the transaction context has a request. Under a trap.
/// The server variables are members of the request's `ServerVariables`.
void ErrWebInfo();
/// Replaces, in the report, every mark, name, mark by a value.
void ErrSetField(std::string_view name, std::string_view value);
/// The character that marks a field while a template is being filled.
std::string ErrFieldMark();
/// The bits of a connection's state in words.
std::string ErrStateText(std::int32_t state);
/// A number with its sign set apart: "+ 5", "- 5".
std::string ErrSignedText(std::int32_t number);
/// Version of the component, like "84.0.0".
std::string ErrVersionText();
/// Name of this computer, empty when the system can't tell.
std::string ErrComputerName();

// ---- call stack
// ------------------------------------------------------------------------------------------------------

/// A location taken apart: the method, and the names of its arguments as they stand, with commas.
struct Location {
    std::string method;
    std::string names;
};
/// Under a trap.
Location ErrSplitLocation(std::string_view location);

/// Adds the call-stack line of this level, its long values, and the line of further values. Under a trap.
void ErrCallStack(std::string_view method, std::string_view names, const Value& values, std::string_view envNames,
                  const Value& envValues);
/// The items of a list of values, each as name=value, with ", " between. A long value shows as {Text} and is put into
/// `mErrValues`. Under a trap.
std::string ErrFormatArgs(std::string_view names, const Value& values);
/// One value as a report shows it. Under a trap.
std::string ErrFormatValue(const Value& value);
/// A quoted XML text with one element to a line, indented by depth. Under a trap.
/// The blanks are limited to a multiple of the text's length (and to a million for a short one): what is nested beyond
/// any reason stands at the margin from there on, rather than filling the memory with blanks.
std::string ErrXmlIndent(std::string_view text);
/// Adds a line to the report. Nothing for a user error.
void ErrAddLine(std::string_view text);
/// The text filled up to a width in characters. A longer one stays whole.
std::string ErrPadRight(std::string_view text, std::string_view fill, std::int32_t width);

// ---- step dialog
// -----------------------------------------------------------------------------------------------------

/// First line of the report, or the saved description where there is no report yet.
std::string ErrFirstLine();
/// What the step dialog asks.
std::string ErrStepPrompt();

// ---- undoing calls
// ---------------------------------------------------------------------------------------------------

/// The connection behind a database object; the one that was kept over for no object. None after any failure. With
/// `detach` the member that it was read from is set to none.
Ref<Object> ErrDbConnection(const Ref<Object>& dbObject, bool detach);
/// Sends at most one undoing call: to the controller, else to the context, else to the connection; and adds its
/// outcome. Under a trap.
void ErrRollback(std::int32_t flags, const Ref<Object>& connection, const Ref<Object>& transControl);
/// Sends `Close` to a connection that isn't closed, and adds the outcome. Under a trap.
void ErrCloseConnection(const Ref<Object>& connection);
/// Calls `Close`, `DisableCommit`, `SetAbort` or `RollbackTrans` by name and tells how it went. Any other name fails
/// like a call that went wrong. Never raises what the call raised.
std::string ErrCallMethod(const Ref<Object>& target, std::string_view member);
/// The transaction context: none.
Ref<Object> ErrObjectContext();

}  // namespace Zontara::HuntERR31
