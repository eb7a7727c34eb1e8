#include "schema/create.h"

#include "dhRichClient3/connection.h"
#include "dhRichClient3/dialect/lifting.h"
#include "dhRichClient3/dialect/shape.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

namespace dialect = dhRichClient3::dialect;

using dhRichClient3::Connection;
using testing::ElementsAre;
using testing::HasSubstr;

struct Plan {
    const char* label;
    std::string sql;
    /// How the first table is walked, and how the second.
    std::vector<std::string> steps;
};

const std::string kActivas =
    "SELECT Activo.ID_Activo,SC_Imputacion_Preventiva ,Imputacion_Preventiva.SC_Imputacion_Preventiva as ID,"
    "Gama.SC_Gama ,Gama.Descripcion,Fecha_Imputacion ,Anulada ,SC_Usuario ,Frecuencia ,Intervalo_Frecuencia ,"
    "Numero_Repeticion_Ciclo ,Acumulado_Ciclo ,Fecha_Inicio ,Numero_Gama,'---' EjecutorGama,"
    "Fecha_Ultima_Modificacion , Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento,Causa_Modificacion ,Semana,Finaliza, "
    "Programacion  FROM Imputacion_Preventiva, Activo,Gama  WHERE Anulada =0 and Fecha_Inicio <= '2026-03-05' and "
    "Gama.sc_gama =Imputacion_Preventiva.sc_gama and  Imputacion_Preventiva.id_activo =Activo.id_activo ";

const std::string kMeterJoin =
    "FROM Imputacion_Sistematica ,Activo,Gama,Grupo_Gama,Unidad_Lectura  WHERE "
    " Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and Imputacion_Sistematica.SC_Gama = Gama.SC_Gama and "
    " Activo.SC_Unidad_Lectura =  Unidad_Lectura.SC_Unidad_Lectura and  Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama ";

const std::string kByKey = "SCAN Imputacion_Preventiva";
const std::string kTheAsset = "SEARCH Activo USING INDEX sqlite_autoindex_Activo_1 (ID_Activo=?)";
const std::string kTheAssetsKey = "SEARCH Activo USING COVERING INDEX sqlite_autoindex_Activo_1 (ID_Activo=?)";

const std::vector<Plan> kPlans = {
    {"launch of the synchronised",
     kActivas + " and activo.estatus_actual not in (3,4,5,7)  and Es_Sincronizada=1   ",
     {kByKey, kTheAsset}},
    {"launch of the conventional",
     kActivas + " and activo.estatus_actual not in (3,4,5,7)  and Es_Sincronizada=0    ",
     {kByKey, kTheAsset}},
    {"launch of one project",
     kActivas + " and activo.estatus_actual not in (3,4,5,7)  and Es_Sincronizada=0   and activo.sc_proyecto=5  ",
     {kByKey, kTheAsset}},
    {"active ones, in service or not", kActivas + " and Es_Sincronizada=1   ", {kByKey, kTheAssetsKey}},
    {"overdue calendar assignments of an asset",
     kActivas + " and Es_Sincronizada=1  and Activo.ID_Activo='A1' ",
     {kTheAssetsKey, "SEARCH Imputacion_Preventiva USING INDEX Imputacion_Preventiva_Activo (ID_Activo=?)"}},
    {"overdue conventional assignments of an asset",
     kActivas + " and Es_Sincronizada=0   and Activo.ID_Activo='A1' ",
     {kTheAssetsKey, "SEARCH Imputacion_Preventiva USING INDEX Imputacion_Preventiva_Activo (ID_Activo=?)"}},
    {"one overdue calendar assignment",
     kActivas + " and Es_Sincronizada=0   and Activo.ID_Activo='A1' and "
                "Imputacion_Preventiva.SC_Imputacion_Preventiva=4",
     {"SEARCH Imputacion_Preventiva USING INTEGER PRIMARY KEY (rowid=?)", kTheAssetsKey}},
    {"calendar assignments under a prefix",
     "SELECT Programacion FROM Imputacion_Preventiva ,Activo,Gama,Grupo_Gama  WHERE "
     " Imputacion_Preventiva.ID_Activo = Activo.ID_Activo  and Imputacion_Preventiva.SC_Gama = Gama.SC_Gama and "
     " Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama    and Imputacion_Preventiva.ID_Activo like 'A1%'",
     {"SEARCH Imputacion_Preventiva USING INDEX Imputacion_Preventiva_Prefijo (ID_Activo>? AND ID_Activo<?)",
      kTheAssetsKey}},
    {"meter assignments under a prefix",
     "SELECT Lectura_Limite " + kMeterJoin + "   and Imputacion_Sistematica.ID_Activo like 'A1%' ",
     {"SEARCH Imputacion_Sistematica USING INDEX Imputacion_Sistematica_Prefijo (ID_Activo>? AND ID_Activo<?)",
      kTheAsset}},
    {"assets under a prefix",
     "SELECT Descripcion FROM Activo WHERE ID_Activo like 'A1%'",
     {"SEARCH Activo USING INDEX Activo_Prefijo (ID_Activo>? AND ID_Activo<?)"}},
    {"overdue meter assignments of an asset",
     "select Activo.id_Activo from Imputacion_Sistematica, Activo  where  Imputacion_Sistematica.ID_Activo = "
     "Activo.ID_Activo  and  (Activo.acumulado_lectura-ultimo_acumulado)>=lectura_limite and  Activo.id_Activo ='A1'",
     {kTheAsset, "SEARCH Imputacion_Sistematica USING INDEX Imputacion_Sistematica_Activo (ID_Activo=?)"}},
    {"materials of a task",
     "SELECT * FROM materiales_gama Where sc_gama =4",
     {"SEARCH materiales_gama USING INDEX materiales_gama_Gama (sc_gama=?)"}},
    {"parallels of an assignment",
     "SELECT Imputacion_Paralela.SC_Imputacion_Paralela, Imputacion_Paralela.SC_Imputacion_Sistematica ,"
     "Imputacion_Paralela.SC_Paralela  FROM Imputacion_Paralela, Ejecutor_Gama,Gama,Unidad_Lectura,"
     "Imputacion_Sistematica  WHERE Imputacion_Paralela.SC_Paralela = "
     "Imputacion_Sistematica.SC_Imputacion_Sistematica and  Gama.SC_Gama = Imputacion_Sistematica.SC_Gama and "
     " Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and  Unidad_Lectura.SC_Unidad_Lectura = "
     " Imputacion_Sistematica.SC_Unidad_Lectura  and Imputacion_Paralela.SC_Imputacion_Sistematica =4",
     {"SEARCH Imputacion_Paralela USING INDEX Imputacion_Paralela_Imputacion (SC_Imputacion_Sistematica=?)",
      "SEARCH Imputacion_Sistematica USING INTEGER PRIMARY KEY (rowid=?)"}},
    {"last readings of an asset",
     "SELECT Activo.ID_Activo,Descripcion,SC_Lectura  FROM Lectura_Equipo,Activo WHERE Activo.ID_Activo = "
     "Lectura_Equipo.ID_Equipo and  Activo.ID_Activo ='A1' order by Lectura_Equipo.SC_lectura DESC limit 10",
     {kTheAsset, "SEARCH Lectura_Equipo USING COVERING INDEX Lectura_Equipo_Equipo (ID_Equipo=?)"}},
    {"all readings, by key",
     "SELECT SC_Lectura ,Fecha  FROM Lectura_Equipo,Unidad_Lectura,Activo  Where  Lectura_Equipo.Sc_Unidad_Lectura = "
     "Unidad_Lectura.SC_Unidad_Lectura  and Lectura_Equipo.ID_Equipo = Activo.ID_Activo ",
     {"SCAN Lectura_Equipo", "SEARCH Unidad_Lectura USING INTEGER PRIMARY KEY (rowid=?)"}},
    {"bulletins, by key",
     "SELECT Lunes  FROM Boletin,Gama,Ejecutor_Gama,Equipo,Imputacion_Preventiva,Grupo_Gama  Where  "
     " Imputacion_Preventiva.SC_Imputacion_Preventiva =  Boletin.SC_Imputacion_Preventiva and "
     " Gama.SC_Gama = Imputacion_Preventiva.SC_Gama and  Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and "
     " Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and  Equipo.ID_Equipo = Boletin.ID_Equipo ",
     {"SCAN Boletin", "SEARCH Imputacion_Preventiva USING INTEGER PRIMARY KEY (rowid=?)"}},
    {"one document",
     "SELECT Descripcion FROM Documento_Equipo WHERE SC_Documento_Equipo =5",
     {"SEARCH Documento_Equipo USING INDEX Documento_Equipo_Clave (SC_Documento_Equipo=?)"}},
    {"largest key of the links",
     "SELECT max(SC_Usuario_Ejecutor_Gama) FROM Usuario_Ejecutor_Gama",
     {"SEARCH Usuario_Ejecutor_Gama USING COVERING INDEX Usuario_Ejecutor_Gama_Clave"}},
    {"materials of an order",
     "SELECT Descripcion FROM Material_OT WHERE SC_Orden_Trabajo = 5",
     {"SEARCH Material_OT USING INDEX Material_OT_Orden (SC_Orden_Trabajo=?)"}},
};

class PlanTest : public testing::Test {
protected:
    PlanTest() { schema::Create(*connection); }

    std::vector<std::string> PlanOf(const std::string& sql) {
        std::vector<std::string> plan;
        auto explain = connection->Prepare("EXPLAIN QUERY PLAN " + sql);
        while (explain.Step())
            plan.push_back(explain.Text(3));
        return plan;
    }

    Zontara::Ref<Connection> connection = Connection::Open(":memory:");
};

TEST_F(PlanTest, EverySelectionIsWalkedAsItIsMeantToBe) {
    for (const Plan& plan : kPlans) {
        SCOPED_TRACE(plan.label);
        std::vector<std::string> steps = PlanOf(plan.sql);
        ASSERT_GE(steps.size(), plan.steps.size());
        steps.resize(plan.steps.size());
        EXPECT_EQ(steps, plan.steps);
    }
}

TEST_F(PlanTest, AParameterForALiftedLiteralChangesNoPlan) {
    int lifted = 0;
    for (const Plan& plan : kPlans) {
        SCOPED_TRACE(plan.label);
        std::vector<dialect::Token> tokens;
        std::vector<dialect::Token> literals;
        dialect::Tokenize(plan.sql, tokens);
        dialect::Lift(tokens, dialect::Judge(plan.sql, tokens), false, literals);
        if (!literals.empty()) ++lifted;
        EXPECT_EQ(PlanOf(dialect::Shape(plan.sql, literals, true).Text()), PlanOf(plan.sql));
    }
    EXPECT_GT(lifted, 10);
}

TEST_F(PlanTest, NoLaunchSortsItsRows) {
    for (const std::string& step : PlanOf(kPlans.front().sql))
        EXPECT_THAT(step, Not(HasSubstr("TEMP B-TREE")));
}

TEST_F(PlanTest, EveryIndexServesOneOfThem) {
    std::string walked;
    for (const Plan& plan : kPlans) {
        for (const std::string& step : plan.steps)
            walked += step + " ";
    }
    auto indexes = connection->Prepare("SELECT name FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL");
    int found = 0;
    while (indexes.Step()) {
        ++found;
        EXPECT_THAT(walked, HasSubstr("INDEX " + indexes.Text(0)));
    }
    EXPECT_EQ(found, 11);
}

TEST_F(PlanTest, NoIndexHoldsTheFirstDayOfAnAssignment) {
    auto columns = connection->Prepare(
        "SELECT i.name FROM sqlite_master i, pragma_index_info(i.name) c"
        " WHERE i.type = 'index' AND c.name = 'Fecha_Inicio'");
    EXPECT_FALSE(columns.Step());
}

TEST_F(PlanTest, BulletinsHaveNoIndexButTheirKey) {
    EXPECT_FALSE(connection->Prepare("SELECT 1 FROM pragma_index_list('Boletin')").Step());
}

TEST_F(PlanTest, PlansDoNotChangeWithTheRows) {
    connection->RunScript(
        "INSERT INTO Gama (SC_Gama) VALUES (1);"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 500)"
        " INSERT INTO Activo (ID_Activo) SELECT 'A' || (1000 - i) FROM n;"
        "INSERT INTO Imputacion_Preventiva (SC_Imputacion_Preventiva, ID_Activo, SC_Gama, Fecha_Inicio, "
        "Es_Sincronizada) SELECT rowid, ID_Activo, 1, '2026-01-01', 1 FROM Activo");
    EXPECT_EQ(PlanOf(kPlans.front().sql).front(), kByKey);
    auto rows = connection->Prepare(kPlans.front().sql);
    std::int32_t before = 0;
    int count = 0;
    for (; rows.Step(); ++count) {
        EXPECT_GT(rows.Int(1), before);
        before = rows.Int(1);
    }
    EXPECT_EQ(count, 500);
}

}  // namespace
