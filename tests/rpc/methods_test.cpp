#include "tests/rpc/bridge_test.h"

#include "frame/provider.h"

using namespace support;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

namespace {

TEST(Create, MatchesTheClassWithoutRegardToCase) {
    Client client;
    EXPECT_EQ(client.Create("CBoletin"), "CBoletin#1");
    EXPECT_EQ(client.Create("cboletin"), "CBoletin#2");
    EXPECT_EQ(client.Create("Zontara.CBOLETIN"), "CBoletin#3");
    EXPECT_EQ(client.Create("CGama"), "CGama#1");
}

TEST(Create, TurnsDownWhatIsNoClassToCreate) {
    Client client;
    for (const char* params : {R"({"class":"CNada"})", R"({"class":"Recordset"})", R"({"class":"ListaCambios"})",
                               R"({"class":""})", R"({"class":5})", R"({"class":null})", R"({"class":["CBoletin"]})",
                               R"({"class":"CBoletin","more":1})", R"({"Class":"CBoletin"})", "{}"}) {
        EXPECT_EQ(client.Code("create", Parse(params)), -32602) << params;
    }
}

TEST(Release, LetsGoOfTheHandleForGood) {
    Client client;
    const std::string object = client.Create("CUnidadLectura");
    EXPECT_EQ(client.Result("release", {{"object", object}}), Json());
    EXPECT_EQ(client.InvokeCode(object, "Seleccionar", Json::array()), -32602);
    EXPECT_EQ(client.Code("release", {{"object", object}}), -32602);
    EXPECT_EQ(client.Create("CUnidadLectura"), "CUnidadLectura#2");
}

TEST(Release, GivesAnObjectThatOthersHoldANewHandleWhenItIsReachedAgain) {
    Client client;
    const std::string facade = client.Create("CGlobalPreventivo");
    EXPECT_EQ(client.Value(facade, "Gama")["object"], "CGama#1");
    EXPECT_EQ(client.Value(facade, "Gama")["object"], "CGama#1");
    client.Result("release", {{"object", "CGama#1"}});
    EXPECT_EQ(client.Value(facade, "Gama")["object"], "CGama#2");
}

TEST(Release, TurnsDownWhatIsNoHandle) {
    Client client;
    for (const char* params : {R"({"object":"CGama#1"})", R"({"object":1})", R"({"object":null})", "{}"}) {
        EXPECT_EQ(client.Code("release", Parse(params)), -32602) << params;
    }
}

TEST(Invoke, MatchesMembersAndArgumentsWithoutRegardToCase) {
    Client client;
    const std::string object = client.Create("CGrupoGama");
    EXPECT_EQ(client.Value(object, "NUEVO", {{"DESCRIPCION", "Motores"}, {"orden_lista", 3}}), 1);
    EXPECT_EQ(client.Rows("SELECT * FROM Grupo_Gama"), Parse(R"([[1,"Motores",3]])"));
}

TEST(Invoke, CallsAnOperationWithoutArgumentsInAllForms) {
    Client client;
    const std::string object = client.Create("CGama");
    const Json params{{"object", object}, {"member", "ProximoNumeroGama"}};
    EXPECT_EQ(client.Result("invoke", params), Parse(R"({"value":1,"byref":{}})"));
    EXPECT_EQ(client.Value(object, "ProximoNumeroGama", Json::array()), 1);
    EXPECT_EQ(client.Value(object, "ProximoNumeroGama", Json::object()), 1);
}

TEST(Invoke, TurnsDownUnknownObjectsAndMembers) {
    Client client;
    const std::string object = client.Create("CGama");
    for (const char* params :
         {R"({"object":"CGama#9","member":"Borrar","args":[1]})", R"({"object":"CGama","member":"Borrar","args":[1]})",
          R"({"object":"cgama#1","member":"Borrar","args":[1]})", R"({"object":"CGama#1","member":"Nada"})",
          R"({"object":"CGama#1","member":""})", R"({"object":"CGama#1","member":5})", R"({"object":"CGama#1"})",
          R"({"member":"Borrar","args":[1]})", R"({"object":"CGama#1","member":"Borrar","args":[1],"more":1})"}) {
        EXPECT_EQ(client.Code("invoke", Parse(params)), -32602) << params;
    }
}

TEST(Invoke, ReadsPropertiesAndDoesntWriteThem) {
    Client client;
    const std::string object = client.Create("CConfiguracionOTBoletin");
    EXPECT_EQ(client.Value(object, "TipoIntervencion"), 0);
    EXPECT_EQ(client.InvokeCode(object, "TipoIntervencion", Json::array({5})), -32602);
}

TEST(Set, WritesAPropertyAndGivesNothing) {
    Client client;
    const std::string object = client.Create("CConfiguracionOTBoletin");
    EXPECT_EQ(client.Result("set", {{"object", object}, {"member", "TIPOINTERVENCION"}, {"value", 5}}),
              Parse(R"({"value":null})"));
    EXPECT_EQ(client.Value(object, "TipoIntervencion"), 5);
}

TEST(Set, TurnsDownWhatDoesntFitAndKeepsTheValue) {
    Client client;
    const std::string object = client.Create("CConfiguracionOTBoletin");
    for (const char* rest :
         {R"("member":"EstatusFinalBoletin","value":32768)", R"("member":"EstatusFinalBoletin","value":"1")",
          R"("member":"EstatusFinalBoletin","value":null)", R"("member":"EstatusFinalBoletin")",
          R"("member":"EstatusFinalBoletin","value":1,"args":[])", R"("member":"Nada","value":1)", R"("value":1)"}) {
        const std::string params = R"({"object":"CConfiguracionOTBoletin#1",)" + std::string(rest) + "}";
        EXPECT_EQ(client.Code("set", Parse(params)), -32602) << params;
    }
    EXPECT_EQ(client.Value(object, "EstatusFinalBoletin"), 0);
}

TEST(Set, TurnsDownAPropertyThatIsOnlyRead) {
    Client client;
    const std::string object = client.Create("CGama");
    EXPECT_EQ(client.Code("set", {{"object", object}, {"member", "ListaDeTareasCambio"}, {"value", nullptr}}), -32602);
}

TEST(Set, NullEmptiesAPropertyThatHoldsAnObject) {
    Client client;
    const std::string object = client.Create("CImputacionPreventiva");
    EXPECT_EQ(client.Value(object, "OTPreventivaGenerada")["object"], "ListaCambios#1");
    client.Result("set", {{"object", object}, {"member", "OTPreventivaGenerada"}, {"value", nullptr}});
    EXPECT_EQ(client.Value(object, "OTPreventivaGenerada")["object"], "ListaCambios#2");
}

TEST(SessionMethod, TellsTheDepth) {
    Client client;
    const std::string facade = client.Create("CGlobalPreventivo");
    client.Invoke(facade, "IniciarTransaccion");
    client.Invoke(facade, "IniciarTransaccion");
    EXPECT_EQ(client.Result("session"), Parse(R"({"depth":2})"));
    EXPECT_EQ(client.Result("session", Json::object()), Parse(R"({"depth":2})"));
}

/// The day as of which an overdue question is asked, from its statement.
std::string DayOfQuestion(Client& client) {
    const Json trace = client.Invoke(client.Create("CImputacionPreventiva"), "ActivoTieneMantenimientoVencido",
                                     Json::array({"A"}))["trace"];
    const std::string sql = trace[0]["sql"];
    return sql.substr(sql.find("<= '") + 4, 10);
}

TEST(Now, MovesTheClockAndNullPutsTheFirstOneBack) {
    Client client(InMemory(true));
    EXPECT_EQ(DayOfQuestion(client), "2026-03-05");
    EXPECT_EQ(client.Result("now", {{"value", "2027-12-31T23:59:59"}}), Json());
    EXPECT_EQ(DayOfQuestion(client), "2027-12-31");
    client.Result("now", {{"value", "2028-02-29"}});
    EXPECT_EQ(DayOfQuestion(client), "2028-02-29");
    client.Result("now", {{"value", nullptr}});
    EXPECT_EQ(DayOfQuestion(client), "2026-03-05");
}

TEST(Now, NullIsTheSystemsClockWhenNoneWasGiven) {
    host::rpc::Settings settings = InMemory(true);
    settings.now.reset();
    Client client(settings);
    client.Result("now", {{"value", "1999-01-01"}});
    client.Result("now", {{"value", nullptr}});
    EXPECT_GT(DayOfQuestion(client), "2024-01-01");
}

TEST(Now, TurnsDownWhatIsNoDate) {
    Client client(InMemory(true));
    for (const char* params : {R"({"value":"05/03/2026"})", R"({"value":"2026-02-30"})", R"({"value":5})",
                               R"({"value":"2026-03-05T24:00:00"})", R"({"value":""})", "{}"}) {
        EXPECT_EQ(client.Code("now", Parse(params)), -32602) << params;
    }
    EXPECT_EQ(DayOfQuestion(client), "2026-03-05");
}

TEST(ShortDate, OrdersTheDatesOfTexts) {
    host::rpc::Settings settings = InMemory();
    settings.shortDate = "mm/dd/yyyy";
    Client client(settings);
    client.Invoke(client.Create("CEquipo"), "ActualizarFecha", Json::array({"E", "05/03/2026"}));
    client.Execute("INSERT INTO Equipo (ID_Equipo) VALUES ('E')");
    client.Invoke("CEquipo#1", "ActualizarFecha", Json::array({"E", "05/03/2026"}));
    EXPECT_EQ(client.Rows("SELECT Fecha_Ultimo_Mantenimiento FROM Equipo"), Parse(R"([["2026-05-03"]])"));
}

TEST(Query, GivesARecordset) {
    Client client;
    EXPECT_EQ(client.Result("query", {{"sql", "SELECT 1 AS a, 'x' AS b UNION SELECT 2, NULL ORDER BY 1"}}),
              Parse(R"({"object":"Recordset#1","recordset":{"columns":["a","b"],"rows":[[1,"x"],[2,null]]}})"));
    EXPECT_EQ(client.Result("query", {{"sql", "WITH t AS (SELECT 3 AS c) SELECT c FROM t"}})["recordset"]["rows"],
              Parse("[[3]]"));
    EXPECT_EQ(client.Rows("VALUES (4)"), Parse("[[4]]"));
    EXPECT_EQ(client.Rows("SELECT 1 WHERE 0"), Json::array());
}

TEST(Query, OnlyReads) {
    Client client;
    client.Execute("INSERT INTO Unidad_Lectura VALUES (1, 'km')");
    for (const char* sql :
         {"DELETE FROM Unidad_Lectura RETURNING *", "INSERT INTO Unidad_Lectura VALUES (2, 'x')",
          "UPDATE Unidad_Lectura SET Descripcion = 'y'", "WITH t AS (SELECT 1) DELETE FROM Unidad_Lectura"}) {
        EXPECT_EQ(client.Code("query", {{"sql", sql}}), -32602) << sql;
    }
    EXPECT_EQ(client.Code("query", {{"sql", "DROP TABLE Unidad_Lectura"}}), -2147221504 + 23);
    EXPECT_EQ(client.Rows("SELECT * FROM Unidad_Lectura"), Parse(R"([[1,"km"]])"));
}

TEST(Query, FailsWithTheEnginesError) {
    Client client(InMemory(true));
    EXPECT_EQ(client.Error("query", {{"sql", "SELECT x FROM nada"}}),
              Parse(R"({"code":-2147221503,"message":"no such table: nada",
                        "data":{"source":"dhRichClient3","helpFile":"","helpContext":0}})"));
    for (const char* params : {R"({"sql":5})", "{}", R"({"sql":null})", R"({"text":"SELECT 1"})"}) {
        EXPECT_EQ(client.Code("query", Parse(params)), -32602) << params;
    }
}

TEST(Execute, RunsSeveralStatementsDdlIncluded) {
    Client client;
    EXPECT_EQ(
        client.Result("execute", {{"sql", "CREATE TABLE t (a); INSERT INTO t VALUES (1); INSERT INTO t VALUES (2)"}}),
        Json());
    EXPECT_EQ(client.Rows("SELECT a FROM t"), Parse("[[1],[2]]"));
}

TEST(Execute, JoinsTheOpenTransaction) {
    Client client;
    const std::string facade = client.Create("CGlobalPreventivo");
    client.Invoke(facade, "IniciarTransaccion");
    client.Execute("CREATE TABLE t (a); INSERT INTO Unidad_Lectura VALUES (1, 'km')");
    client.Invoke(facade, "AbortarTransaccion");
    EXPECT_EQ(client.Rows("SELECT count(*) FROM Unidad_Lectura"), Parse("[[0]]"));
    EXPECT_EQ(client.Code("query", {{"sql", "SELECT * FROM t"}}), -2147221503);
}

TEST(Execute, FailsWithTheEnginesError) {
    Client client;
    const Json error = client.Error("execute", {{"sql", "CREATE TABLE Gama (a)"}});
    EXPECT_EQ(error["code"], -2147221503);
    EXPECT_EQ(error["data"]["source"], "dhRichClient3");
    EXPECT_EQ(client.Code("execute", {{"sql", 1}}), -32602);
}

TEST(Tracing, IsAbsentUnlessAskedFor) {
    Client client;
    const std::string object = client.Create("CUnidadLectura");
    EXPECT_EQ(client.Invoke(object, "Nuevo", Json::array({"km"})), Parse(R"({"value":1,"byref":{}})"));
    client.Execute("DROP TABLE Unidad_Lectura");
    const Json error = client.Error("invoke", {{"object", object}, {"member", "Borrar"}, {"args", Json::array({1})}});
    EXPECT_FALSE(error["data"].contains("trace")) << error;
    EXPECT_FALSE(client.Error("invoke", {{"object", "x"}}).contains("data"));
}

TEST(Tracing, StandsInEveryAnswerOfInvokeAndSet) {
    Client client(InMemory(true));
    client.Create("CConfiguracionOTBoletin");
    EXPECT_EQ(
        client.Result("set", {{"object", "CConfiguracionOTBoletin#1"}, {"member", "TipoIntervencion"}, {"value", 1}}),
        Parse(R"({"value":null,"trace":[]})"));
    EXPECT_EQ(client.Error("set", {{"object", "x"}})["data"], Parse(R"({"trace":[]})"));
    EXPECT_EQ(client.Error("invoke", Json::object())["data"], Parse(R"({"trace":[]})"));
    EXPECT_FALSE(client.Error("create", Json::object()).contains("data"));
}

TEST(Tracing, LeavesOutQueriesAndScripts) {
    Client client(InMemory(true));
    client.Execute("INSERT INTO Unidad_Lectura VALUES (5, 'km')");
    client.Rows("SELECT * FROM Unidad_Lectura");
    EXPECT_THAT(client.Invoke(client.Create("CUnidadLectura"), "Borrar", Json::array({5}))["trace"],
                ElementsAre(Parse(R"({"sql":"  DELETE From Unidad_Lectura WHERE SC_Unidad_Lectura =5"})")));
}

TEST(ComponentErrors, ArriveWithNumberSourceAndDescriptionAsRaised) {
    Client client;
    const Json error =
        client.Error("invoke", {{"object", client.Create("CGlobalPreventivo")}, {"member", "TerminarTransaccion"}});
    EXPECT_EQ(error["code"], 6);
    EXPECT_THAT(error["message"].get<std::string>(), HasSubstr("Overflow \r\n  Time='03/05/26 08:00:00'"));
    EXPECT_EQ(error["data"], Parse(R"({"source":"HuntERR.ErrorIn","helpFile":"","helpContext":0})"));
}

TEST(TheBridge, PutsBackTheProviderThatWasThere) {
    const auto before = Zontara::InstalledProvider();
    {
        Client client;
        EXPECT_NE(Zontara::InstalledProvider(), before);
    }
    EXPECT_EQ(Zontara::InstalledProvider(), before);
}

TEST(TheBridge, LetsGoOfEveryObjectAtItsEnd) {
    const auto before = Zontara::Object::Living();
    {
        Client client(InMemory(true));
        client.Value(client.Create("CGlobalPreventivo"), "Gama");
        client.Rows("SELECT 1");
    }
    EXPECT_EQ(Zontara::Object::Living(), before);
}

}  // namespace
