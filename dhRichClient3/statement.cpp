#include "dhRichClient3/statement.h"

#include "dhRichClient3/sqlite/engine.h"
#include "frame/convert.h"

#include <cmath>

namespace dhRichClient3 {
namespace {

/// As far as a double counts every whole number.
constexpr double kWholeNumbers = 9007199254740992.0;

}  // namespace

Statement::Statement(std::shared_ptr<Engine> engine, std::unique_ptr<Compiled> held)
    : engine_(std::move(engine)), held_(std::move(held)) {}

Statement::Statement(Statement&& other) noexcept = default;

Statement& Statement::operator=(Statement&& other) noexcept {
    if (this != &other) {
        GiveBack();
        engine_ = std::move(other.engine_);
        held_ = std::move(other.held_);
        stepped_ = other.stepped_;
    }
    return *this;
}

Statement::~Statement() { GiveBack(); }

void Statement::GiveBack() noexcept {
    if (!held_) return;
    if (stepped_) Reset();
    engine_->GiveBack(std::move(held_));
}

void Statement::BeforeBinding() {
    if (stepped_) Reset();
}

Statement& Statement::Bind(int parameter, std::int32_t value) { return Bind(parameter, std::int64_t{value}); }

Statement& Statement::Bind(int parameter, std::int64_t value) {
    BeforeBinding();
    engine_->Bind(*held_, parameter, value);
    return *this;
}

Statement& Statement::Bind(int parameter, double value) {
    BeforeBinding();
    engine_->Bind(*held_, parameter, value);
    return *this;
}

Statement& Statement::Bind(int parameter, float value) {
    const double number = Zontara::NumberAsWritten(value);
    const bool whole = std::fabs(number) < kWholeNumbers && std::trunc(number) == number;
    return whole ? Bind(parameter, static_cast<std::int64_t>(number)) : Bind(parameter, number);
}

Statement& Statement::Bind(int parameter, Zontara::Money value) {
    constexpr std::int64_t kUnit = 10'000;
    const std::int64_t amount = value.TenThousandths();
    return amount % kUnit == 0 ? Bind(parameter, amount / kUnit) : Bind(parameter, value.ToNumber());
}

Statement& Statement::Bind(int parameter, std::string_view value) {
    BeforeBinding();
    engine_->Bind(*held_, parameter, value, false);
    return *this;
}

Statement& Statement::BindKept(int parameter, std::string_view value) {
    BeforeBinding();
    engine_->Bind(*held_, parameter, value, true);
    return *this;
}

Statement& Statement::Bind(int parameter, Zontara::Null) {
    BeforeBinding();
    engine_->BindNull(*held_, parameter);
    return *this;
}

bool Statement::Step() {
    if (!stepped_) engine_->RequireTransaction();
    engine_->StartRun();
    stepped_ = false;  // what fails is reset
    stepped_ = engine_->Step(*held_);
    return stepped_;
}

void Statement::Run() {
    if (Step()) Reset();
}

void Statement::Reset() {
    Engine::Reset(*held_);
    stepped_ = false;
}

}  // namespace dhRichClient3
