#include "Perluma/line_trace.h"

#include "frame/convert.h"

namespace Perluma {

void LineTrace::Sql(const std::string& text) { lines_->Agregar("sql " + text); }

void LineTrace::Transaction(std::string_view what) { lines_->Agregar(std::string(what)); }

void LineTrace::Key(const std::string& table, std::int32_t value) {
    lines_->Agregar("key " + table + " " + std::to_string(value));
}

void LineTrace::Service(std::string_view name, const std::vector<Zontara::Value>&, const Zontara::Value&) {
    lines_->Agregar("service " + std::string(name));
}

void LineTrace::Event(std::string_view name, const Zontara::Value& argument) {
    lines_->Agregar("event " + std::string(name) + " " + Zontara::ToText(argument));
}

void LineTrace::Notice(const std::string& text) { lines_->Agregar("notice " + text); }

}  // namespace Perluma
