#pragma once

#include "frame/export.h"

#include <cstdint>
#include <exception>
#include <string>

namespace Zontara {

/// Numbers of the platform's run-time errors that the component raises.
enum class RunTimeError : std::int32_t {
    InvalidCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    ObjectNotSet = 91,
    InvalidUseOfNull = 94,
    CannotCreate = 429,
    NoSuchMember = 438,
    Automation = 440,
    ArgumentNotFound = 448,
    ArgumentNotOptional = 449,
    TooManyArguments = 450,
    NoCurrentRow = 3021,
    NoSuchField = 3265,
};

/// Base of application errors: an engine's refusal is this plus the engine's own code.
inline constexpr std::int32_t vbObjectError = -2147221504;

/// What is known of one failure.
struct ErrorRecord {
    std::int32_t number = 0;
    std::string source;
    std::string description;
    std::string helpFile;
    std::int32_t helpContext = 0;
    /// Last error code of the system as the raiser set it; 0 for none.
    std::int32_t systemCode = 0;
    /// Line of the failing statement; 0 where the code has no numbered lines.
    std::int32_t line = 0;

    friend bool operator==(const ErrorRecord&, const ErrorRecord&) = default;
};

/// The one exception type of the component. Its text is the description, which after the first trap is the
/// whole report.
class ZONTARA_EXPORT RaisedError : public std::exception {
public:
    explicit RaisedError(ErrorRecord record);
    RaisedError(const RaisedError&) = default;
    RaisedError& operator=(const RaisedError&) = default;
    ~RaisedError() override;

    const ErrorRecord& Record() const { return record_; }
    std::int32_t Number() const { return record_.number; }
    const std::string& Source() const { return record_.source; }
    const std::string& Description() const { return record_.description; }
    const char* what() const noexcept override { return record_.description.c_str(); }

private:
    ErrorRecord record_;
};

/// Raises a run-time error with its usual text and the source "Zontara".
[[noreturn]] ZONTARA_EXPORT void Raise(RunTimeError error);
/// The same with a text that says more, such as the name that was not found.
[[noreturn]] ZONTARA_EXPORT void Raise(RunTimeError error, std::string description);
/// Raises any error.
[[noreturn]] ZONTARA_EXPORT void RaiseError(std::int32_t number, std::string source, std::string description);

/// The usual text of a run-time error: "Overflow", "Type mismatch", ...
ZONTARA_EXPORT std::string TextOf(RunTimeError error);

}  // namespace Zontara
