#pragma once

#include "dhRichClient3/connection.h"
#include "tests/support/world.h"

#include <string>
#include <vector>

/// A plant on a file, all of whose assignments are due, and its launches.
namespace faults {

/// Assignments that one asset of the plant has: two synchronised, one conventional, two by meter.
inline constexpr int kSynchronised = 2;
inline constexpr int kConventional = 1;
inline constexpr int kMeter = 2;
inline constexpr int kAssignments = kSynchronised + kConventional + kMeter;

/// Creates the plant with so many assets, "P-00001" and so on. Each task has two materials and a crew of two.
void MakePlant(const std::string& path, int assets);

/// What the calendar launches write: bulletins or work orders.
enum class Paper { Bulletins, Orders };

/// A session of its own on a database file, with a fixed clock: Monday 2026-03-02.
class Session {
public:
    explicit Session(const std::string& path, const dhRichClient3::Options& options = {});

    dhRichClient3::Connection& Database() { return *connection_; }
    /// Empties the record of what was asked.
    void Forget() { world_.Forget(); }
    int LaunchSynchronised(Paper paper);
    int LaunchConventional(Paper paper);
    void LaunchMeter();
    /// The synchronised assignments into one kind of paper, the conventional ones into the other.
    void LaunchCalendar(Paper synchronised);
    /// All three launches.
    void LaunchAll(Paper synchronised);

private:
    explicit Session(Zontara::Ref<dhRichClient3::Connection> connection);

    Zontara::Ref<dhRichClient3::Connection> connection_;
    support::World world_;
};

/// Rows of a query, cells joined by "|".
std::vector<std::string> Rows(dhRichClient3::Connection& database, const std::string& sql);
std::string Scalar(dhRichClient3::Connection& database, const std::string& sql);

/// Every row of every table, each behind its table's name: what two databases have to share to be the same.
std::vector<std::string> Contents(dhRichClient3::Connection& database);

/// Tables in which two rows share a key. `Documento_Equipo` and `Usuario_Ejecutor_Gama`, which may, are left out.
std::vector<std::string> TablesWithSharedKeys(dhRichClient3::Connection& database);

}  // namespace faults
