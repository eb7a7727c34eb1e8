#pragma once

#include <string>
#include <string_view>

namespace host::text {

/// A text as it stands in an HTML or SVG document, between tags and inside quoted attributes.
std::string Html(std::string_view text);

/// The same with a line break for each end of a line.
std::string HtmlLines(std::string_view text);

}  // namespace host::text
