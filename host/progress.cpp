#include "host/progress.h"

#include "frame/convert.h"

#include <fmt/format.h>

namespace host {

namespace {

constexpr int kBar = 30;

}  // namespace

Progress::Progress(Zontara::EventSource& launcher, const Console& console)
    : launcher_(launcher),
      console_(console),
      subscription_(
          launcher.Subscribe([this](std::string_view event, Zontara::Value& argument) { Heard(event, argument); })) {}

Progress::~Progress() {
    launcher_.Unsubscribe(subscription_);
    Wipe();
}

void Progress::Label(std::string label) {
    Wipe();
    label_ = std::move(label);
    total_ = 0;
    looked_ = 0;
}

void Progress::Heard(std::string_view event, const Zontara::Value& argument) {
    const std::int64_t number = Zontara::ConvertTo<std::int32_t>(argument);
    if (event == "ImputacionesRecuperadas") {
        total_ = number;
        looked_ = 0;
    } else if (event == "ProcesandoImputacion") {
        looked_ = number;
    }
    if (console_.terminal && total_ > 0) Draw();
}

void Progress::Draw() {
    const int percent = static_cast<int>(looked_ * 100 / total_);
    if (percent == drawn_) return;
    drawn_ = percent;
    const auto full = static_cast<std::size_t>(percent * kBar / 100);
    console_.err << fmt::format("\r{} [{}{}] {:3} %  {} of {}", label_, std::string(full, '#'),
                                std::string(kBar - full, '.'), percent, looked_, total_)
                 << std::flush;
}

void Progress::Wipe() {
    if (drawn_ >= 0) console_.err << "\r\x1b[K" << std::flush;
    drawn_ = -1;
}

}  // namespace host
