#include "host/text/cell.h"

#include "frame/convert.h"

namespace host::text {

Cell Cell::Real(double number) { return Real(number, Zontara::ToText(number)); }

Cell Cell::Real(double number, std::string text) { return {std::move(text), Value(number)}; }

Cell Cell::Flag(bool holds, std::string_view yes, std::string_view no) {
    return {std::string(holds ? yes : no), Value(holds)};
}

Cell Cell::In(Tone tone) && {
    tone_ = tone;
    return std::move(*this);
}

}  // namespace host::text
