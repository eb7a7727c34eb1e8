#pragma once

#include "frame/CGlobalPreventivo.h"
#include "planning/forecast.h"
#include "planning/launch_ear.h"

#include <cstdint>
#include <map>
#include <vector>

namespace planning {

/// What carrying out a task once takes, as the component would put it on a work order.
struct TaskNeeds {
    /// Key of its executor; 0 for none.
    std::int32_t executor = 0;
    double hours = 0;
    std::vector<Material> materials;
    Zontara::Money materialCost;
    /// The task's own present cost.
    Zontara::Money cost;
};

/// The needs of tasks, each read once. A task that is gone, and what of it can't be read, counts as nothing.
class TaskBook {
public:
    /// Both outlive the book, and the ear hears the component.
    TaskBook(Zontara::CGlobalPreventivo& component, LaunchEar& ear) : component_(component), ear_(ear) {}

    const TaskNeeds& Of(std::int32_t task);

private:
    TaskNeeds Read(std::int32_t task);
    double HoursOf(std::int32_t task);
    std::vector<Material> MaterialsOf(std::int32_t task);

    Zontara::CGlobalPreventivo& component_;
    LaunchEar& ear_;
    std::map<std::int32_t, TaskNeeds> known_;
};

}  // namespace planning
