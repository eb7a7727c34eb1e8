#include "schema/create.h"

#include "dhRichClient3/connection.h"
#include "frame/raised_error.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using dhRichClient3::Connection;
using support::ErrorOf;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> RowsOf(Connection& connection, const std::string& sql) {
    std::vector<std::string> rows;
    auto query = connection.Prepare(sql);
    while (query.Step()) {
        std::string row = query.IsNull(0) ? "NULL" : query.Text(0);
        for (int column = 1; column < query.ColumnCount(); ++column)
            row += "|" + (query.IsNull(column) ? "NULL" : query.Text(column));
        rows.push_back(row);
    }
    return rows;
}

struct ExpectedTable {
    const char* name;
    /// Each column as name, declared type, default and place in the primary key.
    std::vector<std::string> columns;
};

const std::vector<ExpectedTable> kTables = {
    {"Boletin",
     {"SC_Boletin|INTEGER|NULL|1",
      "SC_Imputacion_Preventiva|INTEGER|NULL|0",
      "ID_Equipo|TEXT|NULL|0",
      "Fecha_Lanzamiento|TEXT|NULL|0",
      "Fecha_Entrega|TEXT|NULL|0",
      "Fecha_Real_Entrega|TEXT|NULL|0",
      "Lunes|TEXT|NULL|0",
      "Martes|TEXT|NULL|0",
      "Miercoles|TEXT|NULL|0",
      "Jueves|TEXT|NULL|0",
      "Viernes|TEXT|NULL|0",
      "Sabado|TEXT|NULL|0",
      "Domingo|TEXT|NULL|0",
      "Semana_Del_Ano|INTEGER|NULL|0",
      "SC_Usuario|INTEGER|NULL|0",
      "Nota|TEXT|NULL|0",
      "Estatus|INTEGER|0|0",
      "sc_Orden_Trabajo|INTEGER|NULL|0",
      "Boletin_En_Ejecucion|INTEGER|0|0",
      "Boletin_Realizado|INTEGER|0|0"}},
    {"Documento_Equipo",
     {"SC_Documento_Equipo|INTEGER|NULL|0", "Descripcion|TEXT|NULL|0", "Nombre_Documento|TEXT|NULL|0",
      "Documento_Digital|INTEGER|0|0", "Localizacion|TEXT|NULL|0", "ID_Equipo|TEXT|NULL|0",
      "SC_Archivo_Digital|INTEGER|NULL|0"}},
    {"Equipo",
     {"ID_Equipo|TEXT|NULL|1", "Descripcion|TEXT|NULL|0", "Nivel|INTEGER|NULL|0", "Equipo_Padre|TEXT|NULL|0",
      "ID_Activo|TEXT|NULL|0", "Fecha_Ultimo_Mantenimiento|TEXT|NULL|0", "Foto|TEXT|NULL|0",
      "SC_Archivo_Digital|INTEGER|NULL|0"}},
    {"Gama",
     {"SC_Gama|INTEGER|NULL|1", "Descripcion|TEXT|NULL|0", "Texto_Mantenimiento|TEXT|NULL|0",
      "Equipo_Parado|INTEGER|0|0", "SC_Grupo_Gama|INTEGER|NULL|0", "SC_Ejecutor_Gama|INTEGER|NULL|0",
      "Numero_Gama|INTEGER|NULL|0", "Tipo_Gama|TEXT|NULL|0", "Costo_Actual|NUMERIC|NULL|0",
      "Tiempo_Necesario|TEXT|NULL|0", "Esquema|TEXT|NULL|0", "Coordinaciones|TEXT|NULL|0", "Seguridades|TEXT|NULL|0",
      "Materiales_Herramientas|TEXT|NULL|0", "SC_Contratista|INTEGER|NULL|0", "Hombres_Necesarios|INTEGER|NULL|0",
      "Especialista|TEXT|NULL|0", "SC_Archivo_Digital|INTEGER|NULL|0", "Frecuencia_Gama|TEXT|NULL|0"}},
    {"Grupo_Gama", {"SC_Grupo_Gama|INTEGER|NULL|1", "Descripcion|TEXT|NULL|0", "Orden_Lista|INTEGER|NULL|0"}},
    {"Ejecutor_Gama", {"SC_Ejecutor_Gama|INTEGER|NULL|1", "Descripcion|TEXT|NULL|0", "Orden_En_Lista|INTEGER|NULL|0"}},
    {"Usuario_Ejecutor_Gama",
     {"SC_Usuario_Ejecutor_Gama|INTEGER|NULL|0", "SC_Usuario|INTEGER|NULL|0", "SC_Ejecutor_Gama|INTEGER|NULL|0"}},
    {"Imputacion_Preventiva",
     {"SC_Imputacion_Preventiva|INTEGER|NULL|1", "ID_Activo|TEXT|NULL|0", "SC_Gama|INTEGER|NULL|0",
      "Fecha_Imputacion|TEXT|NULL|0", "Anulada|INTEGER|0|0", "SC_Usuario|INTEGER|NULL|0", "Frecuencia|TEXT|NULL|0",
      "Intervalo_Frecuencia|INTEGER|NULL|0", "Numero_Repeticion_Ciclo|INTEGER|NULL|0", "Acumulado_Ciclo|INTEGER|NULL|0",
      "Fecha_Inicio|TEXT|NULL|0", "Fecha_Ultimo_Lanzamiento|TEXT|NULL|0", "Fecha_Ultima_Modificacion|TEXT|NULL|0",
      "Causa_Modificacion|TEXT|NULL|0", "Semana|INTEGER|NULL|0", "Finaliza|INTEGER|0|0", "Programacion|TEXT|NULL|0",
      "Es_Sincronizada|INTEGER|0|0", "Descripcion_Breve|TEXT|NULL|0"}},
    {"Imputacion_Sistematica",
     {"SC_Imputacion_Sistematica|INTEGER|NULL|1", "ID_Activo|TEXT|NULL|0", "SC_Gama|INTEGER|NULL|0",
      "Fecha_Imputacion|TEXT|NULL|0", "Anulada|INTEGER|0|0", "SC_Usuario|INTEGER|NULL|0", "Fecha_Inicio|TEXT|NULL|0",
      "Fecha_Fin|TEXT|NULL|0", "Aproximacion_Lectura|INTEGER|NULL|0", "Fecha_Ultima_Modificacion|TEXT|NULL|0",
      "Causa_Modificacion|TEXT|NULL|0", "Lectura_Limite|INTEGER|NULL|0", "Ultimo_Acumulado|INTEGER|NULL|0",
      "Fecha_Ultimo_Lanzamiento|TEXT|NULL|0", "SC_Unidad_Lectura|INTEGER QUALIFIED_ONLY|NULL|0",
      "ID_Equipo|TEXT|NULL|0", "Acumulado_Lectura|REAL QUALIFIED_ONLY|0|0", "Finaliza|INTEGER|0|0"}},
    {"Imputacion_Paralela",
     {"SC_Imputacion_Paralela|INTEGER|NULL|1", "SC_Imputacion_Sistematica|INTEGER|NULL|0",
      "SC_Paralela|INTEGER|NULL|0"}},
    {"Lectura_Equipo",
     {"SC_Lectura|INTEGER|NULL|1", "Fecha|TEXT|NULL|0", "ID_Equipo|TEXT|NULL|0", "SC_Unidad_Lectura|INTEGER|NULL|0",
      "Valor_Real|REAL|NULL|0", "Lectura|REAL|NULL|0", "Lectura_Anterior|REAL|NULL|0",
      "Combustible_Consumido|REAL|NULL|0", "Nota|TEXT|NULL|0", "Departamento_A_Quien_Se_Carga|TEXT|NULL|0",
      "Valor_Del_Vale_Salida|NUMERIC|NULL|0", "Numero_Vale|TEXT|NULL|0"}},
    {"Orden_Generada",
     {"SC_Orden_Generada|INTEGER|NULL|1", "SC_Orden_Trabajo|INTEGER|NULL|0", "SC_Imputacion_Sistematica|INTEGER|NULL|0",
      "Fecha_Generacion|TEXT|NULL|0", "SC_Imputacion|INTEGER|NULL|0"}},
    {"Unidad_Lectura", {"SC_Unidad_Lectura|INTEGER|NULL|1", "Descripcion|TEXT|NULL|0"}},
    {"materiales_gama",
     {"sc_materiales_gama|INTEGER|NULL|1", "Descripcion|TEXT|NULL|0", "Costo_Unitario|NUMERIC|NULL|0",
      "Cantidad_Necesaria|REAL|NULL|0", "sc_gama|INTEGER|NULL|0", "item|INTEGER|NULL|0"}},
    {"Activo",
     {"ID_Activo|TEXT|NULL|1", "Descripcion|TEXT|NULL|0", "Equipo_Parado|INTEGER|0|0", "ID_Grupo_Activo|TEXT|NULL|0",
      "estatus_actual|INTEGER|0|0", "sc_proyecto|INTEGER|NULL|0", "SC_Unidad_Lectura|INTEGER|NULL|0",
      "Acumulado_Lectura|REAL|0|0", "Ultima_Lectura|REAL|0|0", "id_localidad_fisica|INTEGER|NULL|0",
      "Activo_Lectura_Entera|INTEGER|NULL|0", "Activo_Nota_Lectura|TEXT|NULL|0"}},
    {"Clave", {"Tabla|TEXT|NULL|1", "Ultima_Clave|INTEGER|0|0"}},
    {"Proceso",
     {"SC_Proceso|INTEGER|NULL|1", "Descripcion|TEXT|NULL|0", "Estatus_Valido|INTEGER|0|0", "Activo|INTEGER|1|0"}},
    {"Orden_Trabajo",
     {"SC_Orden_Trabajo|INTEGER|NULL|1", "Descripcion|TEXT|NULL|0", "Fecha_Solicitud|TEXT|NULL|0",
      "Fecha_Deseada|TEXT|NULL|0", "Origen|INTEGER|0|0", "SC_Ejecutor_Interno|INTEGER|NULL|0",
      "Texto_Trabajo|TEXT|NULL|0", "SC_Usuario_Destino|INTEGER|NULL|0", "Prioridad|INTEGER|NULL|0",
      "ID_Activo|TEXT|NULL|0", "SC_Tipo_Intervencion|INTEGER|NULL|0", "SC_Proceso|INTEGER|NULL|0",
      "SC_Ejecutor_Externo|INTEGER|NULL|0", "SC_Imputacion_Sistematica|INTEGER|NULL|0", "SC_Gama|INTEGER|NULL|0",
      "Hombres|INTEGER|NULL|0", "Tiempo|REAL|NULL|0"}},
    {"Material_OT",
     {"SC_Material_OT|INTEGER|NULL|1", "SC_Orden_Trabajo|INTEGER|NULL|0", "Linea|INTEGER|NULL|0",
      "Descripcion|TEXT|NULL|0", "Costo_Unitario|NUMERIC|NULL|0", "Cantidad|REAL|NULL|0"}},
};

class SchemaTest : public testing::Test {
protected:
    SchemaTest() { schema::Create(*connection); }

    Zontara::Ref<Connection> connection = Connection::Open(":memory:");
};

TEST_F(SchemaTest, EveryTableHasItsColumnsInOrder) {
    for (const ExpectedTable& table : kTables) {
        SCOPED_TRACE(table.name);
        EXPECT_EQ(RowsOf(*connection, "SELECT name, type, dflt_value, pk FROM pragma_table_info('" +
                                          std::string(table.name) + "') ORDER BY cid"),
                  table.columns);
    }
}

TEST_F(SchemaTest, ThereAreNoOtherTables) {
    std::set<std::string> expected;
    for (const ExpectedTable& table : kTables)
        expected.insert(table.name);
    const std::vector<std::string> there = RowsOf(*connection, "SELECT name FROM sqlite_master WHERE type = 'table'");
    EXPECT_EQ(std::set<std::string>(there.begin(), there.end()), expected);
    const std::vector<std::string> named = schema::Tables();
    EXPECT_EQ(std::set<std::string>(named.begin(), named.end()), expected);
}

TEST_F(SchemaTest, NothingButPrimaryKeysIsConstrained) {
    EXPECT_THAT(RowsOf(*connection,
                       "SELECT m.name, c.name FROM sqlite_master m, pragma_table_info(m.name) c"
                       " WHERE m.type = 'table' AND c.\"notnull\" <> 0"),
                IsEmpty());
    EXPECT_THAT(RowsOf(*connection,
                       "SELECT m.name, i.name FROM sqlite_master m, pragma_index_list(m.name) i"
                       " WHERE m.type = 'table' AND i.\"unique\" <> 0 AND i.origin <> 'pk'"),
                IsEmpty());
    EXPECT_THAT(
        RowsOf(*connection, "SELECT name FROM sqlite_master WHERE sql LIKE '%CHECK%' OR sql LIKE '%REFERENCES%'"),
        IsEmpty());
}

TEST_F(SchemaTest, IntegerKeysAreTheRowsOwn) {
    connection->RunScript("INSERT INTO Boletin (SC_Boletin) VALUES (7)");
    EXPECT_THAT(RowsOf(*connection, "SELECT rowid FROM Boletin"), ElementsAre("7"));
    EXPECT_THAT(RowsOf(*connection,
                       "SELECT m.name FROM sqlite_master m, pragma_index_list(m.name) i"
                       " WHERE m.type = 'table' AND i.origin = 'pk' ORDER BY m.name"),
                ElementsAre("Activo", "Clave", "Equipo"));
}

TEST_F(SchemaTest, DocumentsAndLinksMayShareTheirKey) {
    connection->RunScript(
        "INSERT INTO Documento_Equipo (SC_Documento_Equipo) VALUES (5), (5);"
        "INSERT INTO Usuario_Ejecutor_Gama (SC_Usuario_Ejecutor_Gama) VALUES (6), (6)");
    EXPECT_THAT(RowsOf(*connection, "SELECT count(*) FROM Documento_Equipo WHERE SC_Documento_Equipo = 5"),
                ElementsAre("2"));
    EXPECT_THAT(RowsOf(*connection, "SELECT count(*) FROM Usuario_Ejecutor_Gama WHERE SC_Usuario_Ejecutor_Gama = 6"),
                ElementsAre("2"));
}

TEST_F(SchemaTest, ASecondItemOfOneKeyIsRefused) {
    connection->RunScript("INSERT INTO Equipo (ID_Equipo, Descripcion) VALUES ('E1', 'pump')");
    const auto error = ErrorOf([&] { connection->RunScript("INSERT INTO Equipo (ID_Equipo) VALUES ('E1')"); });
    EXPECT_EQ(error.number, Zontara::vbObjectError + 19);
    EXPECT_THAT(RowsOf(*connection, "SELECT ID_Equipo, Descripcion FROM Equipo"), ElementsAre("E1|pump"));
}

TEST_F(SchemaTest, ValuesAreStoredInTheFormOfTheirColumn) {
    connection->RunScript(
        "INSERT INTO Imputacion_Preventiva (SC_Imputacion_Preventiva, Programacion) VALUES (1, 2);"
        "INSERT INTO Gama (SC_Gama, Costo_Actual) VALUES (1, 10), (2, 2.5);"
        "INSERT INTO Activo (ID_Activo, Acumulado_Lectura) VALUES ('A', 100)");
    EXPECT_THAT(RowsOf(*connection, "SELECT typeof(Programacion), Programacion FROM Imputacion_Preventiva"),
                ElementsAre("text|2"));
    EXPECT_THAT(RowsOf(*connection, "SELECT typeof(Costo_Actual), Costo_Actual FROM Gama"),
                ElementsAre("integer|10", "real|2.5"));
    EXPECT_THAT(
        RowsOf(*connection, "SELECT typeof(Acumulado_Lectura), typeof(Ultima_Lectura), estatus_actual FROM Activo"),
        ElementsAre("real|real|0"));
}

class UnitTrigger : public SchemaTest {
protected:
    UnitTrigger() {
        connection->RunScript("INSERT INTO Activo (ID_Activo, SC_Unidad_Lectura) VALUES ('A', 3), ('B', NULL)");
    }
    std::vector<std::string> Units() {
        return RowsOf(*connection, "SELECT SC_Unidad_Lectura FROM Imputacion_Sistematica ORDER BY 1");
    }
};

TEST_F(UnitTrigger, ANewAssignmentTakesItsAssetsUnit) {
    connection->RunScript(
        "INSERT INTO Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Activo) VALUES (1, 'A'), (2, 'A')");
    EXPECT_THAT(Units(), ElementsAre("3", "3"));
}

TEST_F(UnitTrigger, AUnitThatIsGivenStays) {
    connection->RunScript(
        "INSERT INTO Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Activo, SC_Unidad_Lectura)"
        " VALUES (1, 'A', 9)");
    EXPECT_THAT(Units(), ElementsAre("9"));
}

TEST_F(UnitTrigger, AnAssetWithoutUnitOrNoAssetLeavesNone) {
    connection->RunScript(
        "INSERT INTO Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Activo) VALUES (1, 'B'), (2, 'unknown')");
    EXPECT_THAT(Units(), ElementsAre("NULL", "NULL"));
}

TEST_F(UnitTrigger, OnlyTheNewRowIsSetAndNeverLater) {
    connection->RunScript(
        "INSERT INTO Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Activo) VALUES (1, 'B');"
        "UPDATE Activo SET SC_Unidad_Lectura = 4;"
        "UPDATE Imputacion_Sistematica SET ID_Activo = 'A';"
        "INSERT INTO Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Activo) VALUES (2, 'A')");
    EXPECT_THAT(Units(), ElementsAre("NULL", "4"));
}

TEST(SchemaCreate, AnEmptyDatabaseIsToldFromOneWithTables) {
    const auto connection = Connection::Open(":memory:");
    EXPECT_TRUE(schema::IsEmpty(*connection));
    EXPECT_FALSE(schema::Exists(*connection));
    EXPECT_EQ(schema::MissingTables(*connection), schema::Tables());
    schema::Create(*connection);
    EXPECT_FALSE(schema::IsEmpty(*connection));
    EXPECT_TRUE(schema::Exists(*connection));
    EXPECT_THAT(schema::MissingTables(*connection), IsEmpty());
}

TEST(SchemaCreate, ALackingTableIsNamed) {
    const auto connection = Connection::Open(":memory:");
    schema::Create(*connection);
    connection->RunScript("DROP TABLE Orden_Generada");
    EXPECT_FALSE(schema::Exists(*connection));
    EXPECT_THAT(schema::MissingTables(*connection), ElementsAre("Orden_Generada"));
}

TEST(SchemaCreate, AnExistingSchemaIsRefusedAndLeftAlone) {
    const auto connection = Connection::Open(":memory:");
    schema::Create(*connection);
    connection->RunScript("INSERT INTO Gama (SC_Gama, Descripcion) VALUES (1, 'oil')");
    const auto error = ErrorOf([&] { schema::Create(*connection); });
    EXPECT_EQ(error.number, Zontara::vbObjectError + 1);
    EXPECT_EQ(error.description, "table Activo already exists");
    EXPECT_FALSE(connection->TransactionMeant());
    EXPECT_THAT(RowsOf(*connection, "SELECT Descripcion FROM Gama"), ElementsAre("oil"));
}

TEST(SchemaCreate, OneTableInTheWayKeepsAllOthersOut) {
    const auto connection = Connection::Open(":memory:");
    connection->RunScript("CREATE TABLE MATERIALES_GAMA (x)");
    const auto error = ErrorOf([&] { schema::Create(*connection); });
    EXPECT_EQ(error.number, Zontara::vbObjectError + 1);
    EXPECT_EQ(error.description, "table materiales_gama already exists");
    EXPECT_THAT(RowsOf(*connection, "SELECT name FROM sqlite_master"), ElementsAre("MATERIALES_GAMA"));
}

TEST(SchemaCreate, AFailureHalfWayLeavesNothing) {
    const auto connection = Connection::Open(":memory:");
    connection->RunScript("CREATE VIEW materiales_gama_Gama AS SELECT 1");
    const auto error = ErrorOf([&] { schema::Create(*connection); });
    EXPECT_EQ(error.number, Zontara::vbObjectError + 1);
    EXPECT_FALSE(connection->TransactionMeant());
    EXPECT_THAT(RowsOf(*connection, "SELECT name FROM sqlite_master"), ElementsAre("materiales_gama_Gama"));
}

TEST(SchemaCreate, TheCallersTransactionDecides) {
    const auto connection = Connection::Open(":memory:");
    connection->IniciarTrans("");
    schema::Create(*connection);
    EXPECT_TRUE(connection->InTransaction());
    EXPECT_TRUE(schema::Exists(*connection));
    connection->RevertirTrans("", 0);
    EXPECT_TRUE(schema::IsEmpty(*connection));
}

}  // namespace
