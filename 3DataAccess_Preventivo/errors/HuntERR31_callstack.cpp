#include "errors/HuntERR31_parts.h"
#include "errors/text.h"
#include "frame/convert.h"

#include <algorithm>
#include <span>

namespace Zontara::HuntERR31 {

namespace {

constexpr std::size_t kLongestOnLine = 40;
constexpr std::int32_t kLineWidth = 100;
constexpr std::string_view kIndent = "      ";

/// Whether a value is too much for the call-stack line. The quotes around a text don't count.
bool IsLong(const Value& value, std::string_view shown) {
    const std::string_view counted = value.Is<std::string>() ? std::string_view(value.Get<std::string>()) : shown;
    return counted.find_first_of("\r\n") != std::string_view::npos ||
           CountCharacters(counted, kLongestOnLine + 1) > kLongestOnLine;
}

/// The text with six blanks before it and after each of its line breaks, of whatever kind.
std::string Indented(std::string_view text) {
    std::string result(kIndent);
    result.reserve(kIndent.size() + text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        result += text[i];
        const bool pairFollows = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (text[i] == '\n' || (text[i] == '\r' && !pairFollows)) result += kIndent;
    }
    return result;
}

void KeepLongValue(std::string_view name, std::string_view text) {
    std::string& values = Fields().mErrValues;
    const std::string indented = Indented(text);
    if (!values.empty()) values += kLineBreak;
    values += "    Value Of ";
    values += name;
    values += ":";
    values += kLineBreak;
    values += indented;
}

/// The value for the line, with a long one put aside.
std::string ShownOnLine(std::string_view name, const Value& value) {
    std::string shown = ErrFormatValue(value);
    if (!IsLong(value, shown)) return shown;
    if (name.starts_with("xml") && shown.starts_with("'<")) shown = ErrXmlIndent(shown);
    KeepLongValue(name, shown);
    return "{Text}";
}

void AddLongValues() {
    std::string& values = Fields().mErrValues;
    if (values.empty()) return;
    ErrAddLine(values);
    values.clear();
}

}  // namespace

Location ErrSplitLocation(std::string_view location) {
    Location result;
    UnderTrap("ErrSplitLocation", [&] {
        const std::vector<std::string_view> pieces = Split(location, '(');
        if (!pieces.empty()) result.method = pieces[0];
        if (pieces.size() > 1) result.names = WithoutLast(pieces[1]);
    });
    return result;
}

void ErrCallStack(std::string_view method, std::string_view names, const Value& values, std::string_view envNames,
                  const Value& envValues) {
    UnderTrap("ErrCallStack", [&] {
        std::string line = "  Call Stack: " + std::string(method) + "(" + ErrFormatArgs(names, values) + ")";
        if (Fields().mErrLine != 0) line += "  at Line " + std::to_string(Fields().mErrLine);
        ErrAddLine(ErrPadRight(line + " ", "-", kLineWidth));
        AddLongValues();
        if (!envNames.empty()) ErrAddLine("    Env: " + ErrFormatArgs(envNames, envValues));
        AddLongValues();
    });
}

std::string ErrFormatArgs(std::string_view names, const Value& values) {
    std::string result;
    UnderTrap("ErrFormatArgs", [&] {
        Fields().mErrValues.clear();
        const std::span<const Value> items =
            values.Is<Array>() ? std::span(values.Get<Array>()) : std::span<const Value>(&values, 1);
        const std::vector<std::string_view> pieces = Split(names, ',');
        for (std::size_t i = 0; i < items.size(); ++i) {
            const std::string_view name = i < pieces.size() ? pieces[i] : std::string_view();
            std::string item = ShownOnLine(name, items[i]);
            if (!name.empty()) item.insert(0, std::string(name) + "=");
            if (i > 0) result += ", ";
            result += item;
        }
    });
    return result;
}

std::string ErrFormatValue(const Value& value) {
    std::string text;
    UnderTrap("ErrFormatValue", [&] {
        switch (value.kind()) {
            case Value::Kind::List:
                text = "{Array}";
                break;
            case Value::Kind::Empty:
                text = "{Empty}";
                break;
            case Value::Kind::Null:
                text = "{Null}";
                break;
            case Value::Kind::Absent:
                break;
            case Value::Kind::Bool:
            case Value::Kind::Byte:
            case Value::Kind::Int16:
            case Value::Kind::Int32:
            case Value::Kind::Float32:
            case Value::Kind::Float64:
            case Value::Kind::Money:
                text = ToText(value);
                break;
            case Value::Kind::Date:
            case Value::Kind::Text:
                text = "'" + ToText(value) + "'";
                break;
            case Value::Kind::Object: {
                const Ref<Object>& object = value.Get<Ref<Object>>();
                text = "{" + (object ? object->TypeName() : "Nothing") + "}";
                break;
            }
            default:
                text = "{?}";
        }
    });
    return text;
}

std::string ErrXmlIndent(std::string_view text) {
    std::string result;
    UnderTrap("ErrXmlIndent", [&] {
        std::string_view rest = WithoutLast(WithoutFirst(text));
        std::size_t blanksLeft = std::max<std::size_t>(4 * rest.size(), 1'000'000);
        std::ptrdiff_t depth = 0;
        std::size_t start = rest.find('<');
        result += rest.substr(0, start);
        for (bool first = true; start != std::string_view::npos; first = false) {
            rest.remove_prefix(start + 1);
            start = rest.find('<');
            const std::string_view piece = rest.substr(0, start);
            if (piece.starts_with('/')) --depth;
            if (!first) result += kLineBreak;
            const std::size_t wanted = depth > 0 ? 2 * static_cast<std::size_t>(depth) : 0;
            const bool reasonable = wanted <= blanksLeft;
            blanksLeft = reasonable ? blanksLeft - wanted : 0;
            result.append(reasonable ? wanted : 0, ' ');
            result += '<';
            result += piece;
            if (!piece.starts_with('/') && piece.find("/>") == std::string_view::npos) ++depth;
        }
    });
    return result;
}

std::string ErrPadRight(std::string_view text, std::string_view fill, std::int32_t width) {
    std::string result(text);
    const std::size_t wanted = width > 0 ? static_cast<std::size_t>(width) : 0;
    for (std::size_t length = CountCharacters(text, wanted); length < wanted; ++length)
        result += fill;
    return result;
}

}  // namespace Zontara::HuntERR31
