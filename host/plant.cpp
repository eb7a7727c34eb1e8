#include "host/plant.h"

#include "Perluma/provider.h"
#include "frame/provider.h"
#include "host/failure.h"
#include "schema/create.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <filesystem>

namespace host {

namespace {

Zontara::Ref<dhRichClient3::Connection> OpenDatabase(const std::string& path, Plant::Use use) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
        throw Failure(
            fmt::format("there is no database {}. Check the path, or make one with `zontara init {}`.", path, path));
    }
    if (std::filesystem::is_directory(path, error)) throw Failure(path + " is a folder. Name the database inside it.");

    dhRichClient3::Options options;
    if (use != Plant::Use::Write) options.mode = dhRichClient3::Options::Mode::ReadOnly;
    auto database = dhRichClient3::Connection::Open(path, options);
    const std::vector<std::string> missing = schema::MissingTables(*database);
    if (missing.size() == schema::Tables().size()) {
        throw Failure(
            fmt::format("{} is a database of something else: it has none of the tables. Name another one, or "
                        "make one with `zontara init`.",
                        path));
    }
    if (!missing.empty()) {
        throw Failure(fmt::format("{} lacks the tables {}. Make a new database with `zontara init`.", path,
                                  fmt::join(missing, ", ")));
    }
    return use == Plant::Use::Copy ? database->Copy() : database;
}

}  // namespace

Plant::Plant(const std::string& path, Use use) : path_(path), database_(OpenDatabase(path, use)) {
    Perluma::OpenSession(database_);
    component_ = std::make_shared<Zontara::CGlobalPreventivo>();
}

Plant::~Plant() {
    component_.reset();
    Zontara::InstallProvider(nullptr);
}

Transaction::Transaction(Plant& plant) : plant_(plant) {
    try {
        plant_.Component().IniciarTransaccion();
    } catch (...) {
        Abort();
        throw;
    }
}

Transaction::~Transaction() {
    if (open_) Abort();
}

void Transaction::Commit() {
    plant_.Component().TerminarTransaccion();
    open_ = false;
}

void Transaction::Abort() noexcept {
    try {
        plant_.Component().AbortarTransaccion();
    } catch (const std::exception&) {
        // The connection goes with the plant, and the engine then undoes what is open.
    }
}

}  // namespace host
