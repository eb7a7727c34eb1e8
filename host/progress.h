#pragma once

#include "frame/event_source.h"
#include "host/console.h"

#include <cstdint>
#include <string>

namespace host {

/// A progress bar on the error stream of a terminal; nothing at all elsewhere. Watches one launching object for as long
/// as it lives, and takes the bar away when it goes.
class Progress {
public:
    /// `launcher` raises `ImputacionesRecuperadas` and `ProcesandoImputacion`; both it and the console outlive this.
    Progress(Zontara::EventSource& launcher, const Console& console);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Says what the rows to come belong to.
    void Label(std::string label);
    /// Rows that the latest run has looked at; 0 after a `Label`.
    std::int64_t Looked() const { return looked_; }

private:
    void Heard(std::string_view event, const Zontara::Value& argument);
    void Draw();
    void Wipe();

    Zontara::EventSource& launcher_;
    Console console_;
    std::int32_t subscription_;
    std::string label_;
    std::int64_t total_ = 0;
    std::int64_t looked_ = 0;
    int drawn_ = -1;
};

}  // namespace host
