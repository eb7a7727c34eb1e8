#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>

namespace host::text {

/// Writes a document for programs, on lines of its own. Bytes that are no UTF-8 are replaced.
void PrintJson(std::ostream& out, const nlohmann::ordered_json& document);

}  // namespace host::text
