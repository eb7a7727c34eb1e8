#pragma once

#include "frame/platform.h"

#include <memory>

namespace host::story {

/// The system's platform with a present that is told: eight in the morning of a day of the story.
class Clock : public Zontara::Platform {
public:
    Zontara::Date Now() const override { return now_; }
    std::string ShortDateForm() const override { return "dd/mm/yyyy"; }
    void SetDay(Zontara::Date day) { now_ = Zontara::WithTime(day, {8, 0, 0}); }

private:
    Zontara::Date now_;
};

/// Puts a clock in force for as long as it lives.
class ClockInForce {
public:
    ClockInForce() : clock_(std::make_shared<Clock>()), before_(Zontara::ReplacePlatform(clock_)) {}
    ~ClockInForce() { Zontara::ReplacePlatform(before_); }
    ClockInForce(const ClockInForce&) = delete;
    ClockInForce& operator=(const ClockInForce&) = delete;

    Clock& operator*() const { return *clock_; }

private:
    std::shared_ptr<Clock> clock_;
    std::shared_ptr<const Zontara::Platform> before_;
};

}  // namespace host::story
