#include "planning/kind.h"

namespace planning {

std::string_view NameOf(Kind kind) {
    switch (kind) {
        case Kind::Synchronised:
            return "synchronised";
        case Kind::Conventional:
            return "conventional";
        case Kind::Meter:
            return "meter";
    }
    return {};
}

}  // namespace planning
