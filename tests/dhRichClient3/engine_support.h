#pragma once

#include "dhRichClient3/connection.h"
#include "dhRichClient3/recordset.h"
#include "frame/convert.h"
#include "frame/raised_error.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

/// What the tests of the connection share.
namespace support {

/// Numbers of SQLite's primary result codes, as errors.
constexpr std::int32_t Code(int primary) { return Zontara::vbObjectError + primary; }
inline constexpr std::int32_t kError = Code(1);
inline constexpr std::int32_t kLost = Code(4);
inline constexpr std::int32_t kBusy = Code(5);
inline constexpr std::int32_t kReadOnly = Code(8);
inline constexpr std::int32_t kInterrupted = Code(9);
inline constexpr std::int32_t kCantOpen = Code(14);
inline constexpr std::int32_t kTooBig = Code(18);
inline constexpr std::int32_t kConstraint = Code(19);
inline constexpr std::int32_t kRefused = Code(23);
inline constexpr std::int32_t kRange = Code(25);
inline constexpr std::int32_t kNoDatabase = Code(26);

inline Zontara::Ref<Zontara::Recordset> Opened(const Zontara::Ref<Zontara::Conexion>& connection,
                                               const std::string& sql) {
    auto rows = dhRichClient3::NewRecordset();
    rows->ConexionActiva(connection);
    rows->TextoSQL(sql);
    rows->Abrir("", Zontara::Absent{}, 0);
    rows->ConexionActiva(nullptr);
    return rows;
}

/// Rows of a query as texts, fields joined by "|", null as "NULL".
inline std::vector<std::string> RowsOf(const Zontara::Ref<Zontara::Conexion>& connection, const std::string& sql) {
    std::vector<std::string> result;
    const auto rows = Opened(connection, sql);
    for (rows->MoverPrimero(); !rows->FinDeDatos(); rows->MoverSiguiente()) {
        std::string line;
        for (std::int32_t i = 0; i < rows->TotalColumnas(); ++i) {
            const auto value = rows->ValorEn(i);
            line += (i > 0 ? "|" : "") + (value.IsNull() ? std::string("NULL") : Zontara::ToText(value));
        }
        result.push_back(line);
    }
    return result;
}

inline Zontara::Ref<dhRichClient3::Connection> InMemory(std::string_view script = {},
                                                        std::int64_t stepLimit = 1'000'000'000) {
    dhRichClient3::Options options;
    options.stepLimit = stepLimit;
    auto connection = dhRichClient3::Connection::Open(":memory:", options);
    connection->RunScript(script);
    return connection;
}

inline Zontara::Ref<dhRichClient3::Connection> OnFile(
    const std::string& path, dhRichClient3::Options::Mode mode = dhRichClient3::Options::Mode::Existing,
    int busyMilliseconds = 50) {
    dhRichClient3::Options options;
    options.mode = mode;
    options.busyMilliseconds = busyMilliseconds;
    return dhRichClient3::Connection::Open(path, options);
}

/// A folder of a test's own that goes with it.
class TempFolder {
public:
    TempFolder() {
        static int count = 0;
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        path_ = std::filesystem::temp_directory_path() /
                (std::string(test->test_suite_name()) + "." + test->name() + "." + std::to_string(++count) + "." +
                 std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
        std::filesystem::create_directories(path_);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }

    std::string Path() const { return path_.string(); }
    std::string File(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

}  // namespace support
