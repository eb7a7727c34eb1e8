#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/meters.h"
#include "host/readings.h"
#include "host/text/json.h"

#include "frame/convert.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace host {

namespace {

struct ReadingOptions {
    std::string path;
    std::string asset;
    std::string shown;
    std::string date;
    std::string added;
    std::string previous;
    std::optional<std::int32_t> unit;
    std::string fuel;
    std::string note;
    std::string department;
    std::string voucher;
    std::string voucherValue;
    bool json = false;
};

Reading ReadingOf(const ReadingOptions& options) {
    Reading reading;
    reading.date = Iso(DayOption(options.date, "--date"));
    reading.asset = options.asset;
    reading.shown = RealOption(options.shown, "VALUE");
    if (!options.added.empty()) reading.added = RealOption(options.added, "--added");
    if (!options.previous.empty()) reading.previous = RealOption(options.previous, "--previous");
    reading.unit = options.unit;
    if (!options.fuel.empty()) reading.fuel = RealOption(options.fuel, "--fuel");
    reading.note = options.note;
    reading.department = options.department;
    reading.voucher = options.voucher;
    if (!options.voucherValue.empty()) reading.voucherValue = MoneyOption(options.voucherValue, "--voucher-value");
    return reading;
}

void Record(const ReadingOptions& options, Console& console) {
    const Reading reading = ReadingOf(options);
    Plant plant(options.path, Plant::Use::Write);
    Transaction transaction(plant);
    KnownAsset(plant, reading.asset);
    const double before = AccumulatedOf(plant, reading.asset);
    const std::int32_t key = RecordReading(plant, reading);
    transaction.Commit();

    const text::Grid states = GridOf(MeterStates(plant, reading.asset));
    const double after = AccumulatedOf(plant, reading.asset);
    if (options.json) {
        text::PrintJson(console.out, {{"reading", key},
                                      {"asset", reading.asset},
                                      {"date", reading.date},
                                      {"shown", Zontara::NumberIn(Zontara::ToText(reading.shown)).value()},
                                      {"accumulated", after},
                                      {"before", before},
                                      {"assignments", states.ToJson()}});
        return;
    }
    console.out << fmt::format("Reading {} of asset {} on {}: the meter shows {}, accumulated {} (before {}).\n", key,
                               reading.asset, reading.date, Zontara::ToText(reading.shown), Zontara::ToText(after),
                               Zontara::ToText(before));
    if (states.Lines() == 0) return;
    console.out << '\n';
    states.Print(console.out);
}

}  // namespace

void AddReadingCommand(CLI::App& app, Console& console) {
    auto options = std::make_shared<ReadingOptions>();
    CLI::App* command = AddCommand(app, "reading", "Record a meter reading of an asset, and show what it brings due.",
                                   "zontara reading plant.db M-CARR-01 7990.5 --date 2026-03-02");
    AddDatabase(*command, options->path);
    command->add_option("ASSET", options->asset, "The asset's identifier")->required();
    command->add_option("VALUE", options->shown, "What the meter shows")->required();
    command->add_option("--date", options->date, "The day of the reading, yyyy-mm-dd (today)");
    command->add_option("--added", options->added, "What it adds to the accumulated reading (VALUE less the previous)");
    command->add_option("--previous", options->previous, "The previous reading (the asset's last)");
    command->add_option("--unit", options->unit, "The key of the reading unit (the asset's)");
    command->add_option("--fuel", options->fuel, "Fuel consumed");
    command->add_option("--note", options->note, "A note");
    command->add_option("--department", options->department, "The department that the fuel is charged to");
    command->add_option("--voucher", options->voucher, "Number of the issue voucher");
    command->add_option("--voucher-value", options->voucherValue, "Value of the issue voucher");
    AddJson(*command, options->json);
    command->callback([options, &console] { Record(*options, console); });
}

}  // namespace host
