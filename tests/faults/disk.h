#pragma once

#include <cstdint>

/// The disk below SQLite, made to fail. A layer between SQLite and the file system counts the writes (to database,
/// log and index, flushes and cuts included) and does something else in the place of one of them.
namespace faults::disk {

enum class Fault {
    None,
    Full,      ///< nothing is left on the disk: every write from then on is refused
    Broken,    ///< every write from then on is an input or output error
    Unread,    ///< every read from then on is an input or output error
    PowerCut,  ///< half of the write is made, and the process is gone
};

/// Puts the layer in place for whatever is opened from now on. It passes everything on.
void Watch();

/// The fault comes in the place of the write (for `Unread` the read) that follows so many others from now on.
void FailAfter(std::int64_t writes, Fault fault);
/// Nothing fails any more.
void Heal();

/// Writes and reads since the process began, those refused included.
std::int64_t Writes();
std::int64_t Reads();

/// An open disk that is in order again when this goes.
class Failing {
public:
    Failing(std::int64_t after, Fault fault) { FailAfter(after, fault); }
    ~Failing() { Heal(); }
    Failing(const Failing&) = delete;
    Failing& operator=(const Failing&) = delete;
};

}  // namespace faults::disk
