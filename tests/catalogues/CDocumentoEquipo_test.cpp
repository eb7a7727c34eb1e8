#include "catalogues/CDocumentoEquipo.h"

#include "tests/catalogues/report_check.h"
#include "tests/catalogues/table_check.h"

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

class CDocumentoEquipoTest : public testing::Test {
protected:
    World world;
    CDocumentoEquipo documentos;
    const std::string all = "select * from Documento_Equipo order by rowid";
};

TEST_F(CDocumentoEquipoTest, TableFollowsTheInterface) {
    EXPECT_EQ(HeadOf(CDocumentoEquipo::ClassMembers()), "CDocumentoEquipo _CDocumentoEquipo creatable");
    EXPECT_EQ(documentos.Table(), &CDocumentoEquipo::ClassMembers());
    EXPECT_THAT(MembersOf(CDocumentoEquipo::ClassMembers()),
                ElementsAre("Nuevo(Descripcion text, Nombre_Documento text, Documento_Digital byte, Localizacion "
                            "text, ID_Equipo text, SC_Archivo_Digital int32): int32",
                            "Borrar(SC_Documento_Equipo int32): nothing",
                            "Seleccionar(ID_Equipo text, sColumnas text&=): Recordset",
                            "Salvar(SC_Documento_Equipo int32, Descripcion text, Nombre_Documento text, "
                            "Documento_Digital byte, Localizacion text, ID_Equipo text, SC_Archivo_Digital int32): "
                            "nothing",
                            "Buscar(SC_Documento_Equipo int32, sColumnas text&=): Recordset"));
}

TEST_F(CDocumentoEquipoTest, StatementsAreLetterForLetter) {
    ExpectStatements(
        world,
        {{"Nuevo", [&] { documentos.Nuevo("a'b", "c'd", 1, "shelf", "E1", 33); },
          "  INSERT Into Documento_Equipo (SC_Documento_Equipo ,Descripcion ,Nombre_Documento ,Documento_Digital "
          ",Localizacion ,ID_Equipo,SC_Archivo_Digital ) VALUES (1,'a''b','c''d',1,'shelf','E1',33)"},
         {"Borrar", [&] { documentos.Borrar(8); }, "  DELETE From Documento_Equipo WHERE SC_Documento_Equipo =8"},
         {"Seleccionar", [&] { documentos.Seleccionar("E1"); },
          "SELECT SC_Documento_Equipo ,Descripcion ,Nombre_Documento ,Documento_Digital "
          ",Localizacion,ID_Equipo,SC_Archivo_Digital  FROM Documento_Equipo WHERE ID_Equipo ='E1'"},
         {"Seleccionar with columns", [&] { documentos.Seleccionar("E1", "Descripcion"); },
          "Select Descripcion FROM Documento_Equipo WHERE ID_Equipo ='E1'"},
         {"Salvar", [&] { documentos.Salvar(4, "a'b", "c'd", 0, "e'f", "E1", 34); },
          "  UPDATE Documento_Equipo SET SC_Documento_Equipo =4,SC_Archivo_Digital =34,Descripcion ='a''b' "
          ",Nombre_Documento ='c''d' ,Documento_Digital =0,Localizacion ='e''f'  WHERE ID_Equipo ='E1'"},
         {"Buscar", [&] { documentos.Buscar(4); },
          "SELECT SC_Documento_Equipo ,Descripcion ,Nombre_Documento ,Documento_Digital "
          ",Localizacion,ID_Equipo,SC_Archivo_Digital  FROM Documento_Equipo WHERE SC_Documento_Equipo =4"},
         {"Buscar with columns", [&] { documentos.Buscar(5, "Nombre_Documento"); },
          "Select Nombre_Documento FROM Documento_Equipo WHERE SC_Documento_Equipo =5"}});
}

TEST_F(CDocumentoEquipoTest, NuevoTakesTheKeyInsideItsTransaction) {
    EXPECT_EQ(documentos.Nuevo("manual", "m.pdf", 1, "shelf", "E1", 33), 1);
    EXPECT_THAT(StepsOf(world), ElementsAre("begin", "key Documento_Equipo", "sql", "commit"));
    EXPECT_THAT(world.Rows(all), ElementsAre("1|manual|m.pdf|1|shelf|E1|33"));
}

TEST_F(CDocumentoEquipoTest, SalvarGivesEveryDocumentOfTheItemOneKeyAndOneContent) {
    documentos.Nuevo("a", "a.pdf", 1, "x", "E1", 1);
    documentos.Nuevo("b", "b.pdf", 0, "y", "E1", 2);
    documentos.Nuevo("c", "c.pdf", 0, "z", "E2", 3);
    documentos.Salvar(2, "n", "n.pdf", 1, "o'p", "E1", 9);
    EXPECT_THAT(world.Rows(all), ElementsAre("2|n|n.pdf|1|o'p|E1|9", "2|n|n.pdf|1|o'p|E1|9", "3|c|c.pdf|0|z|E2|3"));
}

TEST_F(CDocumentoEquipoTest, UnescapedQuotesBreakTheStatement) {
    documentos.Nuevo("a", "a.pdf", 1, "x", "E1", 1);
    const std::vector<std::string> before = world.Rows(all);
    const std::vector<std::pair<std::string, std::function<void()>>> cases{
        {"place in Nuevo", [&] { documentos.Nuevo("a", "a.pdf", 1, "o'p", "E1", 1); }},
        {"item in Nuevo", [&] { documentos.Nuevo("a", "a.pdf", 1, "x", "E'1", 1); }},
        {"item in Salvar", [&] { documentos.Salvar(1, "a", "a.pdf", 1, "x", "E'1", 1); }},
        {"item in Seleccionar", [&] { documentos.Seleccionar("E'1"); }}};
    for (const auto& [label, call] : cases) {
        SCOPED_TRACE(label);
        EXPECT_EQ(ErrorOf(call).number, kSyntaxRefused);
        world.Abort();
        EXPECT_EQ(world.Rows(all), before);
    }
}

TEST_F(CDocumentoEquipoTest, DefaultColumnsRun) {
    documentos.Nuevo("a", "a.pdf", 1, "x", "E1", 1);
    const std::string columns =
        "SC_Documento_Equipo,Descripcion,Nombre_Documento,Documento_Digital,Localizacion,ID_Equipo,SC_Archivo_Digital";
    EXPECT_EQ(ColumnsOf(documentos.Seleccionar("E1")), columns);
    EXPECT_EQ(ColumnsOf(documentos.Buscar(1)), columns);
    EXPECT_EQ(ColumnOf(documentos.Buscar(1), "Nombre_Documento"), "a.pdf");
    EXPECT_EQ(ColumnOf(documentos.Seleccionar("E1", "Localizacion"), "Localizacion"), "x");
}

TEST_F(CDocumentoEquipoTest, AnItemWithoutDocumentsGivesAnEmptyRecordset) {
    EXPECT_EQ(documentos.Seleccionar("E1")->TotalRegistros(), 0);
    EXPECT_EQ(documentos.Buscar(1)->TotalRegistros(), 0);
}

TEST_F(CDocumentoEquipoTest, BorrarTakesTheKey) {
    documentos.Nuevo("a", "a.pdf", 1, "x", "E1", 1);
    documentos.Nuevo("b", "b.pdf", 0, "y", "E1", 2);
    documentos.Borrar(1);
    documentos.Borrar(9);
    EXPECT_THAT(world.Rows(all), ElementsAre("2|b|b.pdf|0|y|E1|2"));
}

TEST_F(CDocumentoEquipoTest, FailuresAreReportedWithTheirValues) {
    documentos.Nuevo("a", "a.pdf", 1, "x", "E1", 1);
    const std::string nuevo =
        "CDocumentoEquipo.Nuevo(Descripcion='b', Nombre_Documento='b.pdf', Documento_Digital=0, Localizacion='y', "
        "ID_Equipo='E1', SC_Archivo_Digital=2)";
    ExpectRefused(world, all,
                  {{"key Documento_Equipo", [&] { documentos.Nuevo("b", "b.pdf", 0, "y", "E1", 2); }, nuevo, 1},
                   {"sql   INSERT", [&] { documentos.Nuevo("b", "b.pdf", 0, "y", "E1", 2); }, nuevo, 1},
                   {"sql   DELETE", [&] { documentos.Borrar(1); }, "CDocumentoEquipo.Borrar(SC_Documento_Equipo=1)"},
                   {"sql SELECT", [&] { documentos.Seleccionar("E1"); },
                    "CDocumentoEquipo.Seleccionar(ID_Equipo='E1', sColumnas='')"},
                   {"sql   UPDATE", [&] { documentos.Salvar(1, "b", "b.pdf", 0, "y", "E1", 2); },
                    "CDocumentoEquipo.Salvar(SC_Documento_Equipo=1, Descripcion='b', Nombre_Documento='b.pdf', "
                    "Documento_Digital=0, Localizacion='y', ID_Equipo='E1', SC_Archivo_Digital=2)"},
                   {"sql Select", [&] { documentos.Buscar(1, "ID_Equipo"); },
                    "CDocumentoEquipo.Buscar(SC_Documento_Equipo=1, sColumnas='ID_Equipo')"}});
}

}  // namespace
