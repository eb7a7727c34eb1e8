#include "host/pages/sheet_page.h"

#include "frame/convert.h"
#include "frame/regional.h"
#include "host/pages/sheet_words.h"
#include "host/text/html.h"

#include <fmt/format.h>

namespace host::pages {

namespace {

using planning::SheetBulletin;
using text::Html;
using text::HtmlLines;

constexpr std::string_view kStyle = R"css(
@page { size: A4; margin: 12mm; }
* { box-sizing: border-box; }
body { font: 10pt/1.35 "Liberation Sans", Arial, Helvetica, sans-serif; color: #1a1a1a; max-width: 186mm; margin: 0 auto; }
header { border-bottom: 1.2mm solid #1f4e79; margin-bottom: 4mm; padding-bottom: 1mm; }
h1 { font-size: 15pt; margin: 0; }
header p { margin: 0; font-size: 11pt; color: #444; }
h2 { font-size: 12pt; margin: 4mm 0 1.5mm; padding: 1mm 2mm; background: #1f4e79; color: #fff; break-after: avoid;
     print-color-adjust: exact; -webkit-print-color-adjust: exact; }
article { border: 0.3mm solid #666; margin: 0 0 3mm; break-inside: avoid; }
.top { padding: 1mm 2mm; background: #e8eef4; border-bottom: 0.3mm solid #666;
       print-color-adjust: exact; -webkit-print-color-adjust: exact; }
.top h3 { font-size: 11pt; margin: 0; }
.top dl { display: flex; flex-wrap: wrap; gap: 0 5mm; margin: 0; font-size: 8.5pt; }
.top dl div { display: flex; gap: 1mm; white-space: nowrap; }
dt { color: #555; }
dd { margin: 0; font-weight: bold; }
.body { display: grid; grid-template-columns: 3fr 2fr; }
.body > div { padding: 1mm 2mm 0; }
.body > div + div { border-left: 0.3mm solid #bbb; }
h4 { font-size: 8pt; text-transform: uppercase; letter-spacing: 0.03em; color: #1f4e79; margin: 0 0 0.5mm; }
section { margin-bottom: 1.4mm; overflow-wrap: anywhere; }
ul { margin: 0; padding-left: 4mm; }
.stop { display: inline-block; border: 0.4mm solid #b00020; color: #b00020; font-weight: bold; padding: 0 1.5mm; }
.days { display: grid; grid-template-columns: repeat(7, 1fr); border-top: 0.3mm solid #666; }
.days div { min-height: 14mm; padding: 0.8mm 1mm; border-left: 0.3mm solid #bbb; font-size: 9pt; overflow-wrap: anywhere; }
.days div:first-child { border-left: 0; }
.days b { display: block; font-size: 7.5pt; color: #555; white-space: nowrap; }
.note { display: grid; grid-template-columns: 1fr 38mm 46mm; border-top: 0.3mm solid #666; }
.note div { min-height: 11mm; padding: 0.8mm 2mm; border-left: 0.3mm solid #bbb; }
.note div:first-child { border-left: 0; }
@media screen { body { padding: 8mm; } }
)css";

/// Day and month, as a person in a plant writes them.
std::string Short(Zontara::Date day) { return Zontara::Format(day, "dd/mm"); }
std::string Long(Zontara::Date day) { return Zontara::Format(day, "dd/mm/yyyy"); }
std::string Long(const std::string& iso) { return Zontara::Format(iso, "dd/mm/yyyy"); }

class Page {
public:
    Page(std::ostream& out, const planning::WeekSheet& sheet, Language language)
        : out_(out), sheet_(sheet), words_(WordsIn(language)) {}

    void Write() {
        const std::string title = fmt::format("{} {}/{}", words_.title, sheet_.week, sheet_.year);
        out_ << fmt::format(
            "<!DOCTYPE html>\n<html lang=\"{}\">\n<head>\n<meta charset=\"utf-8\">\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>{}</title>\n"
            "<style>{}</style>\n</head>\n<body>\n<header><h1>{}</h1><p>{}</p></header>\n",
            words_.code, Html(title), kStyle, Html(words_.title), Html(Heading()));
        std::string asset;
        for (const SheetBulletin& bulletin : sheet_.bulletins) {
            if (bulletin.asset != asset) {
                asset = bulletin.asset;
                out_ << fmt::format("<h2>{} · {}</h2>\n", Html(asset), Html(bulletin.assetName));
            }
            Write(bulletin);
        }
        out_ << "</body>\n</html>\n";
    }

private:
    std::string Heading() const {
        return fmt::format(fmt::runtime(words_.heading), fmt::arg("week", sheet_.week), fmt::arg("year", sheet_.year),
                           fmt::arg("from", Long(sheet_.monday)),
                           fmt::arg("to", Long(Zontara::AddDays(sheet_.monday, 6))));
    }

    void Write(const SheetBulletin& bulletin) {
        out_ << fmt::format("<article>\n<div class=\"top\"><h3>{} {} · {}</h3><dl>", words_.task, bulletin.taskNumber,
                            Html(bulletin.taskName));
        Fact(words_.bulletin, std::to_string(bulletin.key));
        Fact("", bulletin.frequency);
        Fact("", bulletin.group);
        Fact(words_.launched, Long(bulletin.launched));
        Fact(words_.delivery, Long(bulletin.delivery));
        Fact(words_.status, bulletin.statusName);
        if (bulletin.order != 0) Fact(words_.order, std::to_string(bulletin.order));
        out_ << "</dl></div>\n<div class=\"body\"><div>";
        Section(words_.work, HtmlLines(bulletin.text));
        Section(words_.coordination, HtmlLines(bulletin.coordination));
        out_ << "</div><div>";
        Section(words_.crew, Html(Crew(bulletin)));
        Section(words_.materials, Materials(bulletin));
        Section(words_.safety, Safety(bulletin));
        out_ << "</div></div>\n";
        Days(bulletin);
        out_ << fmt::format(
            "<div class=\"note\"><div><h4>{}</h4>{}</div><div><h4>{}</h4></div><div><h4>{}</h4></div></div>\n"
            "</article>\n",
            words_.note, HtmlLines(bulletin.note), words_.done, words_.signature);
    }

    void Fact(std::string_view name, const std::string& value) {
        if (value.empty()) return;
        const std::string term = name.empty() ? "" : fmt::format("<dt>{}</dt>", name);
        out_ << fmt::format("<div>{}<dd>{}</dd></div>", term, Html(value));
    }

    /// Nothing when there is nothing to say. The content is HTML.
    void Section(std::string_view title, const std::string& content) {
        if (!content.empty()) out_ << fmt::format("<section><h4>{}</h4>{}</section>", title, content);
    }

    std::string Crew(const SheetBulletin& bulletin) const {
        std::string crew;
        const auto add = [&](const std::string& part) {
            if (!part.empty()) crew += (crew.empty() ? "" : " · ") + part;
        };
        add(bulletin.executor);
        add(bulletin.specialist);
        if (bulletin.crew > 0)
            add(fmt::format("{} {}", bulletin.crew, bulletin.crew == 1 ? words_.person : words_.people));
        add(Zontara::NumberIn(bulletin.time) ? fmt::format("{} {}", bulletin.time, words_.hours) : bulletin.time);
        return crew;
    }

    static std::string Materials(const SheetBulletin& bulletin) {
        std::string list;
        for (const planning::SheetMaterial& each : bulletin.materials)
            list += fmt::format("<li>{} × {}</li>", Zontara::ToText(each.quantity), Html(each.description));
        return HtmlLines(bulletin.tools) + (list.empty() ? "" : "<ul>" + list + "</ul>");
    }

    std::string Safety(const SheetBulletin& bulletin) const {
        std::string safety;
        if (bulletin.standstill) safety = fmt::format("<span class=\"stop\">{}</span><br>", words_.standstill);
        return safety + HtmlLines(bulletin.safety);
    }

    void Days(const SheetBulletin& bulletin) {
        out_ << "<div class=\"days\">";
        for (std::size_t i = 0; i < bulletin.days.size(); ++i) {
            const Zontara::Date day = Zontara::AddDays(sheet_.monday, static_cast<std::int32_t>(i));
            out_ << fmt::format("<div><b>{} {}</b>{}</div>", words_.days[i], Short(day), HtmlLines(bulletin.days[i]));
        }
        out_ << "</div>\n";
    }

    std::ostream& out_;
    const planning::WeekSheet& sheet_;
    const SheetWords& words_;
};

}  // namespace

void WriteSheet(std::ostream& out, const planning::WeekSheet& sheet, Language language) {
    Page(out, sheet, language).Write();
}

}  // namespace host::pages
