#include "bulletins/CBoletin.h"

#include "frame/invoke.h"
#include "tests/catalogues/report_check.h"
#include "tests/catalogues/table_check.h"

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

class CBoletinTest : public testing::Test {
protected:
    /// A sheet of a week, launched on a day.
    std::int32_t Launch(std::int16_t semana, const std::string& dia, const std::string& equipo = "A1") {
        return boletines.Nuevo(5, equipo, dia, "", "", "", "", "", "", "", "", "", semana, 3);
    }
    /// What the join of a sheet needs, for sheets of assignment 5 and equipment A1.
    void PlantAssignment(const std::string& frecuencia = "Semanal") {
        world.Run(
            "delete from Imputacion_Preventiva; delete from Gama; delete from Ejecutor_Gama; delete from Grupo_Gama;"
            "delete from Equipo;"
            "insert into Imputacion_Preventiva (SC_Imputacion_Preventiva, SC_Gama, SC_Usuario, Frecuencia) "
            "values (5, 6, 44, '" +
            frecuencia +
            "');"
            "insert into Gama (SC_Gama, SC_Grupo_Gama, SC_Ejecutor_Gama) values (6, 7, 8);"
            "insert into Grupo_Gama (SC_Grupo_Gama) values (7);"
            "insert into Ejecutor_Gama (SC_Ejecutor_Gama) values (8);"
            "insert into Equipo (ID_Equipo) values ('A1');");
    }
    World world;
    CBoletin boletines;
    const std::string all = "select * from Boletin order by 1";
};

TEST_F(CBoletinTest, TableFollowsTheInterface) {
    EXPECT_EQ(HeadOf(CBoletin::ClassMembers()), "CBoletin _CBoletin creatable");
    EXPECT_EQ(boletines.Table(), &CBoletin::ClassMembers());
    EXPECT_THAT(
        MembersOf(CBoletin::ClassMembers()),
        ElementsAre("Nuevo(SC_Imputacion_Preventiva int32, ID_Equipo text, Fecha_Lanzamiento text, Fecha_Entrega text, "
                    "Fecha_Real_Entrega text, Lunes text, Martes text, Miercoles text, Jueves text, Viernes text, "
                    "Sabado text, Domingo text, Semana_Del_Ano int16, SC_Usuario int32): int32",
                    "Borrar(SC_Boletin int32): nothing",
                    "Seleccionar(sCondicion text&=, sColumnas text&=, TipoFrecuencia text&=): Recordset",
                    "Salvar(SC_Boletin int32, Lunes text, Martes text, Miercoles text, Jueves text, Viernes text, "
                    "Sabado text, Domingo text, Fecha_Real_Entrega date&, Nota text, Estatus int16&, OrdenTrabajo "
                    "int32&): nothing",
                    "Buscar(SC_Boletin int32, sColumnas text&=): Recordset",
                    "SeleccionarPorSemana(SemanaDelAno byte, Ano int32): text",
                    "UltimaSemanaLanzada(AnoActual int32): int16",
                    "ExistenBoletinesParaEditar(SemanaDelAno byte, Ano int32, ID_Activo text): bool",
                    "SeleccionarBoletines(Estatus int16): text", "MarcarBoletinEnEjecucion(SC_Boletin int32): nothing",
                    "MarcarBoletinEjecutado(SC_Boletin int32): nothing", "Estatus(idEstatus int16&): text",
                    "AsignarOTAlBoletin(SC_Boletin int32, Nota text, Estatus int16&, OrdenTrabajo int32&): nothing"));
}

TEST_F(CBoletinTest, WritingStatementsAreLetterForLetter) {
    ExpectStatements(
        world,
        {{"Nuevo",
          [&] { boletines.Nuevo(5, "A1", "2/3/2026", "2026-03-08", "", "a", "b", "c", "d", "e", "f", "g", 10, -1); },
          "  INSERT Into Boletin (SC_Boletin ,SC_Imputacion_Preventiva ,ID_Equipo ,Fecha_Lanzamiento ,Fecha_Entrega "
          ",Fecha_Real_Entrega ,Lunes ,Martes ,Miercoles ,Jueves ,Viernes ,Sabado ,Domingo ,Semana_Del_Ano "
          ",SC_Usuario ) VALUES (1,5,'A1','2026-03-02','2026-03-08','','a','b','c','d','e','f','g',10,-1)"},
         {"Salvar",
          [&] {
              boletines.Salvar(1, "a", "b", "c", "d", "e", "f", "g", World::Day("2026-03-08 14:30:00"), "done", 2, 70);
          },
          "  UPDATE Boletin SET Lunes ='a' ,Martes ='b' ,Miercoles ='c' ,Jueves ='d' ,Viernes ='e' ,Sabado ='f' "
          ",Domingo ='g', Nota ='done' ,Estatus =2 ,sc_Orden_Trabajo =70 ,Fecha_Real_Entrega ='2026-03-08'  WHERE "
          "SC_Boletin =1"},
         {"MarcarBoletinEnEjecucion", [&] { boletines.MarcarBoletinEnEjecucion(1); },
          "  UPDATE Boletin SET Boletin_En_Ejecucion =1  WHERE SC_Boletin =1"},
         {"MarcarBoletinEjecutado", [&] { boletines.MarcarBoletinEjecutado(1); },
          "  UPDATE Boletin SET Boletin_Realizado = 1  WHERE SC_Boletin =1"},
         {"AsignarOTAlBoletin", [&] { boletines.AsignarOTAlBoletin(1, "n", -1, 70); },
          "  UPDATE Boletin SET Nota ='n' ,Estatus =-1 ,sc_Orden_Trabajo =70  WHERE SC_Boletin =1"},
         {"Borrar", [&] { boletines.Borrar(1); }, "  DELETE From Boletin WHERE SC_Boletin =1"}});
}

TEST_F(CBoletinTest, ReadingStatementsAreLetterForLetter) {
    const std::string head =
        "SELECT SC_Imputacion_Preventiva ,Boletin.ID_Equipo ,Fecha_Lanzamiento ,Fecha_Entrega ,Fecha_Real_Entrega "
        ",Lunes ,Martes ,Miercoles ,Jueves ,Viernes ,Sabado ,Domingo ,Semana_Del_Ano "
        ",Boletin.SC_Usuario,boletin_realizado ";
    const std::string join =
        " FROM Boletin,Gama,Ejecutor_Gama,Equipo,Imputacion_Preventiva,Grupo_Gama  Where   "
        "Imputacion_Preventiva.SC_Imputacion_Preventiva =  Boletin.SC_Imputacion_Preventiva and  Gama.SC_Gama = "
        "Imputacion_Preventiva.SC_Gama and  Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and  "
        "Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and  Equipo.ID_Equipo = Boletin.ID_Equipo ";
    const std::string breve = " and Frecuencia in ('Diaria','Semanal','Quincenal','Mensual') ";
    const std::string larga = " and Frecuencia in ('Bimestral','Trimestral','Semestral','Anual') ";
    ExpectStatements(
        world,
        {{"Seleccionar", [&] { boletines.Seleccionar(); }, head + join},
         {"Seleccionar with a condition", [&] { boletines.Seleccionar("Estatus=0"); }, head + join + " and Estatus=0"},
         {"Seleccionar short", [&] { boletines.Seleccionar("", "", "Breve"); }, head + join + breve},
         {"Seleccionar long", [&] { boletines.Seleccionar("", "", "Larga"); }, head + join + larga},
         {"Seleccionar in another case", [&] { boletines.Seleccionar("", "", "breve"); }, head + join},
         {"Seleccionar with columns keeps join and filters",
          [&] { boletines.Seleccionar("Estatus=0", "SC_Boletin", "Breve"); },
          "Select SC_Boletin" + join + " and Estatus=0" + breve},
         {"Buscar", [&] { boletines.Buscar(4); },
          "SELECT SC_Imputacion_Preventiva ,ID_Equipo ,Fecha_Lanzamiento ,Fecha_Entrega ,Fecha_Real_Entrega ,Lunes "
          ",Martes ,Miercoles ,Jueves ,Viernes ,Sabado ,Domingo ,Semana_Del_Ano ,SC_Usuario  FROM Boletin WHERE "
          "SC_Boletin =4"},
         {"Buscar with columns", [&] { boletines.Buscar(4, "Nota"); }, "Select Nota FROM Boletin WHERE SC_Boletin =4"},
         {"SeleccionarPorSemana", [&] { boletines.SeleccionarPorSemana(10, 2026); },
          "SELECT Boletin.SC_Boletin  From Boletin  where   Semana_Del_Ano  =10 and "
          "strftime('%Y',Fecha_Lanzamiento) ='2026'"},
         {"UltimaSemanaLanzada", [&] { boletines.UltimaSemanaLanzada(2026); },
          "select max(semana_del_ano) as Ultima  from boletin where strftime('%Y',fecha_lanzamiento)= '2026'"},
         {"ExistenBoletinesParaEditar", [&] { boletines.ExistenBoletinesParaEditar(10, 2026, "A1"); },
          "SELECT Boletin.SC_Boletin  From Boletin  where   Semana_Del_Ano  =10 and "
          "strftime('%Y',Fecha_Lanzamiento) ='2026' and id_equipo ='A1' and  estatus =0 "},
         {"SeleccionarBoletines", [&] { boletines.SeleccionarBoletines(2); },
          "SELECT Boletin.SC_Boletin  From Boletin  where Estatus =2"}});
}

TEST_F(CBoletinTest, NuevoWritesOneRowInOneTransaction) {
    EXPECT_EQ(boletines.Nuevo(5, "A1", "02/03/2026", "x", "", "a", "b", "c", "d", "e", "f", "g", 10, 3), 1);
    EXPECT_THAT(StepsOf(world), ElementsAre("begin", "key Boletin", "sql", "commit"));
    EXPECT_THAT(world.Rows(all), ElementsAre("1|5|A1|2026-03-02|x||a|b|c|d|e|f|g|10|3|NULL|0|NULL|0|0"));
}

TEST_F(CBoletinTest, AnEmptyRealDeliveryIsStoredEmptyAndHasNoYear) {
    Launch(10, "02/03/2026");
    EXPECT_EQ(world.Scalar("select Fecha_Real_Entrega = '' from Boletin"), "1");
    EXPECT_EQ(world.Scalar("select strftime('%Y', Fecha_Real_Entrega) from Boletin"), "NULL");
}

TEST_F(CBoletinTest, EstatusNamesThreeValues) {
    const std::vector<std::pair<std::int16_t, std::string>> cases{
        {0, "Pendiente"}, {1, "En Ejecucion"}, {2, "Ejecutado"}, {3, ""}, {-1, ""}, {32767, ""}};
    for (const auto& [estatus, word] : cases)
        EXPECT_EQ(boletines.Estatus(estatus), word) << estatus;
    EXPECT_THAT(StepsOf(world), ElementsAre());
}

TEST_F(CBoletinTest, SeleccionarPorSemanaJoinsTheKeysOfOneWeekOfOneYear) {
    EXPECT_EQ(boletines.SeleccionarPorSemana(10, 2026), "");
    Launch(10, "02/03/2026");
    EXPECT_EQ(boletines.SeleccionarPorSemana(10, 2026), "1");
    Launch(11, "09/03/2026");
    Launch(10, "03/03/2025");
    Launch(10, "04/03/2026");
    EXPECT_EQ(boletines.SeleccionarPorSemana(10, 2026), "1,4");
}

TEST_F(CBoletinTest, SeleccionarBoletinesJoinsTheKeysOfOneStatus) {
    EXPECT_EQ(boletines.SeleccionarBoletines(0), "");
    for (int i = 0; i < 3; ++i)
        Launch(10, "02/03/2026");
    boletines.AsignarOTAlBoletin(2, "", 2, 0);
    EXPECT_EQ(boletines.SeleccionarBoletines(0), "1,3");
    EXPECT_EQ(boletines.SeleccionarBoletines(2), "2");
}

TEST_F(CBoletinTest, UltimaSemanaLanzadaIsZeroEvenForAYearWithSheets) {
    Launch(10, "02/03/2026");
    EXPECT_EQ(boletines.UltimaSemanaLanzada(2026), 0);
    EXPECT_EQ(boletines.UltimaSemanaLanzada(2025), 0);
    EXPECT_EQ(world.Scalar("select max(semana_del_ano) from Boletin"), "10");
}

TEST_F(CBoletinTest, ExistenBoletinesParaEditarSeesPendingSheetsOnly) {
    const std::int32_t clave = Launch(10, "02/03/2026");
    EXPECT_TRUE(boletines.ExistenBoletinesParaEditar(10, 2026, "A1"));
    EXPECT_FALSE(boletines.ExistenBoletinesParaEditar(11, 2026, "A1"));
    EXPECT_FALSE(boletines.ExistenBoletinesParaEditar(10, 2025, "A1"));
    EXPECT_FALSE(boletines.ExistenBoletinesParaEditar(10, 2026, "A2"));
    boletines.AsignarOTAlBoletin(clave, "", 1, 0);
    EXPECT_FALSE(boletines.ExistenBoletinesParaEditar(10, 2026, "A1"));
}

TEST_F(CBoletinTest, FlagsAndStatusAreIndependent) {
    const std::int32_t clave = Launch(10, "02/03/2026");
    const std::string flags = "select Estatus, Boletin_En_Ejecucion, Boletin_Realizado from Boletin";
    boletines.MarcarBoletinEnEjecucion(clave);
    EXPECT_THAT(world.Rows(flags), ElementsAre("0|1|0"));
    boletines.MarcarBoletinEjecutado(clave);
    EXPECT_THAT(world.Rows(flags), ElementsAre("0|1|1"));
    boletines.AsignarOTAlBoletin(clave, "n", 99, 7);
    EXPECT_THAT(world.Rows(flags), ElementsAre("99|1|1"));
}

TEST_F(CBoletinTest, SeleccionarJoinsAndFiltersByClassOfFrequency) {
    struct Case {
        std::string frecuencia;
        std::string tipo;
        int rows;
    };
    Launch(10, "02/03/2026");
    Launch(10, "02/03/2026", "no such equipment");
    for (const Case& c : {Case{"Semanal", "Breve", 1}, Case{"Semanal", "Larga", 0}, Case{"Anual", "Breve", 0},
                          Case{"Anual", "Larga", 1}, Case{"Anual", "breve", 1}, Case{"Anual", "", 1},
                          Case{"Fecha", "Breve", 0}, Case{"Fecha", "Larga", 0}, Case{"Fecha", "", 1}}) {
        SCOPED_TRACE(c.frecuencia + " as " + c.tipo);
        PlantAssignment(c.frecuencia);
        EXPECT_EQ(boletines.Seleccionar("", "", c.tipo)->TotalRegistros(), c.rows);
    }
    EXPECT_EQ(boletines.Seleccionar("Boletin.SC_Boletin=9")->TotalRegistros(), 0);
    EXPECT_EQ(ColumnOf(boletines.Seleccionar("", "SC_Boletin"), "SC_Boletin"), "1");
}

TEST_F(CBoletinTest, DefaultColumnsRun) {
    PlantAssignment();
    Launch(10, "02/03/2026");
    const Ref<Recordset> rows = boletines.Seleccionar();
    EXPECT_EQ(ColumnsOf(rows),
              "SC_Imputacion_Preventiva,ID_Equipo,Fecha_Lanzamiento,Fecha_Entrega,Fecha_Real_Entrega,Lunes,Martes,"
              "Miercoles,Jueves,Viernes,Sabado,Domingo,Semana_Del_Ano,SC_Usuario,Boletin_Realizado");
    EXPECT_EQ(ColumnOf(rows, "SC_Imputacion_Preventiva"), "5");
    EXPECT_EQ(ColumnOf(rows, "SC_Usuario"), "3");
    EXPECT_EQ(ColumnsOf(boletines.Buscar(1)),
              "SC_Imputacion_Preventiva,ID_Equipo,Fecha_Lanzamiento,Fecha_Entrega,Fecha_Real_Entrega,Lunes,Martes,"
              "Miercoles,Jueves,Viernes,Sabado,Domingo,Semana_Del_Ano,SC_Usuario");
    EXPECT_EQ(ColumnOf(boletines.Buscar(1), "Semana_Del_Ano"), "10");
    EXPECT_EQ(boletines.Buscar(2)->TotalRegistros(), 0);
}

TEST_F(CBoletinTest, SalvarWritesOneSheetAndNoArgumentByReference) {
    Launch(10, "02/03/2026");
    Launch(10, "02/03/2026");
    const CallResult result =
        Invoke(boletines, "Salvar", MemberKind::Method,
               {{2, "a", "b", "c", "d", "e", "f", "g", World::Day("2026-03-08"), "n", 1, 70}, {}});
    EXPECT_TRUE(result.changed.empty());
    boletines.Salvar(9, "", "", "", "", "", "", "", World::Day("2026-03-08"), "", 0, 0);
    EXPECT_THAT(world.Rows(all), ElementsAre("1|5|A1|2026-03-02||||||||||10|3|NULL|0|NULL|0|0",
                                             "2|5|A1|2026-03-02||2026-03-08|a|b|c|d|e|f|g|10|3|n|1|70|0|0"));
    boletines.Borrar(1);
    boletines.Borrar(9);
    EXPECT_EQ(world.Rows(all).size(), 1U);
}

}  // namespace
