#pragma once

#include "host/plant.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace host::load {

/// Natural codes of the rows of one table, each with its key. A code of a file has key 0 until its row is written.
class Codes {
public:
    /// False when the code is there already; the first one stays.
    bool Add(const std::string& code, std::int32_t key = 0) { return keys_.emplace(code, key).second; }
    bool Has(const std::string& code) const { return keys_.count(code) > 0; }
    void Set(const std::string& code, std::int32_t key) { keys_[code] = key; }
    std::int32_t Key(const std::string& code) const { return keys_.at(code); }

private:
    std::unordered_map<std::string, std::int32_t> keys_;
};

/// All that lines of the files may refer to: what the database holds, and what the files bring.
struct Known {
    Codes groups;
    Codes executors;
    Codes units;
    Codes processes;
    Codes tasks;      ///< by number
    Codes assets;     ///< by ID; the key is the reading unit's
    Codes equipment;  ///< by ID; no key
    Codes calendar;   ///< by asset, task, kind and frequency, as `AssignmentCode`; only those in force
    Codes meter;      ///< by asset and task, as `AssignmentCode`
    std::unordered_map<std::string, float> lastReadings;  ///< of assets, for the order of readings
};

/// What the database holds.
Known ReadKnown(dhRichClient3::Connection& database);

/// One code out of parts that may hold anything but a line break.
std::string AssignmentCode(std::initializer_list<std::string> parts);

}  // namespace host::load
