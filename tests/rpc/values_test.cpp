#include "host/rpc/values.h"
#include "tests/rpc/bridge_test.h"

#include "frame/date.h"

#include <cmath>
#include <limits>

using namespace support;
using host::rpc::Handles;
using host::rpc::Input;
using host::rpc::ReadDate;
using host::rpc::ToJson;
using Zontara::TypeOf;
using Zontara::TypeWord;
using Zontara::Value;

namespace {

Zontara::Date At(std::int32_t year, std::int32_t month, std::int32_t day, Zontara::TimeOfDay time = {}) {
    return Zontara::WithTime(Zontara::DateOf(year, month, day), time);
}

struct TakenCase {
    const char* label;
    TypeWord type;
    const char* json;
    Value value;
};

class TakenTest : public ::testing::TestWithParam<TakenCase> {};

TEST_P(TakenTest, IsTheValue) {
    EXPECT_EQ(FromJson(Input::parse(GetParam().json), {GetParam().type, {}}, Handles(), "x"), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Values, TakenTest,
    ::testing::Values(TakenCase{"Text", TypeWord::Text, "\"a\\u00f1o\"", "a\xC3\xB1o"},
                      TakenCase{"EmptyText", TypeWord::Text, "\"\"", ""},
                      TakenCase{"TextWithNul", TypeWord::Text, "\"a\\u0000b\"", std::string("a\0b", 3)},
                      TakenCase{"LeastInt16", TypeWord::Int16, "-32768", std::int16_t{-32768}},
                      TakenCase{"MostInt16", TypeWord::Int16, "32767", std::int16_t{32767}},
                      TakenCase{"LeastInt32", TypeWord::Int32, "-2147483648", std::numeric_limits<std::int32_t>::min()},
                      TakenCase{"MostInt32", TypeWord::Int32, "2147483647", std::numeric_limits<std::int32_t>::max()},
                      TakenCase{"PointZero", TypeWord::Int32, "5.0", std::int32_t{5}},
                      TakenCase{"Exponent", TypeWord::Int32, "5e3", std::int32_t{5000}},
                      TakenCase{"MinusZero", TypeWord::Int32, "-0.0", std::int32_t{0}},
                      TakenCase{"LeastByte", TypeWord::Byte, "0", std::uint8_t{0}},
                      TakenCase{"MostByte", TypeWord::Byte, "255", std::uint8_t{255}},
                      TakenCase{"Float32", TypeWord::Float32, "12.3", 12.3F},
                      TakenCase{"WholeFloat32", TypeWord::Float32, "12", 12.0F},
                      TakenCase{"MostFloat32", TypeWord::Float32, "3.4028235e38", std::numeric_limits<float>::max()},
                      TakenCase{"True", TypeWord::Bool, "true", true},
                      TakenCase{"False", TypeWord::Bool, "false", false},
                      TakenCase{"Money", TypeWord::Money, "12.3456", Zontara::Money::FromTenThousandths(123456)},
                      TakenCase{"WholeMoney", TypeWord::Money, "-3", Zontara::Money::FromTenThousandths(-30000)},
                      TakenCase{"SmallMoney", TypeWord::Money, "1e-4", Zontara::Money::FromTenThousandths(1)},
                      TakenCase{"LargeMoney", TypeWord::Money, "900719925474.0991",
                                Zontara::Money::FromTenThousandths(9007199254740991)},
                      TakenCase{"Date", TypeWord::Date, "\"2026-03-05\"", At(2026, 3, 5)},
                      TakenCase{"DateAndTime", TypeWord::Date, "\"2026-03-05T08:00:30\"", At(2026, 3, 5, {8, 0, 30})},
                      TakenCase{"LeapDay", TypeWord::Date, "\"2028-02-29\"", At(2028, 2, 29)},
                      TakenCase{"OldDate", TypeWord::Date, "\"1850-01-01T12:00:00\"", At(1850, 1, 1, {12, 0, 0})},
                      TakenCase{"VariantText", TypeWord::Variant, "\"2026-03-05\"", "2026-03-05"},
                      TakenCase{"VariantWhole", TypeWord::Variant, "7", std::int32_t{7}},
                      TakenCase{"VariantReal", TypeWord::Variant, "7.5", 7.5},
                      TakenCase{"VariantLargeWhole", TypeWord::Variant, "3000000000", 3e9},
                      TakenCase{"VariantBool", TypeWord::Variant, "true", true}),
    [](const auto& parameter) { return parameter.param.label; });

struct RefusedCase {
    const char* label;
    TypeWord type;
    std::vector<const char*> jsons;
};

class RefusedTest : public ::testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedTest, IsTurnedDown) {
    for (const char* json : GetParam().jsons) {
        try {
            FromJson(Input::parse(json), {GetParam().type, "CConfiguracionOTBoletin"}, Handles(), "x");
            ADD_FAILURE() << json;
        } catch (const host::rpc::Refusal& refusal) {
            EXPECT_EQ(refusal.code(), host::rpc::Code::WrongParameters);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Values, RefusedTest,
    ::testing::Values(
        RefusedCase{"Text", TypeWord::Text, {"5", "true", "null", "[]", "{}"}},
        RefusedCase{"Int16", TypeWord::Int16, {"32768", "-32769", "2.5", "\"1\"", "true", "null", "[1]", "{}"}},
        RefusedCase{"Int32",
                    TypeWord::Int32,
                    {"2147483648", "-2147483649", "18446744073709551615", "9223372036854775808", "1e300", "0.1", "\"\"",
                     "false", "null"}},
        RefusedCase{"Byte", TypeWord::Byte, {"256", "-1", "1.5", "\"1\"", "true", "null"}},
        RefusedCase{"Float32", TypeWord::Float32, {"3.5e38", "-1e39", "\"1.5\"", "true", "null"}},
        RefusedCase{"Bool", TypeWord::Bool, {"0", "1", "-1", "\"true\"", "null"}},
        RefusedCase{"Money", TypeWord::Money, {"1e15", "-1e300", "1.23456", "0.00001", "\"1\"", "true", "null"}},
        RefusedCase{"Date",
                    TypeWord::Date,
                    {"\"2026-02-29\"", "\"2026-3-5\"", "\"05/03/2026\"", "\"2026-03-05 08:00:00\"",
                     "\"2026-03-05T08:00\"", "\"2026-03-05T24:00:00\"", "\"2026-03-05T08:60:00\"",
                     "\"2026-03-05T08:00:60\"", "\"2026-03-05T08:00:00Z\"", "\"2026-03-05T\"", "\"0099-12-31\"",
                     "\"12026-03-05\"", "\"2026/03/05\"", "\"\"", "46086", "null", "true"}},
        RefusedCase{"Variant", TypeWord::Variant, {"null", "[]", "{}"}},
        RefusedCase{"Object",
                    TypeWord::Object,
                    {"\"CGama#1\"", "{}", "{\"object\":\"CGama#1\"}", "{\"object\":1}", "5", "[]", "false"}}),
    [](const auto& parameter) { return parameter.param.label; });

struct GivenCase {
    const char* label;
    Value value;
    const char* text;
};

class GivenTest : public ::testing::TestWithParam<GivenCase> {};

TEST_P(GivenTest, ReadsAsWritten) {
    EXPECT_EQ(host::rpc::WriteLine(ToJson(GetParam().value, nullptr)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Values, GivenTest,
    ::testing::Values(GivenCase{"Empty", Value(), "null"}, GivenCase{"Null", Zontara::Null{}, "null"},
                      GivenCase{"Absent", Zontara::Absent{}, "null"}, GivenCase{"None", nullptr, "null"},
                      GivenCase{"True", true, "true"}, GivenCase{"Byte", std::uint8_t{255}, "255"},
                      GivenCase{"Int16", std::int16_t{-5}, "-5"},
                      GivenCase{"Int32", std::int32_t{2147483647}, "2147483647"}, GivenCase{"Float32", 0.1F, "0.1"},
                      GivenCase{"LongFloat32", 16777216.0F, "16777216.0"}, GivenCase{"Float64", 0.1, "0.1"},
                      GivenCase{"NoNumber", std::nan(""), "null"},
                      GivenCase{"Money", Zontara::Money::FromTenThousandths(123456), "12.3456"},
                      GivenCase{"WholeMoney", Zontara::Money::FromTenThousandths(-30000), "-3"},
                      GivenCase{"LargestMoney", Zontara::Money::FromTenThousandths(9223372036854770000),
                                "922337203685477"},
                      GivenCase{"Date", At(2026, 3, 5), "\"2026-03-05\""},
                      GivenCase{"DateAndTime", At(2026, 3, 5, {8, 0, 5}), "\"2026-03-05T08:00:05\""},
                      GivenCase{"ZeroDate", Zontara::Date{}, "\"1899-12-30\""},
                      GivenCase{"EarlyDate", At(100, 1, 1), "\"0100-01-01\""},
                      GivenCase{"Text", "a\"\xC3\xB1\n", "\"a\\\"\xC3\xB1\\n\""},
                      GivenCase{"InvalidUtf8",
                                "a\xFF"
                                "b",
                                "\"a\xEF\xBF\xBD"
                                "b\""},
                      GivenCase{"List", Zontara::Array{1, "x", Zontara::Null{}}, "[1,\"x\",null]"}),
    [](const auto& parameter) { return parameter.param.label; });

TEST(DateForms, ReadBackAsWritten) {
    for (const char* text : {"2026-03-05", "1899-12-29T06:00:00", "0100-01-02T00:00:01", "9999-12-31T23:59:59"}) {
        ASSERT_TRUE(ReadDate(text)) << text;
        EXPECT_EQ(host::rpc::WriteDate(*ReadDate(text)), text);
    }
}

/// Calls that must be turned down without reaching the operation.
class ArgumentsTest : public ::testing::TestWithParam<const char*> {};

TEST_P(ArgumentsTest, AreTurnedDownAndTheOperationIsntCalled) {
    Client client(InMemory(true));
    client.Create("CGrupoGama");
    const Json error =
        client.Error("invoke", {{"object", "CGrupoGama#1"}, {"member", "Nuevo"}, {"args", Parse(GetParam())}});
    EXPECT_EQ(error["code"], -32602) << error;
    EXPECT_EQ(error["data"], Parse(R"({"trace":[]})"));
    EXPECT_EQ(client.Rows("SELECT count(*) FROM Grupo_Gama"), Parse("[[0]]"));
    EXPECT_EQ(client.Result("session")["depth"], 0);
}

INSTANTIATE_TEST_SUITE_P(Calls, ArgumentsTest,
                         ::testing::Values(R"(["a"])", "[]", R"(["a",1,false,0])", R"([1,1])", R"(["a","1"])",
                                           R"(["a",2.5])", R"(["a",true])", R"(["a",null])", R"(["a",1,1])",
                                           R"(["a",1,null])", R"(["a",2147483648])", R"({"Descripcion":"a"})",
                                           R"({"Descripcion":"a","Orden_Lista":1,"Nada":1})",
                                           R"({"Descripcion":"a","Orden_Lista":1,"orden_lista":1})",
                                           R"({"Descripcion":null,"Orden_Lista":1})", R"("a")", "5", "null", "true"));

TEST(Objects, OfAnotherClassAreTurnedDown) {
    Client client;
    client.Create("CImputacionSistematica");
    client.Create("CGama");
    client.Create("CConfiguracionOTBoletin");
    const auto code = [&](const char* object) {
        return client
            .Answer("invoke", {{"object", "CImputacionSistematica#1"},
                               {"member", "GenerarOTSSistematicas"},
                               {"args", Json::array({"2026-03-05", Parse(object)})}})
            .value("/error/code"_json_pointer, 0);
    };
    EXPECT_EQ(code(R"({"object":"CConfiguracionOTBoletin#1"})"), 0);
    EXPECT_EQ(code(R"({"object":"CGama#1"})"), -32602);
    EXPECT_EQ(code(R"({"object":"CConfiguracionOTBoletin#2"})"), -32602);
    EXPECT_EQ(code(R"({"object":"CConfiguracionOTBoletin#1","more":1})"), -32602);
    EXPECT_EQ(code(R"("CConfiguracionOTBoletin#1")"), -32602);
}

TEST(Recordsets, StandOnTheirFirstRowAndCanBeWalked) {
    Client client;
    client.Execute("INSERT INTO Unidad_Lectura VALUES (1, 'km'), (2, 'h')");
    const std::string rows = client.Value(client.Create("CUnidadLectura"), "Seleccionar")["object"];
    EXPECT_EQ(rows, "Recordset#1");
    EXPECT_EQ(client.Value(rows, "TotalRegistros"), 2);
    const std::string fields = client.Value(rows, "Campos")["object"];
    const auto description = [&] {
        const std::string field = client.Value(fields, "Item", Json::array({"DESCRIPCION"}))["object"];
        return client.Value(field, "Valor");
    };
    EXPECT_EQ(description(), "km");
    EXPECT_EQ(client.Value(rows, "MoverSiguiente"), Json());
    EXPECT_EQ(description(), "h");
    client.Invoke(rows, "MoverSiguiente");
    EXPECT_EQ(client.Value(rows, "FinDeDatos"), true);
    client.Invoke(rows, "MoverPrimero");
    EXPECT_EQ(description(), "km");
}

TEST(Recordsets, AreTakenBackAsTheyWereGiven) {
    Client client;
    const Json rows =
        client.Result("query", {{"sql",
                                 "SELECT 'Semanal' AS frecuencia, 9 AS Semana, 1 AS Programacion, '2026-02-26' AS "
                                 "Fecha_Ultimo_Lanzamiento, 1 AS Intervalo_Frecuencia"}});
    client.Create("CImputacionPreventiva");
    EXPECT_EQ(client.Value("CImputacionPreventiva#1", "ImputacionEstaVencida", Json::array({rows, "2026-03-05"})),
              true);
}

TEST(Recordsets, HoldNumbersAsTheEngineHasThem) {
    Client client;
    EXPECT_EQ(client.Rows("SELECT 2147483647, 2147483648, 1.5, -0.1, 1e300, 9e999, x'6162', '', NULL"),
              Parse(R"([[2147483647,2147483648.0,1.5,-0.1,1e300,null,"ab","",null]])"));
}

TEST(Lists, ShowTheirNotices) {
    Client client;
    const std::string list = client.Value(client.Create("CGama"), "ListaDeTareasCambio")["object"];
    client.Invoke(list, "Agregar", Json::array({"A-1"}));
    client.Invoke(list, "Agregar", Json::array({""}));
    EXPECT_EQ(client.Value("CGama#1", "ListaDeTareasCambio"),
              Parse(R"({"object":"ListaCambios#1","list":["A-1",""]})"));
    EXPECT_EQ(client.Value(list, "Total"), 2);
    EXPECT_EQ(client.Value(list, "Elemento", Json::array({1})), "A-1");
    EXPECT_EQ(client.InvokeCode(list, "Elemento", Json::array({3})), 9);
}

}  // namespace
