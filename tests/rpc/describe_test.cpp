#include "tests/rpc/bridge_test.h"

#include <set>

using namespace support;
using ::testing::ElementsAre;

namespace {

Json ClassOf(Client& client, const std::string& name) {
    const Json classes = client.Result("describe", {{"class", name}})["classes"];
    EXPECT_EQ(classes.size(), 1U);
    return classes[0];
}

Json MemberOf(const Json& described, const std::string& name, const std::string& kind) {
    for (const Json& member : described["members"]) {
        if (member["name"] == name && member["kind"] == kind) return member;
    }
    return {};
}

TEST(Describe, GivesTheSixteenClassesInRegistrationOrder) {
    Client client;
    const Json classes = client.Result("describe")["classes"];
    std::vector<std::string> names;
    for (const Json& each : classes)
        names.push_back(each["name"]);
    EXPECT_THAT(names, ElementsAre("CMaterialGama", "CConfiguracionOTBoletin", "CEjecutorGama", "CUsuarioEjecutorGama",
                                   "CUnidadLectura", "COrdenGenerada", "CLecturaEquipo", "CImputacionSistematica",
                                   "CImputacionPreventiva", "CImputacionParalela", "CGrupoGama", "CGama", "CEquipo",
                                   "CDocumentoEquipo", "CBoletin", "CGlobalPreventivo"));
    EXPECT_EQ(client.Result("describe", Json::object()), client.Result("describe"));
}

TEST(Describe, TellsAClassWhole) {
    Client client;
    EXPECT_EQ(
        client.bridge.Answer(R"({"jsonrpc":"2.0","id":1,"method":"describe","params":{"class":"cunidadlectura"}})"),
        R"({"jsonrpc":"2.0","id":1,"result":{"classes":[{"name":"CUnidadLectura","interface":"_CUnidadLectura",)"
        R"("appObject":false,"events":[],"members":[)"
        R"({"name":"Nuevo","kind":"method","args":[{"name":"Descripcion","type":"text","byref":false,"optional":false},)"
        R"({"name":"ConIDCero","type":"bool","byref":true,"optional":true,"default":false}],"result":"int32"},)"
        R"({"name":"Borrar","kind":"method","args":[{"name":"SC_Unidad_Lectura","type":"int32","byref":false,"optional":false}],"result":null},)"
        R"({"name":"Seleccionar","kind":"method","args":[],"result":"Recordset"},)"
        R"({"name":"Salvar","kind":"method","args":[{"name":"SC_Unidad_Lectura","type":"int32","byref":false,"optional":false},)"
        R"({"name":"Descripcion","type":"text","byref":false,"optional":false}],"result":null},)"
        R"({"name":"Buscar","kind":"method","args":[{"name":"SC_Unidad_Lectura","type":"int32","byref":false,"optional":false}],"result":"Recordset"}]}]}})");
}

TEST(Describe, MarksTheApplicationObjectAlone) {
    Client client;
    const Json classes = client.Result("describe")["classes"];
    ASSERT_EQ(classes.size(), 16U);
    for (const Json& each : classes) {
        EXPECT_EQ(each["appObject"], each["name"] == "CGlobalPreventivo") << each["name"];
    }
}

TEST(Describe, GivesTheEventsWithTheirArguments) {
    Client client;
    EXPECT_EQ(ClassOf(client, "CImputacionPreventiva")["events"], Parse(R"([
        {"name":"ProcesandoImputacion","args":[{"name":"numeroRegistro","type":"variant","byref":true,"optional":false}]},
        {"name":"ImputacionesRecuperadas","args":[{"name":"totalRegistros","type":"variant","byref":true,"optional":false}]}])"));
    EXPECT_EQ(ClassOf(client, "CImputacionSistematica")["events"], Json::array());
}

TEST(Describe, ShowsBothWaysOfWritingAsSet) {
    Client client;
    EXPECT_EQ(MemberOf(ClassOf(client, "CConfiguracionOTBoletin"), "EsEjecutorExterno", "set"), Parse(R"(
        {"name":"EsEjecutorExterno","kind":"set",
         "args":[{"name":"value","type":"bool","byref":false,"optional":false}],"result":null})"));
    EXPECT_EQ(MemberOf(ClassOf(client, "CImputacionPreventiva"), "OTPreventivaGenerada", "set"), Parse(R"(
        {"name":"OTPreventivaGenerada","kind":"set",
         "args":[{"name":"value","type":"ListaCambios","byref":false,"optional":false}],"result":null})"));
    EXPECT_EQ(MemberOf(ClassOf(client, "CImputacionPreventiva"), "OTPreventivaGenerada", "get")["result"],
              "ListaCambios");
}

TEST(Describe, GivesDefaultsOfEveryKind) {
    Client client;
    const Json preventive = ClassOf(client, "CImputacionPreventiva");
    EXPECT_EQ(MemberOf(preventive, "LanzarPreventivo", "method")["args"], Parse(R"([
        {"name":"Fecha_Lanzamiento","type":"date","byref":false,"optional":false},
        {"name":"SC_Usuario","type":"int32","byref":false,"optional":false},
        {"name":"TipoFrecuencia","type":"text","byref":false,"optional":false},
        {"name":"ConfiguracionOT","type":"CConfiguracionOTBoletin","byref":false,"optional":true,"default":null},
        {"name":"CodigoProyecto","type":"int32","byref":false,"optional":true,"default":0}])"));
    EXPECT_EQ(MemberOf(preventive, "SeleccionarActivas", "method")["args"][2]["default"], true);
    EXPECT_EQ(MemberOf(ClassOf(client, "COrdenGenerada"), "SeleccionarPorFecha", "method")["args"][2]["default"], "=");
}

TEST(Describe, UsesEveryWordForATypeAsTheProtocolHasIt) {
    Client client;
    const Json classes = client.Result("describe")["classes"];
    std::set<std::string> words;
    for (const Json& each : classes) {
        for (const Json& member : each["members"]) {
            for (const Json& argument : member["args"])
                words.insert(argument["type"].get<std::string>());
        }
    }
    EXPECT_THAT(words, ElementsAre("CConfiguracionOTBoletin", "ListaCambios", "Recordset", "bool", "byte", "date",
                                   "float32", "int16", "int32", "money", "text"));
}

TEST(Describe, KnowsTheClassesOfTheNeighboursByName) {
    Client client;
    const Json recordset = ClassOf(client, "recordset");
    EXPECT_EQ(MemberOf(recordset, "TotalRegistros", "get")["result"], "int32");
    EXPECT_EQ(MemberOf(recordset, "FinDeDatos", "get")["result"], "bool");
    EXPECT_EQ(MemberOf(ClassOf(client, "Campo"), "Valor", "get")["result"], "variant");
    EXPECT_EQ(ClassOf(client, "ListaCambios")["interface"], "_ListaCambios");
}

TEST(Describe, TurnsAnUnknownClassDown) {
    Client client;
    EXPECT_EQ(client.Code("describe", {{"class", "CNada"}}), -32602);
    EXPECT_EQ(client.Code("describe", {{"class", nullptr}}), -32602);
    EXPECT_EQ(client.Code("describe", {{"name", "CGama"}}), -32602);
}

}  // namespace
