#pragma once

#include "frame/date.h"
#include "frame/export.h"

#include <cstdint>
#include <memory>
#include <string>

namespace Zontara {

/// Answer of the step dialog's message box.
enum class BoxAnswer { Yes, No, Cancel, Other };

/// All that the component asks of the operating system. One instance is in force at a time; a test or a host
/// derives from `SystemPlatform()`'s class and replaces what it needs.
class ZONTARA_EXPORT Platform {
public:
    virtual ~Platform();

    /// Present local date and time.
    virtual Date Now() const;
    /// Name of this computer; empty when the system can't tell.
    virtual std::string ComputerName() const;
    /// The system's text for an error code; empty for a code that it doesn't know.
    virtual std::string SystemErrorText(std::int32_t code) const;
    /// Name of the running program.
    virtual std::string ApplicationName() const;
    /// Version of the component: major, minor, revision.
    virtual std::int32_t VersionMajor() const;
    virtual std::int32_t VersionMinor() const;
    virtual std::int32_t VersionRevision() const;
    /// Version of the data-access runtime; "?" where there is none.
    virtual std::string DataAccessVersion() const;
    /// The machine's short date form, such as "dd/mm/yyyy".
    virtual std::string ShortDateForm() const;
    /// Yields to the host's message loop. Does nothing unless a host says otherwise.
    virtual void Yield() const;
    /// Shows a message box with the given text, title and button style, and waits for the answer.
    virtual BoxAnswer MessageBox(const std::string& text, const std::string& title, std::int32_t style) const;
};

/// The platform in force.
ZONTARA_EXPORT const Platform& CurrentPlatform();

/// Puts another platform in force, and gives back the one before. None puts the system's own back.
ZONTARA_EXPORT std::shared_ptr<const Platform> ReplacePlatform(std::shared_ptr<const Platform> platform);

}  // namespace Zontara
