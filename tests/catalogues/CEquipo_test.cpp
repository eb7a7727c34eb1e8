#include "catalogues/CEquipo.h"

#include "tests/catalogues/report_check.h"
#include "tests/catalogues/table_check.h"

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

class CEquipoTest : public testing::Test {
protected:
    CEquipoTest() {
        world.Run(
            "insert into Activo (ID_Activo, Descripcion, ID_Grupo_Activo) values ('A1', 'press', 'G1');"
            "insert into Activo (ID_Activo, Descripcion, ID_Grupo_Activo) values ('A2', 'lathe', 'G2');");
        world.Forget();
    }
    /// One item at the top of the tree and what hangs under it.
    void PlantTree() {
        equipos.Nuevo("E2", "motor", 1, "", "A2", "", "");
        equipos.Nuevo("E1", "pump", 1, "", "A1", "05/03/2026", "p.png");
        equipos.Nuevo("E11", "shaft", 2, "E1", "A1", "", "");
        equipos.Nuevo("E12", "seal", 3, "E1", "A1", "", "");
        equipos.Nuevo("E9", "lost", 1, "", "nowhere", "", "");
        world.Forget();
    }
    World world;
    CEquipo equipos;
    const std::string all = "select * from Equipo order by ID_Equipo";
};

TEST_F(CEquipoTest, TableFollowsTheInterface) {
    EXPECT_EQ(HeadOf(CEquipo::ClassMembers()), "CEquipo _CEquipo creatable");
    EXPECT_EQ(equipos.Table(), &CEquipo::ClassMembers());
    EXPECT_THAT(
        MembersOf(CEquipo::ClassMembers()),
        ElementsAre("Nuevo(ID_Equipo text, Descripcion text, Nivel int16, Equipo_Padre text, ID_Activo text, "
                    "Fecha_Ultimo_Mantenimiento text, Foto text): int32",
                    "Borrar(ID_Equipo text): nothing", "Seleccionar(sColumnas text&=, sGrupoActivo text&=): Recordset",
                    "Salvar(ID_Equipo text, Descripcion text, Nivel int16, Equipo_Padre text, ID_Activo text, Foto "
                    "text, SC_Archivo_Digital int32): nothing",
                    "Buscar(ID_Equipo text, sColumnas text&=): Recordset",
                    "BuscarHijos(Equipo_Padre text, Nivel int16, sColumnas text&=): Recordset",
                    "ActualizarFecha(ID_Equipo text, Fecha_Ultimo_Mantenimiento text): nothing",
                    "Existe(ID_Activo text): bool", "ExisteEquipo(ID_Equipo text): bool",
                    "Sistematicos(sColumnas text&=): Recordset"));
}

TEST_F(CEquipoTest, WritingStatementsAreLetterForLetter) {
    ExpectStatements(world,
                     {{"Nuevo", [&] { equipos.Nuevo("E1", "l'eje", -2, "E0", "A1", "5/3/26", "p.png"); },
                       "  INSERT Into Equipo (ID_Equipo ,Descripcion ,Nivel ,Equipo_Padre ,ID_Activo "
                       ",Fecha_Ultimo_Mantenimiento,Foto,SC_Archivo_Digital ) VALUES "
                       "('E1','l''eje',-2,'E0','A1','2026-03-05','p.png',0)"},
                      {"Borrar", [&] { equipos.Borrar("E1"); }, "  DELETE From Equipo WHERE ID_Equipo = 'E1'"},
                      {"Salvar", [&] { equipos.Salvar("E1", "l'eje", 2, "E0", "A1", "p.png", 7); },
                       "  UPDATE Equipo SET ID_Equipo ='E1',Descripcion ='l''eje' ,ID_Activo ='A1' ,Nivel =2,Foto "
                       "='p.png',SC_Archivo_Digital =7,Equipo_Padre ='E0'  WHERE ID_Equipo = 'E1'"},
                      {"ActualizarFecha", [&] { equipos.ActualizarFecha("E1", "31-12-2026"); },
                       "  UPDATE Equipo SET Fecha_Ultimo_Mantenimiento ='2026-12-31'  WHERE ID_Equipo = 'E1'"},
                      {"ActualizarFecha with no date", [&] { equipos.ActualizarFecha("E1", "soon"); },
                       "  UPDATE Equipo SET Fecha_Ultimo_Mantenimiento ='soon'  WHERE ID_Equipo = 'E1'"}});
}

TEST_F(CEquipoTest, ReadingStatementsAreLetterForLetter) {
    ExpectStatements(
        world,
        {{"Seleccionar", [&] { equipos.Seleccionar(); },
          "SELECT Equipo.ID_Activo,Equipo.ID_Equipo ,Equipo.Descripcion ,Activo.Descripcion as Descripcion_Activo "
          ",Nivel ,Equipo_Padre ,Fecha_Ultimo_Mantenimiento,Equipo.Foto,Equipo.SC_Archivo_Digital FROM Equipo,Activo "
          " Where Equipo.ID_Activo=Activo.ID_Activo  and Nivel =1  Order by Equipo.ID_Activo "},
         {"Seleccionar of a group", [&] { equipos.Seleccionar("", "G1"); },
          "SELECT Equipo.ID_Activo,Equipo.ID_Equipo ,Equipo.Descripcion ,Activo.Descripcion as Descripcion_Activo "
          ",Nivel ,Equipo_Padre ,Fecha_Ultimo_Mantenimiento,Equipo.Foto,Equipo.SC_Archivo_Digital FROM Equipo,Activo "
          " Where Equipo.ID_Activo=Activo.ID_Activo  and Nivel =1  and Activo.ID_Grupo_Activo ='G1' Order by "
          "Equipo.ID_Activo "},
         {"Seleccionar with columns", [&] { equipos.Seleccionar("Nivel "); },
          "Select Nivel FROM Equipo,Activo  Where Equipo.ID_Activo=Activo.ID_Activo  and Nivel =1  Order by "
          "Equipo.ID_Activo "},
         {"Buscar", [&] { equipos.Buscar("E1"); },
          "SELECT  Equipo.ID_Activo,ID_Equipo ,Equipo.Descripcion ,Activo.Descripcion as Descripcion_Activo, Nivel "
          ",Equipo_Padre ,Fecha_Ultimo_Mantenimiento,Equipo.Foto,Equipo.SC_Archivo_Digital  FROM Equipo,Activo  WHERE "
          "Equipo.ID_Activo = Activo.ID_Activo and ID_Equipo = 'E1'"},
         {"Buscar with columns", [&] { equipos.Buscar("E1", "Nivel"); },
          "Select Nivel FROM Equipo,Activo  WHERE Equipo.ID_Activo = Activo.ID_Activo and ID_Equipo = 'E1'"},
         {"BuscarHijos", [&] { equipos.BuscarHijos("E1", 2); },
          "SELECT  Equipo.ID_Activo,ID_Equipo ,Equipo.Descripcion ,Activo.Descripcion as  Descripcion_Activo,Nivel "
          ",Equipo_Padre ,Fecha_Ultimo_Mantenimiento  FROM Equipo,Activo  WHERE  Equipo.ID_Activo = Activo.ID_Activo "
          "and Nivel = 2 and  Equipo_Padre = 'E1'"},
         {"BuscarHijos with columns", [&] { equipos.BuscarHijos("E1", 2, "Nivel"); },
          "Select Nivel FROM Equipo,Activo  WHERE  Equipo.ID_Activo = Activo.ID_Activo and Nivel = 2 and  "
          "Equipo_Padre = 'E1'"},
         {"Existe", [&] { equipos.Existe("A1"); }, " Select ID_Activo FROM Equipo WHERE ID_Activo = 'A1'"},
         {"ExisteEquipo", [&] { equipos.ExisteEquipo("E1"); }, " Select ID_Activo FROM Equipo WHERE ID_Equipo = 'E1'"},
         {"Sistematicos", [&] { equipos.Sistematicos(); },
          "SELECT Equipo.ID_Activo,Equipo.ID_Equipo ,Equipo.Descripcion ,Equipo.Foto,Equipo.SC_Archivo_Digital FROM "
          "Equipo,imputacion_Sistematica  Where Equipo.ID_equipo=imputacion_Sistematica.ID_equipo  Group by "
          "Equipo.ID_Equipo  Order by Equipo.ID_Equipo "},
         {"Sistematicos with columns", [&] { equipos.Sistematicos("Equipo.ID_Equipo "); },
          "Select Equipo.ID_Equipo FROM Equipo,imputacion_Sistematica  Where "
          "Equipo.ID_equipo=imputacion_Sistematica.ID_equipo  Group by Equipo.ID_Equipo  Order by Equipo.ID_Equipo "}});
}

TEST_F(CEquipoTest, NuevoGivesZeroAndTakesNoKey) {
    EXPECT_EQ(equipos.Nuevo("77", "pump", 1, "", "A1", "", "p.png"), 0);
    EXPECT_THAT(StepsOf(world), ElementsAre("begin", "sql", "commit"));
    EXPECT_THAT(world.Rows(all), ElementsAre("77|pump|1||A1||p.png|0"));
}

TEST_F(CEquipoTest, ASecondItemOfOneKeyIsRefused) {
    equipos.Nuevo("E1", "pump", 1, "", "A1", "", "");
    const ErrorRecord error = ErrorOf([&] { equipos.Nuevo("E1", "other", 2, "", "A2", "", ""); });
    EXPECT_EQ(error.number, kConstraintRefused);
    EXPECT_THAT(CallsOf(error),
                ElementsAre("CEquipo.Nuevo(ID_Equipo='E1', Descripcion='other', Nivel=2, "
                            "Equipo_Padre='', ID_Activo='A2', Fecha_Ultimo_Mantenimiento='', Foto='')"));
    EXPECT_EQ(world.Depth(), 1);
    world.Abort();
    EXPECT_THAT(world.Rows(all), ElementsAre("E1|pump|1||A1|||0"));
}

TEST_F(CEquipoTest, SeleccionarListsTheTopByAsset) {
    PlantTree();
    const Ref<Recordset> rows = equipos.Seleccionar();
    EXPECT_EQ(ColumnOf(rows, "ID_Equipo"), "E1,E2");
    EXPECT_EQ(ColumnOf(rows, "Descripcion_Activo"), "press,lathe");
    EXPECT_EQ(ColumnOf(equipos.Seleccionar("", "G1"), "ID_Equipo"), "E1");
    EXPECT_EQ(equipos.Seleccionar("", "G9")->TotalRegistros(), 0);
}

TEST_F(CEquipoTest, ColumnsWithoutABlankRunIntoTheNextWordWhereTheStatementHasNone) {
    PlantTree();
    EXPECT_EQ(ErrorOf([&] { equipos.Seleccionar("Equipo.ID_Equipo"); }).number, kSyntaxRefused);
    EXPECT_EQ(world.Statements().back(),
              "Select Equipo.ID_EquipoFROM Equipo,Activo  Where Equipo.ID_Activo=Activo.ID_Activo  and Nivel =1  "
              "Order by Equipo.ID_Activo ");
    EXPECT_EQ(ErrorOf([&] { equipos.Sistematicos("Equipo.ID_Equipo"); }).number, kSyntaxRefused);
    EXPECT_EQ(ColumnOf(equipos.Seleccionar("Equipo.ID_Equipo "), "ID_Equipo"), "E1,E2");
    EXPECT_EQ(ColumnOf(equipos.Buscar("E1", "ID_Equipo"), "ID_Equipo"), "E1");
    EXPECT_EQ(ColumnOf(equipos.BuscarHijos("E1", 2, "ID_Equipo"), "ID_Equipo"), "E11");
}

TEST_F(CEquipoTest, BuscarNeedsTheAsset) {
    PlantTree();
    EXPECT_EQ(ColumnOf(equipos.Buscar("E1"), "Descripcion"), "pump");
    EXPECT_EQ(ColumnOf(equipos.Buscar("E1"), "Fecha_Ultimo_Mantenimiento"), "2026-03-05");
    EXPECT_EQ(equipos.Buscar("E9")->TotalRegistros(), 0);
    EXPECT_EQ(equipos.Buscar("none")->TotalRegistros(), 0);
}

TEST_F(CEquipoTest, BuscarHijosListsOneLevel) {
    PlantTree();
    EXPECT_EQ(ColumnOf(equipos.BuscarHijos("E1", 2), "ID_Equipo"), "E11");
    EXPECT_EQ(ColumnOf(equipos.BuscarHijos("E1", 3), "ID_Equipo"), "E12");
    EXPECT_EQ(equipos.BuscarHijos("E1", 4)->TotalRegistros(), 0);
}

TEST_F(CEquipoTest, SistematicosListsAnItemOnce) {
    PlantTree();
    world.Run(
        "insert into Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Equipo) values (1,'E2'),(2,'E1'),(3,'E1'),"
        "(4,'E1')");
    EXPECT_EQ(ColumnOf(equipos.Sistematicos(), "ID_Equipo"), "E1,E2");
    EXPECT_EQ(ColumnsOf(equipos.Sistematicos()), "ID_Activo,ID_Equipo,Descripcion,Foto,SC_Archivo_Digital");
}

TEST_F(CEquipoTest, DefaultColumnsRun) {
    PlantTree();
    const std::string wide =
        "ID_Activo,ID_Equipo,Descripcion,Descripcion_Activo,Nivel,Equipo_Padre,Fecha_Ultimo_Mantenimiento,Foto,"
        "SC_Archivo_Digital";
    EXPECT_EQ(ColumnsOf(equipos.Seleccionar()), wide);
    EXPECT_EQ(ColumnsOf(equipos.Buscar("E1")), wide);
    EXPECT_EQ(ColumnsOf(equipos.BuscarHijos("E1", 2)),
              "ID_Activo,ID_Equipo,Descripcion,Descripcion_Activo,Nivel,Equipo_Padre,Fecha_Ultimo_Mantenimiento");
}

TEST_F(CEquipoTest, SalvarLeavesTheDateAndActualizarFechaLeavesTheRest) {
    PlantTree();
    equipos.Salvar("E1", "valve", 4, "E2", "A2", "v.png", 8);
    EXPECT_EQ(world.Rows("select * from Equipo where ID_Equipo='E1'"),
              std::vector<std::string>{"E1|valve|4|E2|A2|2026-03-05|v.png|8"});
    equipos.ActualizarFecha("E1", "01/04/2026");
    EXPECT_EQ(world.Rows("select * from Equipo where ID_Equipo='E1'"),
              std::vector<std::string>{"E1|valve|4|E2|A2|2026-04-01|v.png|8"});
    equipos.Salvar("E1", "", 0, "", "", "", 0);
    EXPECT_EQ(world.Rows("select * from Equipo where ID_Equipo='E1'"),
              std::vector<std::string>{"E1||0|||2026-04-01||0"});
}

TEST_F(CEquipoTest, ExisteAsksForTheAssetAndExisteEquipoForTheItem) {
    PlantTree();
    EXPECT_TRUE(equipos.Existe("A1"));
    EXPECT_FALSE(equipos.Existe("E1"));
    EXPECT_TRUE(equipos.ExisteEquipo("E1"));
    EXPECT_FALSE(equipos.ExisteEquipo("A1"));
}

TEST_F(CEquipoTest, BorrarLeavesChildrenAndDocuments) {
    PlantTree();
    world.Run("insert into Documento_Equipo (SC_Documento_Equipo, ID_Equipo) values (1, 'E1')");
    equipos.Borrar("E1");
    equipos.Borrar("none");
    EXPECT_EQ(world.Rows("select ID_Equipo from Equipo order by 1"),
              (std::vector<std::string>{"E11", "E12", "E2", "E9"}));
    EXPECT_EQ(world.Scalar("select count(*) from Documento_Equipo"), "1");
}

TEST_F(CEquipoTest, AQuoteInATextKeyBreaksEveryStatement) {
    PlantTree();
    const std::vector<std::string> before = world.Rows(all);
    const std::vector<std::pair<std::string, std::function<void()>>> cases{
        {"Nuevo", [&] { equipos.Nuevo("E'1", "", 1, "", "A1", "", ""); }},
        {"Nuevo, parent", [&] { equipos.Nuevo("E3", "", 1, "E'1", "A1", "", ""); }},
        {"Nuevo, asset", [&] { equipos.Nuevo("E3", "", 1, "", "A'1", "", ""); }},
        {"Nuevo, picture", [&] { equipos.Nuevo("E3", "", 1, "", "A1", "", "p'.png"); }},
        {"Borrar", [&] { equipos.Borrar("E'1"); }},
        {"Seleccionar", [&] { equipos.Seleccionar("", "G'1"); }},
        {"Salvar", [&] { equipos.Salvar("E'1", "", 1, "", "A1", "", 0); }},
        {"Buscar", [&] { equipos.Buscar("E'1"); }},
        {"BuscarHijos", [&] { equipos.BuscarHijos("E'1", 2); }},
        {"ActualizarFecha", [&] { equipos.ActualizarFecha("E'1", ""); }},
        {"Existe", [&] { equipos.Existe("A'1"); }},
        {"ExisteEquipo", [&] { equipos.ExisteEquipo("E'1"); }}};
    for (const auto& [label, call] : cases) {
        SCOPED_TRACE(label);
        EXPECT_EQ(ErrorOf(call).number, kSyntaxRefused);
        world.Abort();
        EXPECT_EQ(world.Rows(all), before);
    }
}

TEST_F(CEquipoTest, FailuresAreReportedWithTheirValues) {
    PlantTree();
    ExpectRefused(
        world, all,
        {{"sql   INSERT", [&] { equipos.Nuevo("E3", "fan", 1, "E1", "A1", "x", "f.png"); },
          "CEquipo.Nuevo(ID_Equipo='E3', Descripcion='fan', Nivel=1, Equipo_Padre='E1', ID_Activo='A1', "
          "Fecha_Ultimo_Mantenimiento='x', Foto='f.png')",
          1},
         {"sql   DELETE", [&] { equipos.Borrar("E1"); }, "CEquipo.Borrar(ID_Equipo='E1')"},
         {"sql SELECT", [&] { equipos.Seleccionar("", "G1"); }, "CEquipo.Seleccionar(sColumnas='', sGrupoActivo='G1')"},
         {"sql   UPDATE", [&] { equipos.Salvar("E1", "fan", 1, "E2", "A2", "f.png", 3); },
          "CEquipo.Salvar(ID_Equipo='E1', Descripcion='fan', Nivel=1, Equipo_Padre='E2', ID_Activo='A2', "
          "Foto='f.png', SC_Archivo_Digital=3)"},
         {"sql Select", [&] { equipos.Buscar("E1", "Nivel"); }, "CEquipo.Buscar(ID_Equipo='E1', sColumnas='Nivel')"},
         {"sql SELECT", [&] { equipos.BuscarHijos("E1", 2); },
          "CEquipo.BuscarHijos(Equipo_Padre='E1', Nivel=2, sColumnas='')"},
         {"sql   UPDATE", [&] { equipos.ActualizarFecha("E1", "x"); },
          "CEquipo.ActualizarFecha(ID_Equipo='E1', Fecha_Ultimo_Mantenimiento='x')"},
         {"sql  Select", [&] { equipos.Existe("A1"); }, "CEquipo.Existe(ID_Activo='A1')"},
         {"sql  Select", [&] { equipos.ExisteEquipo("E1"); }, "CEquipo.ExisteEquipo(ID_Equipo='E1')"},
         {"sql SELECT", [&] { equipos.Sistematicos(); }, "CEquipo.SeleccionarSistematicos(sColumnas='')"}});
}

}  // namespace
