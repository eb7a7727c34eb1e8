#include "dhRichClient3/dialect/door.h"
#include "dhRichClient3/sqlite/engine.h"

#include <sqlite3.h>

#include <new>
#include <string>

/// The second lock: the engine itself asks it about everything that a statement would do.
namespace dhRichClient3 {

const char* Engine::ReasonAgainst(int action, const char* first, const char* second) const {
    switch (action) {
        case SQLITE_SELECT:
        case SQLITE_RECURSIVE:
            return nullptr;
        case SQLITE_READ:
            return first && !dialect::MayRead(first) ? "A statement may not ask the engine about itself" : nullptr;
        case SQLITE_INSERT:
        case SQLITE_UPDATE:
        case SQLITE_DELETE:
            return first && !dialect::MayWrite(first) ? "The engine's own tables may not be changed" : nullptr;
        case SQLITE_FUNCTION:
            return second && !dialect::MayCall(second) ? "A statement may not call this function" : nullptr;
        default:
            return "Only SELECT, INSERT, UPDATE and DELETE are allowed here";
    }
}

/// Triggers and views are asked about as if their statements stood in the text.
void Engine::NoteReach(int action, const char* first, const char* second) noexcept {
    if (!compiling_) compiledAnew_ = true;
    switch (action) {
        case SQLITE_READ:
            if (first) reach_.reads |= changes_.Bit(first);
            break;
        case SQLITE_INSERT:
        case SQLITE_UPDATE:
        case SQLITE_DELETE:
            if (first) reach_.writes |= changes_.Bit(first);
            break;
        case SQLITE_FUNCTION:
            if (second && dialect::AsksTime(second)) reach_.asksTime = true;
            break;
        default:
            break;
    }
}

int Engine::Authorize(void* self, int action, const char* first, const char* second, const char*, const char*) {
    auto& engine = *static_cast<Engine*>(self);
    engine.NoteReach(action, first, second);
    if (!engine.doorClosed_) return SQLITE_OK;
    const char* const reason = engine.ReasonAgainst(action, first, second);
    if (!reason) return SQLITE_OK;
    const char* const name = action == SQLITE_FUNCTION ? second : first;
    try {
        engine.refusal_ = name ? std::string(reason) + " (" + name + ")." : std::string(reason) + ".";
    } catch (const std::bad_alloc&) {
        // Nothing may be thrown through the engine, whose own words must do then.
        engine.refusal_.clear();
    }
    return SQLITE_DENY;
}

}  // namespace dhRichClient3
