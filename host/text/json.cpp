#include "host/text/json.h"

#include <nlohmann/json.hpp>

namespace host::text {

void PrintJson(std::ostream& out, const nlohmann::ordered_json& document) {
    out << document.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

}  // namespace host::text
