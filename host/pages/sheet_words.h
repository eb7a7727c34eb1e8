#pragma once

#include "host/pages/sheet_page.h"

#include <array>

namespace host::pages {

/// The words around what the plant holds.
struct SheetWords {
    const char* code;
    const char* title;
    /// {week}, {year}, {from}, {to}.
    const char* heading;
    std::array<const char*, 7> days;
    const char* bulletin;
    const char* task;
    const char* order;
    const char* status;
    const char* launched;
    const char* delivery;
    const char* work;
    const char* materials;
    const char* crew;
    const char* people;
    const char* person;
    const char* hours;
    const char* standstill;
    const char* safety;
    const char* coordination;
    const char* note;
    const char* done;
    const char* signature;
};

const SheetWords& WordsIn(Language language);

}  // namespace host::pages
