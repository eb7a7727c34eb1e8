#include "host/rpc/session.h"

#include "Perluma/provider.h"
#include "Perluma/tracing_provider.h"
#include "frame/raised_error.h"
#include "frame/regional.h"
#include "schema/create.h"

#include <utility>

namespace host::rpc {

class Session::Clock : public Zontara::Platform {
public:
    Clock(std::optional<Zontara::Date> present, std::string shortDate)
        : now(present), shortDate_(std::move(shortDate)) {}

    Zontara::Date Now() const override { return now ? *now : Platform::Now(); }
    std::string ShortDateForm() const override { return shortDate_; }

    std::optional<Zontara::Date> now;

private:
    std::string shortDate_;
};

namespace {

Zontara::Ref<dhRichClient3::Connection> OpenDatabase(const Settings& settings) {
    dhRichClient3::Options options;
    options.stepLimit = settings.stepLimit;
    if (settings.create) options.mode = dhRichClient3::Options::Mode::Create;
    auto database = dhRichClient3::Connection::Open(settings.database, options);
    if (settings.create && schema::IsEmpty(*database)) schema::Create(*database);
    return database;
}

std::shared_ptr<Zontara::Provider> MakeProvider(const Zontara::Ref<dhRichClient3::Connection>& database,
                                                const std::shared_ptr<Trace>& trace) {
    auto provider = std::make_shared<Perluma::Provider>(database);
    if (!trace) return provider;
    return std::make_shared<Perluma::TracingProvider>(std::move(provider), trace);
}

}  // namespace

Session::Session(const Settings& settings) : firstNow_(settings.now) {
    // A form that is none must not come to light at the first date.
    const Zontara::Regional checked(settings.shortDate);
    database_ = OpenDatabase(settings);
    if (settings.trace) trace_ = std::make_shared<Trace>();
    clock_ = std::make_shared<Clock>(settings.now, checked.ShortDateForm());
    formerProvider_ = Zontara::InstallProvider(MakeProvider(database_, trace_));
    formerPlatform_ = Zontara::ReplacePlatform(clock_);
}

Session::~Session() {
    try {
        if (database_->TransactionMeant()) database_->RevertirTrans("", 0);
    } catch (const Zontara::RaisedError&) {
        // The connection goes with the session, and the engine then undoes what is open.
    }
    Zontara::InstallProvider(std::move(formerProvider_));
    Zontara::ReplacePlatform(std::move(formerPlatform_));
}

void Session::SetNow(std::optional<Zontara::Date> now) { clock_->now = now ? now : firstNow_; }

}  // namespace host::rpc
