#pragma once

#include "errors/HuntERR31.h"
#include "errors/HuntERR31_parts.h"
#include "errors/current_error.h"
#include "errors/switches.h"
#include "frame/object.h"
#include "frame/platform.h"
#include "frame/provider.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace errors_test {

using namespace Zontara;
using namespace Zontara::HuntERR31;

/// Any object that is reached by member name: what it answers, what it refuses, and what it was asked.
class ObjectDouble : public Object {
public:
    explicit ObjectDouble(std::string typeName) : typeName_(std::move(typeName)) {}

    std::map<std::string, Value, std::less<>> members;
    /// Calls that do more than nothing: they run this, and may raise from it.
    std::map<std::string, std::function<void()>, std::less<>> calls;
    /// "read State", "write Connection", "call Close", in order.
    std::vector<std::string> heard;

    std::string TypeName() const override { return typeName_; }
    Value ReadMember(std::string_view name) override;
    void WriteMember(std::string_view name, const Value& value) override;
    Value CallMember(std::string_view name) override;

    /// Only what was called.
    std::vector<std::string> Called() const;

private:
    std::string typeName_;
};

/// A connection of type "Connection" with all the members that the module asks for, and no errors.
std::shared_ptr<ObjectDouble> ConnectionDouble(std::int32_t state = 1);
/// A list of errors with these descriptions.
std::shared_ptr<ObjectDouble> ErrorList(const std::vector<std::string>& descriptions);
/// A transaction context whose request has all members.
std::shared_ptr<ObjectDouble> ContextWithRequest();

/// A computer whose answers are set.
class PlatformDouble : public Platform {
public:
    Date now{46086.0 + 8.0 / 24};  // 2026-03-05 08:00:00
    std::function<std::string()> computer = [] { return std::string("PLANT-1"); };
    std::function<std::string()> application = [] { return std::string("planner"); };
    std::function<std::string()> dataAccess = [] { return std::string("2.8"); };
    std::function<std::string(std::int32_t)> systemText = [](std::int32_t) { return std::string("Access is denied."); };
    std::int32_t revision = 0;
    mutable std::vector<std::string> boxes;
    BoxAnswer answer = BoxAnswer::No;

    Date Now() const override { return now; }
    std::string ComputerName() const override { return computer(); }
    std::string SystemErrorText(std::int32_t code) const override { return systemText(code); }
    std::string ApplicationName() const override { return application(); }
    std::int32_t VersionMajor() const override { return 84; }
    std::int32_t VersionMinor() const override { return 0; }
    std::int32_t VersionRevision() const override { return revision; }
    std::string DataAccessVersion() const override { return dataAccess(); }
    std::string ShortDateForm() const override { return "dd/mm/yyyy"; }
    BoxAnswer MessageBox(const std::string& text, const std::string& title, std::int32_t style) const override;
};

/// The neighbours as far as a handler needs them: a session that gives a connection, or refuses to.
class ProviderDouble : public Provider, public std::enable_shared_from_this<ProviderDouble> {
public:
    ProviderDouble();
    /// Runs whenever the shared connection is asked for, and may raise.
    std::function<void()> onConnection;
    int connectionsGiven = 0;

    SesionGlobal& Session() override;
    GlobalPerluma& Perluma() override { throw std::logic_error("not asked for here"); }
    Ref<Recordset> NewRecordset() override { return {}; }
    Ref<ListaCambios> NewListaCambios() override { return {}; }
    Ref<ServicioActivos> NewServicioActivos() override { return {}; }

private:
    Ref<SesionGlobal> session_;
};

/// A known computer, the constants in force, no error anywhere; all of it put back afterwards.
class ErrorsTest : public ::testing::Test {
protected:
    ErrorsTest();
    ~ErrorsTest() override;

    std::shared_ptr<PlatformDouble> platform = std::make_shared<PlatformDouble>();
    std::shared_ptr<ProviderDouble> provider = std::make_shared<ProviderDouble>();
    Switches switches;

    /// Makes a module operation raise as it is entered.
    void FailIn(std::string operation);

private:
    std::shared_ptr<const Platform> platformBefore_;
    std::shared_ptr<Provider> providerBefore_;
};

/// Puts an error in the place of the current one.
void SetCurrent(std::int32_t number, std::string source, std::string description);
/// The engine's refusal that most tests start from: base + 19, "dhRichClient3", "UNIQUE constraint failed".
void SetRefused();
[[noreturn]] void RaiseRefused();

inline constexpr std::int32_t kRefused = -2147221485;
/// The header of that refusal in CBoletin.Borrar on the known computer.
inline constexpr std::string_view kRefusedHeader =
    "UNIQUE constraint failed \r\n"
    "  Time='03/05/26 08:00:00' App='planner:84.0.0' ADO-version='2.8' Computer='PLANT-1' \r\n"
    "  Method: CBoletin.Borrar \r\n"
    "  Number: -2147221485 = &H80040013 = vbObjectError + 19 = ERRMAP_APP_FIRST - 5179 \r\n"
    "  Source: dhRichClient3 \r\n"
    "  Description: UNIQUE constraint failed\r\n";
/// The call-stack line of CBoletin.Borrar(SC_Boletin) with 17.
inline constexpr std::string_view kBorrarLine =
    "  Call Stack: CBoletin.Borrar(SC_Boletin=17) -------------------------------------------------------\r\n";

/// Runs something that must raise, and gives the error.
ErrorRecord RaisedBy(const std::function<void()>& work);

/// Joins pieces of an expected text.
std::string Joined(std::initializer_list<std::string_view> pieces);

}  // namespace errors_test
