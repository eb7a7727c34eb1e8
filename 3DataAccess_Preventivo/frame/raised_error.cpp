#include "frame/raised_error.h"

#include <utility>

namespace Zontara {

RaisedError::RaisedError(ErrorRecord record) : record_(std::move(record)) {}

RaisedError::~RaisedError() = default;

std::string TextOf(RunTimeError error) {
    switch (error) {
        case RunTimeError::InvalidCall:
            return "Invalid procedure call or argument";
        case RunTimeError::Overflow:
            return "Overflow";
        case RunTimeError::OutOfMemory:
            return "Out of memory";
        case RunTimeError::SubscriptOutOfRange:
            return "Subscript out of range";
        case RunTimeError::TypeMismatch:
            return "Type mismatch";
        case RunTimeError::ObjectNotSet:
            return "Object variable not set";
        case RunTimeError::InvalidUseOfNull:
            return "Invalid use of Null";
        case RunTimeError::CannotCreate:
            return "Component can't create object";
        case RunTimeError::NoSuchMember:
            return "Object doesn't support this property or method";
        case RunTimeError::Automation:
            return "Automation error";
        case RunTimeError::ArgumentNotFound:
            return "Named argument not found";
        case RunTimeError::ArgumentNotOptional:
            return "Argument not optional";
        case RunTimeError::TooManyArguments:
            return "Wrong number of arguments";
        case RunTimeError::NoCurrentRow:
            return "No current row";
        case RunTimeError::NoSuchField:
            return "Item not found in this collection";
    }
    return "Application-defined error";
}

void Raise(RunTimeError error) { Raise(error, TextOf(error)); }

void Raise(RunTimeError error, std::string description) {
    RaiseError(static_cast<std::int32_t>(error), "Zontara", std::move(description));
}

void RaiseError(std::int32_t number, std::string source, std::string description) {
    ErrorRecord record;
    record.number = number;
    record.source = std::move(source);
    record.description = std::move(description);
    throw RaisedError(std::move(record));
}

}  // namespace Zontara
