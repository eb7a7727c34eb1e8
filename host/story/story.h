#pragma once

#include "host/console.h"
#include "host/plant.h"
#include "host/story/clock.h"

#include <filesystem>

/// The demo: a sample plant, loaded from CSV files, and what the component does for it over a year and more.
namespace host::story {

/// The folder with the sample plant's CSV files: the one of the sources, or the installed one beside the program.
/// A `Failure` when there is neither.
std::filesystem::path PlantFolder();

/// What the acts work with.
struct Stage {
    Plant& plant;
    Clock& clock;
    Console& console;
    std::filesystem::path files;
};

/// Reads the sample plant into an empty database, and prints what it holds.
void Load(Stage& stage);

/// Five weekly synchronised launches into bulletins from Monday, January 5, 2026; the bulletins of one asset; a second
/// run of the fifth week; and the sixth week's launch into work orders with their materials and labour.
void FirstWeeks(Stage& stage);

/// Fifty-two weeks from Monday, February 16, 2026: the readings that came in, then the launches of all kinds, and the
/// reset of the parallels of each meter-driven order. Prints what came of it by month.
void Year(Stage& stage);

/// What is overdue on the Thursday after the last launch.
void OverdueAtTheEnd(Stage& stage);

/// The whole of it: makes the plant in `folder` (a former demo there is replaced) and leaves it there.
void Tell(const std::filesystem::path& folder, Console& console);

}  // namespace host::story
