#pragma once

#include "dhRichClient3/connection.h"
#include "frame/CGlobalPreventivo.h"
#include "frame/date.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace planning {

/// What is written on a line of material of a task.
struct SheetMaterial {
    std::string description;
    double quantity = 0;
};

/// One bulletin with what the one who works it off needs to know. Texts are empty where nothing is entered.
struct SheetBulletin {
    std::int32_t key = 0;
    std::string asset;
    std::string assetName;
    std::int32_t taskNumber = 0;
    std::string taskName;
    /// The instructions.
    std::string text;
    std::string frequency;
    std::string group;
    std::string executor;
    std::string specialist;
    std::int32_t crew = 0;
    /// Hours, as the task holds them: a free text.
    std::string time;
    /// Whether the equipment must stand still.
    bool standstill = false;
    std::string safety;
    std::string coordination;
    /// Materials and tools in words, and the lines of material.
    std::string tools;
    std::vector<SheetMaterial> materials;
    /// yyyy-mm-dd.
    std::string launched;
    std::string delivery;
    /// What is noted for each weekday, Monday first.
    std::array<std::string, 7> days;
    std::string note;
    std::int16_t status = 0;
    /// The status in the component's words.
    std::string statusName;
    /// 0 for none.
    std::int32_t order = 0;
};

/// The bulletins of one week.
struct WeekSheet {
    std::int32_t week = 0;
    std::int32_t year = 0;
    Zontara::Date monday;
    /// By asset, then by the task's number.
    std::vector<SheetBulletin> bulletins;
};

/// The Monday of a week of a year, in which week 1 is the one that holds January 1.
Zontara::Date MondayOf(std::int32_t week, std::int32_t year);

/// The bulletins that the component counts among a week of a year, of one asset when it is named. Those are here too
/// that the component's list of bulletins leaves out, such as those of a task without executor.
WeekSheet SheetOf(Zontara::CGlobalPreventivo& component, dhRichClient3::Connection& database, std::uint8_t week,
                  std::int32_t year, const std::string& asset = "");

}  // namespace planning
