#pragma once

#include "bulletins/CConfiguracionOTBoletin.h"
#include "frame/date.h"
#include "host/plant.h"
#include "host/progress.h"
#include "planning/kind.h"

#include <cstdint>
#include <string>
#include <vector>

namespace host::launching {

struct Request {
    Zontara::Date date;
    std::vector<planning::Kind> kinds;
    std::int32_t user = 0;
    /// How work orders are made. With none the calendar launches write bulletins, and the meter launch, which always
    /// makes orders, takes a configuration of zeros.
    Zontara::Ref<Zontara::CConfiguracionOTBoletin> orders;
    /// Above 0: only assets of this project. The synchronised launch takes all projects whatever stands here.
    std::int32_t project = 0;
    /// First character of the assets' identifiers; the calendar launches take all chapters whatever stands here.
    std::string chapter;
};

/// A bulletin or a work order that a launch made.
struct Paper {
    bool order = false;
    /// Key of the bulletin or of the order.
    std::int32_t number = 0;
    /// Key of the assignment that it comes from; 0 for a calendar order, which doesn't tell.
    std::int32_t assignment = 0;
    std::string asset;
    std::string assetName;
    std::int32_t task = 0;
    std::string taskName;
    /// The frequency word, or "500 h" for a meter assignment.
    std::string frequency;
    /// Launch and delivery of a bulletin, request and wish of an order: yyyy-mm-dd.
    std::string date;
    std::string delivery;
    /// Of an order: its work text, lines of material, their cost, crew and time.
    std::string text;
    std::int32_t materials = 0;
    double cost = 0;
    std::int32_t crew = 0;
    double time = 0;
};

/// What one launch did.
struct Outcome {
    planning::Kind kind = planning::Kind::Synchronised;
    /// Assignments that the launch looked at.
    std::int64_t looked = 0;
    std::int64_t launched = 0;
    std::vector<Paper> papers;
};

/// Runs the launches one after another inside the caller's transaction, which must be open: only so can't a launch of
/// another process select the same assignments before this one is committed. Errors are those of the launches; the
/// transaction is then gone or must be undone.
std::vector<Outcome> Launch(Plant& plant, const Request& request, Progress& progress);

}  // namespace host::launching
