#include "frame/regional.h"

#include "frame/platform.h"
#include "frame/raised_error.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace Zontara {

namespace {

constexpr std::int32_t kTwoDigitYearTurn = 30;

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// A text that is put together character by character. A short one takes no memory on the way.
class Letters {
public:
    void Put(char letter) {
        if (count_ == block_.size()) HandOver();
        block_[count_++] = letter;
    }
    /// Puts a number of at most four digits, with zeros before it up to a width.
    void Put(std::int32_t number, std::size_t width) {
        if (width == 2 && number < 100) return PutTwoDigits(number);
        if (width == 4) {
            PutTwoDigits(number / 100);
            return PutTwoDigits(number % 100);
        }
        for (std::size_t zeros = width; zeros > 4; --zeros)
            Put('0');
        if (width > 4 || number >= 1000) PutDigit(number / 1000);
        if (width >= 3 || number >= 100) PutDigit(number / 100 % 10);
        if (width >= 2 || number >= 10) PutDigit(number / 10 % 10);
        PutDigit(number % 10);
    }
    std::string Text() {
        HandOver();
        return std::move(text_);
    }

private:
    void PutTwoDigits(std::int32_t number) {
        if (count_ + 2 > block_.size()) HandOver();
        block_[count_++] = static_cast<char>('0' + number / 10);
        block_[count_++] = static_cast<char>('0' + number % 10);
    }
    void PutDigit(std::int32_t digit) { Put(static_cast<char>('0' + digit)); }
    void HandOver() { text_.append(block_.data(), std::exchange(count_, 0)); }

    std::array<char, 32> block_;
    std::size_t count_ = 0;
    std::string text_;
};

/// A group of digits of a date's or a time's text; of none if there is no such group.
struct Part {
    std::int32_t number = 0;
    std::size_t digits = 0;
};

/// The digits at the head of the text, at most four of them; taken off it.
Part TakePart(std::string_view& text) {
    Part part;
    const std::size_t most = std::min<std::size_t>(text.size(), 5);
    while (part.digits < most && IsDigit(text[part.digits]))
        part.number = part.number * 10 + (text[part.digits++] - '0');
    text.remove_prefix(part.digits);
    return part.digits > 4 ? Part{} : part;
}

bool IsDateSeparator(char c) { return c == '/' || c == '-' || c == '.'; }

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

/// "8:05" or "08:05:30"; an empty text is midnight.
std::optional<TimeOfDay> ReadTime(std::string_view text) {
    TimeOfDay time;
    if (text.empty()) return time;
    const std::array<std::int32_t*, 3> fields{&time.hour, &time.minute, &time.second};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const Part part = TakePart(text);
        if (part.digits == 0 || part.digits > 2) return std::nullopt;
        *fields[i] = part.number;
        if (text.empty()) {
            if (i == 0) return std::nullopt;
            break;
        }
        if (i == 2 || text.front() != ':') return std::nullopt;
        text.remove_prefix(1);
    }
    if (time.hour > 23 || time.minute > 59 || time.second > 59) return std::nullopt;
    return time;
}

/// Puts a date in a picture.
void Put(Letters& text, const Moment& moment, std::string_view picture) {
    const auto& [day, time] = moment;
    for (std::size_t i = 0; i < picture.size();) {
        const char field = Lower(picture[i]);
        std::size_t run = 1;
        while (i + run < picture.size() && Lower(picture[i + run]) == field)
            ++run;
        switch (field) {
            case 'y':
                text.Put(run >= 4 ? day.year : day.year % 100, run >= 4 ? 4 : 2);
                break;
            case 'm':
                text.Put(day.month, run);
                break;
            case 'd':
                text.Put(day.day, run);
                break;
            case 'h':
                text.Put(time.hour, run);
                break;
            case 'n':
                text.Put(time.minute, run);
                break;
            case 's':
                text.Put(time.second, run);
                break;
            default:
                run = 1;
                text.Put(picture[i]);
                break;
        }
        i += run;
    }
}

std::optional<std::int32_t> YearIn(Part part) {
    if (part.digits == 4) return part.number;
    if (part.digits > 2) return std::nullopt;
    return part.number + (part.number < kTwoDigitYearTurn ? 2000 : 1900);
}

std::optional<Date> Day(Part year, Part month, Part day) {
    const std::optional<std::int32_t> fullYear = YearIn(year);
    if (!fullYear || month.digits > 2 || day.digits > 2 || !IsCalendarDay(*fullYear, month.number, day.number)) {
        return std::nullopt;
    }
    return DateOf(*fullYear, month.number, day.number);
}

}  // namespace

Regional::Regional(std::string_view shortDate) : shortDate_(shortDate) {
    std::string order;
    for (std::size_t i = 0; i < shortDate.size(); ++i) {
        const char c = Lower(shortDate[i]);
        if (c == 'd' || c == 'm' || c == 'y') {
            if (order.empty() || order.back() != c) order += c;
        } else if (!IsDateSeparator(c)) {
            Raise(RunTimeError::InvalidCall,
                  "Short date form \"" + shortDate_ + "\": only dd, mm, yyyy, / - . may stand in it");
        }
        shortDate_[i] = c;
    }
    const bool known =
        order == "dmy" || order == "mdy" || order == "ymd" || order == "ydm" || order == "dym" || order == "myd";
    if (!known || shortDate_.find("yyyy") == std::string::npos) {
        Raise(RunTimeError::InvalidCall,
              "Short date form \"" + shortDate_ + "\": dd, mm and yyyy must each stand in it once");
    }
    dayFirst_ = order.find('d') < order.find('m');
    yearFirst_ = order.front() == 'y';
}

std::string Regional::ToShortDate(Date date) const { return Format(date, shortDate_); }

std::string Regional::ToText(Date date) const {
    const Moment moment = MomentOf(date);
    Letters text;
    Put(text, moment, shortDate_);
    if (!(moment.time == TimeOfDay{})) Put(text, moment, " hh:nn:ss");
    return text.Text();
}

std::optional<Date> Regional::Read(std::string_view text) const {
    std::string_view rest = Trimmed(text);
    std::array<Part, 3> parts;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        parts[i] = TakePart(rest);
        if (parts[i].digits == 0) return std::nullopt;
        if (i == 2) break;
        if (rest.empty() || !IsDateSeparator(rest.front())) return std::nullopt;
        rest.remove_prefix(1);
    }
    if (!rest.empty() && rest.front() != ' ') return std::nullopt;
    const std::optional<TimeOfDay> time = ReadTime(Trimmed(rest));
    if (!time) return std::nullopt;

    std::optional<Date> day;
    if (parts[0].digits == 4) {
        day = Day(parts[0], parts[1], parts[2]);
    } else if (yearFirst_ && parts[2].digits != 4) {
        day = dayFirst_ ? Day(parts[0], parts[2], parts[1]) : Day(parts[0], parts[1], parts[2]);
        if (!day) day = dayFirst_ ? Day(parts[0], parts[1], parts[2]) : Day(parts[0], parts[2], parts[1]);
    } else {
        const std::size_t dayAt = dayFirst_ ? 0 : 1;
        day = Day(parts[2], parts[1 - dayAt], parts[dayAt]);
        if (!day) day = Day(parts[2], parts[dayAt], parts[1 - dayAt]);
    }
    if (!day) return std::nullopt;
    return *time == TimeOfDay{} ? *day : WithTime(*day, *time);
}

Date Regional::ToDate(std::string_view text) const {
    const std::optional<Date> date = Read(text);
    if (!date) Raise(RunTimeError::TypeMismatch);
    return *date;
}

namespace {

std::string InStatement(std::string_view text, const std::optional<Date>& date) {
    return date ? SqlDate(*date) : std::string(text);
}

/// Texts that were read as dates of late: the rows of a run tell the same few days again and again.
class KnownDates {
public:
    struct Entry {
        std::string text;
        std::optional<Date> date;
        /// As it stands in a statement: the text itself if it is no date.
        std::string inStatement;
    };

    /// None for a text that is shorter or longer than dates are mostly written.
    const Entry* Find(std::string_view text, const Regional& regional) {
        if (text.size() < kShortest || text.size() > kLongest) return nullptr;
        Entry& entry = entries_[PlaceOf(text)];
        if (entry.text != text) {
            entry.text.clear();
            entry.date = regional.Read(text);
            entry.inStatement = InStatement(text, entry.date);
            entry.text = text;
        }
        return &entry;
    }

private:
    static constexpr std::size_t kShortest = 8;
    static constexpr std::size_t kLongest = 24;
    /// By the first and the last eight characters.
    static std::size_t PlaceOf(std::string_view text) {
        std::uint64_t head = 0;
        std::uint64_t tail = 0;
        std::memcpy(&head, text.data(), sizeof head);
        std::memcpy(&tail, text.data() + text.size() - sizeof tail, sizeof tail);
        return ((head * 31 + tail) * 0x9E3779B97F4A7C15) >> (64 - kBits);
    }

    static constexpr int kBits = 6;
    std::array<Entry, 1 << kBits> entries_;
};

struct Settings {
    Regional regional;
    KnownDates dates;
};

Settings& CurrentSettings() {
    thread_local Settings settings;
    const std::string form = CurrentPlatform().ShortDateForm();
    if (form != settings.regional.ShortDateForm()) settings = {Regional(form), {}};
    return settings;
}

}  // namespace

const Regional& CurrentRegional() { return CurrentSettings().regional; }

std::string Format(Date date, std::string_view picture) {
    Letters text;
    Put(text, MomentOf(date), picture);
    return text.Text();
}

std::string Format(std::string_view text, std::string_view picture) {
    const std::optional<Date> date = CurrentRegional().Read(text);
    return date ? Format(*date, picture) : std::string(text);
}

std::string SqlDate(Date date) {
    const CivilDate day = CivilOf(date);
    Letters text;
    text.Put(day.year, 4);
    text.Put('-');
    text.Put(day.month, 2);
    text.Put('-');
    text.Put(day.day, 2);
    return text.Text();
}

std::string SqlDate(std::string_view text) {
    auto& [regional, dates] = CurrentSettings();
    const KnownDates::Entry* const known = dates.Find(text, regional);
    return known != nullptr ? known->inStatement : InStatement(text, regional.Read(text));
}

Date ToDate(std::string_view text) {
    auto& [regional, dates] = CurrentSettings();
    const KnownDates::Entry* const known = dates.Find(text, regional);
    return known != nullptr && known->date ? *known->date : regional.ToDate(text);
}

}  // namespace Zontara
