#pragma once

#include "frame/date.h"
#include "frame/export.h"

#include <optional>
#include <string>
#include <string_view>

namespace Zontara {

/// How the machine writes and reads dates: its short date form, with a 24-hour time. The decimal separator is
/// always a point, whatever the machine says.
class ZONTARA_EXPORT Regional {
public:
    /// `shortDate` holds `dd`, `mm` and `yyyy` in any order, separated by `/`, `-` or `.`.
    /// Error 5 when it holds anything else.
    explicit Regional(std::string_view shortDate = "dd/mm/yyyy");

    const std::string& ShortDateForm() const { return shortDate_; }

    /// The short form, and unless it is midnight a blank and `hh:nn:ss`.
    std::string ToText(Date date) const;

    /// The short form alone, whatever the time of day.
    std::string ToShortDate(Date date) const;

    /// The date that a text names, or none. Three parts separated by `/`, `-`, `.`, of one or two digits, the year of
    /// two (1930 to 2029) or four, and an optional time `hh:nn` or `hh:nn:ss` behind a blank. A four-digit first part
    /// is year, month, day. When the set order gives no date, the day and month the other way about are tried.
    std::optional<Date> Read(std::string_view text) const;

    /// As `Read`, with error 13 for what is no date.
    Date ToDate(std::string_view text) const;

private:
    std::string shortDate_;
    bool dayFirst_ = true;
    bool yearFirst_ = false;
};

/// The regional settings in force: the platform's short date form.
ZONTARA_EXPORT const Regional& CurrentRegional();

/// As its `ToDate`, and quick for a text that was read of late.
ZONTARA_EXPORT Date ToDate(std::string_view text);

/// A date in a picture: `yyyy`, `yy`, `mm`, `dd`, `hh`, `nn` and `ss` in any case are filled in with all their digits,
/// anything else stands as it is.
ZONTARA_EXPORT std::string Format(Date date, std::string_view picture);

/// A text that reads as a date is rewritten in the picture; any other text, the empty one included, is left alone.
ZONTARA_EXPORT std::string Format(std::string_view text, std::string_view picture);

/// A date as it stands in a statement, without its quotes: `Format(value, "YYYY-MM-DD")`.
ZONTARA_EXPORT std::string SqlDate(Date date);
ZONTARA_EXPORT std::string SqlDate(std::string_view text);

}  // namespace Zontara
