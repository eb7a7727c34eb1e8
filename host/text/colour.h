#pragma once

#include <ostream>
#include <string>
#include <string_view>

/// Colour for people at a terminal. A stream is plain until it is told otherwise, so that files, pipes and programs
/// never see an escape sequence; what writes to it need not know.
namespace host::text {

enum class Tone { Plain, Strong, Faint, Good, Warning, Bad };

/// Whether a terminal of this name, the value of the environment's TERM, only ever writes on: nothing is known of it
/// when it is null or empty.
bool IsDumb(const char* term);

/// Whether a stream is to be coloured: it goes to a terminal that has colours, and the user didn't switch them off.
/// `noColour` and `term` are the values of the environment's NO_COLOR and TERM, null where they aren't set.
bool WantsColour(bool terminal, const char* noColour, const char* term);

/// Lets a stream be coloured, or not.
void AllowColour(std::ostream& out, bool allow = true);
bool AllowsColour(std::ostream& out);

/// The text as the stream is to get it: in a tone, or as it is when the stream is plain.
std::string Paint(std::ostream& out, Tone tone, std::string_view text);

}  // namespace host::text
