#include "Perluma/tracing_provider.h"

#include "tests/Perluma/session_fixture.h"

#include <new>

namespace {

using support::ErrorOf;
using testing::ElementsAre;
using testing::IsEmpty;
using Zontara::Ref;
using Zontara::Value;

/// Writes down what it hears, and raises ahead of the request whose line is `refused`.
class Notebook : public Perluma::TraceSink {
public:
    std::vector<std::string> heard;
    std::vector<std::string> lines;
    std::vector<Value> arguments;
    Value result;
    std::string refused;
    bool full = false;

    void Before(const std::string& line) override {
        lines.push_back(line);
        if (line == refused) Zontara::RaiseError(7777, "test", "refused");
    }
    void Sql(const std::string& text) override { heard.push_back("sql " + text); }
    void Transaction(std::string_view what) override {
        if (full) throw std::bad_alloc();
        heard.emplace_back(what);
    }
    void Key(const std::string& table, std::int32_t value) override {
        heard.push_back("key " + table + " " + std::to_string(value));
    }
    void Service(std::string_view name, const std::vector<Value>& given, const Value& gave) override {
        heard.push_back("service " + std::string(name));
        arguments = given;
        result = gave;
    }
    void Event(std::string_view name, const Value& argument) override {
        heard.push_back("event " + std::string(name) + " " + Zontara::ToText(argument));
    }
    void Notice(const std::string& text) override { heard.push_back("notice " + text); }
};

class TracingTest : public SessionTest {
protected:
    Ref<Zontara::Conexion> Connection() { return traced.Session().LaConexion(); }
    Ref<Zontara::Recordset> Open(const std::string& sql) {
        auto rows = traced.NewRecordset();
        rows->ConexionActiva(Connection());
        rows->TextoSQL(sql);
        rows->Abrir("", Zontara::Absent{}, 0);
        rows->ConexionActiva(nullptr);
        return rows;
    }
    std::vector<std::string>& Heard() { return notebook->heard; }

    std::shared_ptr<Notebook> notebook = std::make_shared<Notebook>();
    Perluma::TracingProvider traced{provider, notebook};
};

TEST_F(TracingTest, StatementsAreHeardLetterForLetterWithTheirTransaction) {
    Connection()->IniciarTrans("");
    Connection()->Ejecutar("  INSERT Into Gama (SC_Gama) VALUES (4)");
    EXPECT_EQ(Open("SELECT SC_Gama FROM Gama ")->Valor("SC_Gama"), Value(4));
    Connection()->ConfirmarTrans("");
    EXPECT_THAT(Heard(), ElementsAre("begin", "sql   INSERT Into Gama (SC_Gama) VALUES (4)",
                                     "sql SELECT SC_Gama FROM Gama ", "commit"));
    EXPECT_THAT(Rows("SELECT SC_Gama FROM Gama"), ElementsAre("4"));
}

TEST_F(TracingTest, RefusedStatementsAreHeardToo) {
    EXPECT_EQ(ErrorOf([&] { Connection()->Ejecutar("DELETE FROM nada"); }).number, Zontara::vbObjectError + 1);
    EXPECT_EQ(ErrorOf([&] { Open("SELECT nada"); }).number, Zontara::vbObjectError + 1);
    EXPECT_THAT(Heard(), ElementsAre("sql DELETE FROM nada", "sql SELECT nada"));
}

TEST_F(TracingTest, ARollbackIsHeardOnceItHasReachedTheDatabase) {
    Connection()->IniciarTrans("");
    Connection()->RevertirTrans("", 0);
    EXPECT_THAT(Heard(), ElementsAre("begin", "rollback"));
    EXPECT_EQ(ErrorOf([&] { Connection()->ConfirmarTrans(""); }).number, Zontara::vbObjectError + 1);
    EXPECT_THAT(Heard(), ElementsAre("begin", "rollback"));
}

TEST_F(TracingTest, ATransactionThatTheDatabaseRefusesIsNotHeard) {
    Connection()->IniciarTrans("");
    Heard().clear();
    EXPECT_NE(ErrorOf([&] { Connection()->IniciarTrans(""); }).number, 0);
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_F(TracingTest, ATransactionTakesItsCourseWhenTheSinkCannotTakeNoteOfIt) {
    notebook->full = true;
    Connection()->IniciarTrans("");
    Connection()->Ejecutar("INSERT INTO Gama (SC_Gama) VALUES (4)");
    EXPECT_NO_THROW(Connection()->ConfirmarTrans(""));
    Connection()->IniciarTrans("");
    EXPECT_NO_THROW(Connection()->RevertirTrans("", 0));
    EXPECT_THAT(Rows("SELECT SC_Gama FROM Gama"), ElementsAre("4"));
}

TEST_F(TracingTest, KeysAreHeardWithTheirTableAsSpelt) {
    EXPECT_EQ(traced.Session().ElGeneradorClaves()->ProximaClave("boletin"), 1);
    EXPECT_THAT(Heard(), ElementsAre("key boletin 1"));
}

TEST_F(TracingTest, TheSessionIsTheOneBehind) {
    EXPECT_EQ(Connection(), Connection());
    EXPECT_EQ(traced.Session().ElGeneradorClaves(), traced.Session().ElGeneradorClaves());
    traced.Session().ProfundidadTransaccion(3);
    EXPECT_EQ(provider->Session().ProfundidadTransaccion(), 3);
    EXPECT_EQ(traced.Session().ProfundidadTransaccion(), 3);
    EXPECT_EQ(traced.Session().TextoParaSQL("d'oil"), "d''oil");
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_F(TracingTest, WhatServicesDoForThemselvesIsNotHeardNorAreTheirProperties) {
    const std::int32_t key = traced.Perluma().OrdenesTrabajo()->CrearOrden({});
    traced.Perluma().Activos()->FijarAcumulado("A", 5);
    EXPECT_THAT(Heard(), ElementsAre("service OrdenTrabajo.CrearOrden", "service ServicioActivos.FijarAcumulado"));
    EXPECT_THAT(Rows("SELECT SC_Orden_Trabajo FROM Orden_Trabajo"), ElementsAre(std::to_string(key)));
}

struct ServiceCall {
    std::string name;
    std::function<void(Zontara::Provider&)> call;
    std::vector<Value> arguments;
    Value result;
};

const Zontara::DatosOrden kOrder = {1, "b", "c", "d", 5, 6, "g", 8, 9, "j", 11, 12, 13, 14, 15};

const std::vector<ServiceCall> kCalls = {
    {"OrdenTrabajo.CrearOrden",
     [](auto& p) { p.Perluma().OrdenesTrabajo()->CrearOrden(kOrder); },
     {1, "b", "c", "d", 5, 6, "g", 8, std::int16_t{9}, "j", 11, 12, 13, 14, 15},
     1},
    {"OrdenTrabajo.AsignarManoObra",
     [](auto& p) { p.Perluma().OrdenesTrabajo()->AsignarManoObra(1, 2, 2.5F); },
     {1, std::int16_t{2}, 2.5F},
     Value()},
    {"ServicioMaterialesOT.AgregarItemOT",
     [](auto& p) {
         p.Perluma().MaterialesOT()->AgregarItemOT(1, "oil", Zontara::Money::FromTenThousandths(5), 1.5F, 4);
     },
     {std::int16_t{1}, "oil", Zontara::Money::FromTenThousandths(5), 1.5F, 4},
     Value()},
    {"ServicioActivos.FijarAcumulado", [](auto& p) { p.NewServicioActivos()->FijarAcumulado("A", 3); }, {"A", 3}, {}},
    {"ServicioActivos.FijarLectura", [](auto& p) { p.Perluma().Activos()->FijarLectura("A", 4); }, {"A", 4}, {}},
    {"ServicioActivos.AcumuladoActual", [](auto& p) { p.NewServicioActivos()->AcumuladoActual("A"); }, {"A"}, 3},
    {"ServicioActivos.AnotarLectura", [](auto& p) { p.NewServicioActivos()->AnotarLectura("A", "n"); }, {"A", "n"}, {}},
};

TEST_F(TracingTest, EveryServiceCallIsHeardWithArgumentsAndResult) {
    Run("INSERT INTO Activo (ID_Activo) VALUES ('A')");
    for (const ServiceCall& each : kCalls) {
        SCOPED_TRACE(each.name);
        Heard().clear();
        each.call(traced);
        EXPECT_THAT(Heard(), ElementsAre("service " + each.name));
        EXPECT_EQ(notebook->arguments, each.arguments);
        EXPECT_EQ(notebook->result, each.result);
    }
}

TEST_F(TracingTest, ARecordsetThatAServiceGivesIsItsResult) {
    const auto processes = traced.Perluma().Procesos()->SeleccionarProcesos(1);
    EXPECT_EQ(notebook->result, Value(processes));
    EXPECT_EQ(notebook->arguments, std::vector<Value>{1});
    const auto found = traced.NewServicioActivos()->BuscarActivo("A", "ID_Activo");
    EXPECT_EQ(notebook->result, Value(found));
    EXPECT_EQ(notebook->arguments, (std::vector<Value>{"A", "ID_Activo"}));
    const auto selected = traced.NewServicioActivos()->SeleccionarActivos("A", 0, 0, true, 2);
    EXPECT_EQ(notebook->result, Value(selected));
    EXPECT_EQ(notebook->arguments, (std::vector<Value>{"A", 0, 0, true, 2}));
    EXPECT_THAT(Heard(),
                ElementsAre("service ServicioProcesos.SeleccionarProcesos", "service ServicioActivos.BuscarActivo",
                            "service ServicioActivos.SeleccionarActivos"));
}

TEST_F(TracingTest, AFailingServiceLeavesNoEntry) {
    EXPECT_EQ(ErrorOf([&] { traced.NewServicioActivos()->BuscarActivo("A", "nada"); }).number,
              Zontara::vbObjectError + 1);
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_F(TracingTest, NoticesAndEventsAreHeard) {
    const auto list = traced.NewListaCambios();
    list->Agregar("");
    list->Agregar("A-1");
    traced.EventRaised("ProcesandoImputacion", 3);
    EXPECT_THAT(Heard(), ElementsAre("notice ", "notice A-1", "event ProcesandoImputacion 3"));
    EXPECT_EQ(list->Total(), 2);
    EXPECT_EQ(list->Elemento(2), "A-1");
}

TEST_F(TracingTest, EveryRequestIsAnnouncedAndMayBeHeldBack) {
    const auto list = traced.NewListaCambios();
    const std::vector<std::pair<std::string, std::function<void()>>> requests = {
        {"begin", [&] { Connection()->IniciarTrans(""); }},
        {"sql DELETE FROM Gama", [&] { Connection()->Ejecutar("DELETE FROM Gama"); }},
        {"sql SELECT 1", [&] { Open("SELECT 1"); }},
        {"commit", [&] { Connection()->ConfirmarTrans(""); }},
        {"rollback", [&] { Connection()->RevertirTrans("", 0); }},
        {"key Boletin", [&] { traced.Session().ElGeneradorClaves()->ProximaClave("Boletin"); }},
        {"service OrdenTrabajo.CrearOrden", [&] { traced.Perluma().OrdenesTrabajo()->CrearOrden({}); }},
        {"event ImputacionesRecuperadas", [&] { traced.EventRaised("ImputacionesRecuperadas", 2); }},
        {"notice A-1", [&] { list->Agregar("A-1"); }}};
    Run("INSERT INTO Gama (SC_Gama) VALUES (1)");
    for (const auto& [line, request] : requests) {
        SCOPED_TRACE(line);
        notebook->refused = line;
        notebook->lines.clear();
        EXPECT_EQ(ErrorOf(request).number, 7777);
        EXPECT_THAT(notebook->lines, ElementsAre(line));
    }
    EXPECT_THAT(Heard(), IsEmpty());
    EXPECT_THAT(Rows("SELECT (SELECT count(*) FROM Gama), (SELECT count(*) FROM Orden_Trabajo),"
                     " (SELECT count(*) FROM Clave)"),
                ElementsAre("1|0|0"));
    EXPECT_FALSE(connection->TransactionMeant());
    EXPECT_EQ(list->Total(), 0);
}

}  // namespace
