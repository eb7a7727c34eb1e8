#include "readings/CLecturaEquipo.h"

#include "frame/Libreria.h"
#include "frame/creation.h"
#include "frame/provider.h"
#include "tests/catalogues/report_check.h"
#include "tests/catalogues/table_check.h"

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

class CLecturaEquipoTest : public testing::Test {
protected:
    CLecturaEquipoTest() {
        world.Run(
            "insert into Activo (ID_Activo, Descripcion, SC_Unidad_Lectura, Acumulado_Lectura, Ultima_Lectura) "
            "values ('A1', 'press', 1, 100, 40)");
        world.Forget();
    }
    std::int32_t Nuevo(const std::string& fecha = "05/03/2026", float lectura = 47.5F) {
        return lecturas.Nuevo(fecha, "A1", 1, 7.5F, lectura, 40, 3.25F, "n", "d", Money::FromNumber(12.5), "v");
    }
    void Salvar(std::int32_t clave) {
        lecturas.Salvar(clave, "01/01/2020", "A2", 9, 99, 98, 97, 4.5F, "other", "d'2", Money::FromNumber(1.25), "v'2",
                        50);
    }
    World world;
    CLecturaEquipo lecturas;
    const std::string all = "select * from Lectura_Equipo order by 1";
    const std::string asset =
        "select Acumulado_Lectura, Ultima_Lectura, Activo_Lectura_Entera, Activo_Nota_Lectura from Activo";
    const std::string reported =
        "Fecha='05/03/2026', ID_Equipo='A1', SC_Unidad_Lectura=1, Valor_Real=7.5, Lectura=47.5, Lectura_Anterior=40, "
        "CombustibleConsumido=3.25, Nota='n', CodigoDepartamento='d', ValorValeSalida=12.5, NumeroVale='v'";
};

TEST_F(CLecturaEquipoTest, TableFollowsTheInterface) {
    EXPECT_EQ(HeadOf(CLecturaEquipo::ClassMembers()), "CLecturaEquipo _CLecturaEquipo creatable");
    EXPECT_EQ(lecturas.Table(), &CLecturaEquipo::ClassMembers());
    EXPECT_THAT(
        MembersOf(CLecturaEquipo::ClassMembers()),
        ElementsAre(
            "get ListaLecturasModificada(): ListaCambios",
            "putref ListaLecturasModificada(value ListaCambios): nothing",
            "Nuevo(Fecha text, ID_Equipo text, SC_Unidad_Lectura int32, Valor_Real float32, Lectura float32, "
            "Lectura_Anterior float32, CombustibleConsumido float32, Nota text, CodigoDepartamento text, "
            "ValorValeSalida money, NumeroVale text): int32",
            "Borrar(SC_Lectura int32): nothing", "Seleccionar(ID_Equipo text, sColumnas text&=): Recordset",
            "Salvar(SC_Lectura int32, Fecha text, ID_Equipo text, SC_Unidad_Lectura int32, Valor_Real float32, "
            "Lectura float32, Lectura_Anterior float32, CombustibleConsumido float32, Nota text, CodigoDepartamento "
            "text, ValorValeSalida money, NumeroVale text, LecturaRealADisminuir int32): nothing",
            "Buscar(SC_Lectura int32, sColumnas text&=): Recordset",
            "SeleccionarTodos(sCondicion text, sColumnas text&=): Recordset",
            "Ultimas10Lecturas(ID_Equipo text, sColumnas text&=): Recordset",
            "ObtenerLecturas(DesdeFecha date&, HastaFecha date&, ID_Capitulo text&=, ID_Localizacion int32&=0, "
            "id_Lectura int32&=0, sColumnas text&=, ListaActivos text&=): Recordset",
            "ObtenerLecturasPorMes(DesdeFecha date&, HastaFecha date&, ID_Capitulo text&=, ID_Localizacion int32&=0, "
            "id_Lectura int32&=0, sColumnas text&=, ListaActivos text&=): Recordset"));
}

TEST_F(CLecturaEquipoTest, WritingStatementsAreLetterForLetter) {
    lecturas.Nuevo("5/3/26", "A1", 1, 7.5F, 47.5F, -40, 0.1F, "n'1", "d'2", Money::FromNumber(12.0625), "v'3");
    EXPECT_EQ(world.Statements().front(),
              "  INSERT Into Lectura_Equipo (SC_Lectura ,Fecha ,ID_Equipo ,SC_Unidad_Lectura ,Valor_Real ,Lectura "
              ",Lectura_Anterior,Combustible_Consumido,Nota,Departamento_A_Quien_Se_Carga,Valor_Del_Vale_Salida,"
              "Numero_Vale ) VALUES "
              "(1,'2026-03-05','A1',1,7.5,47.5,-40,0.1,'n''1','d''2',12.0625,'v''3')");
    ExpectStatements(world,
                     {{"Salvar", [&] { Salvar(1); },
                       "  UPDATE Lectura_Equipo SET Departamento_A_Quien_Se_Carga "
                       "='d''2',Combustible_Consumido =4.5,Valor_Del_Vale_Salida =1.25,Numero_Vale ='v''2'   "
                       "WHERE SC_Lectura =1"},
                      {"Borrar", [&] { lecturas.Borrar(1); }, "  DELETE From Lectura_Equipo WHERE SC_Lectura =1"}});
}

TEST_F(CLecturaEquipoTest, NuevoWritesRowCountersAndNoticeInOneTransaction) {
    EXPECT_EQ(Nuevo(), 1);
    EXPECT_THAT(StepsOf(world),
                ElementsAre("begin", "key Lectura_Equipo", "sql", "sql", "service ServicioActivos.AnotarLectura",
                            "service ServicioActivos.FijarLectura", "notice", "commit"));
    EXPECT_EQ(world.Statements().back(),
              "Update activo SET  Acumulado_Lectura = Acumulado_Lectura +7.5, Ultima_Lectura = 47.5 Where id_activo "
              "='A1'");
    EXPECT_THAT(world.Rows(all), ElementsAre("1|2026-03-05|A1|1|7.5|47.5|40|3.25|n|d|12.5|v"));
    EXPECT_THAT(world.Rows(asset), ElementsAre("107.5|47.5|48|n"));
}

TEST_F(CLecturaEquipoTest, NuevoJoinsTheTransactionOfTheCaller) {
    Libreria::IniciarTransaccion();
    Nuevo();
    EXPECT_TRUE(world.InTransaction());
    EXPECT_EQ(world.Depth(), 1);
    Libreria::AbortarTransaccion();
    EXPECT_THAT(world.Rows(all), ElementsAre());
    EXPECT_THAT(world.Rows(asset), ElementsAre("100|40|NULL|NULL"));
}

TEST_F(CLecturaEquipoTest, TheAssetGetsTheWholeReadingHalfToEven) {
    const std::vector<std::pair<float, std::int32_t>> cases{{2.5F, 2}, {3.5F, 4}, {2.51F, 3}, {-2.5F, -2}};
    for (const auto& [lectura, whole] : cases) {
        SCOPED_TRACE(lectura);
        world.Forget();
        Nuevo("05/03/2026", lectura);
        EXPECT_THAT(CallsOfService(world, "ServicioActivos.FijarLectura"),
                    ElementsAre(std::vector<Value>{"A1", whole}));
        EXPECT_THAT(CallsOfService(world, "ServicioActivos.AnotarLectura"), ElementsAre(std::vector<Value>{"A1", "n"}));
        EXPECT_EQ(world.Scalar("select Lectura from Lectura_Equipo order by SC_Lectura desc"), ToText(lectura));
        EXPECT_EQ(world.Scalar("select Ultima_Lectura from Activo"), ToText(lectura));
    }
}

TEST_F(CLecturaEquipoTest, AFechaThatIsNoDateFailsBehindTheInsert) {
    for (const std::string fecha : {"", "soon"}) {
        SCOPED_TRACE(fecha);
        world.Forget();
        const ErrorRecord error = ErrorOf([&] { Nuevo(fecha); });
        EXPECT_EQ(error.number, 13);
        ASSERT_EQ(CallsOf(error).size(), 1U);
        EXPECT_EQ(CallsOf(error).front().find("CLecturaEquipo.Nuevo(Fecha='" + fecha + "', "), 0U);
        EXPECT_THAT(StepsOf(world), ElementsAre("begin", "key Lectura_Equipo", "sql"));
        EXPECT_NE(world.Statements().front().find(",'" + fecha + "','A1',"), std::string::npos);
        EXPECT_EQ(world.Depth(), 1);
        world.Abort();
        EXPECT_THAT(world.Rows(all), ElementsAre());
    }
}

TEST_F(CLecturaEquipoTest, AFailedStepLosesRowCountersAndReadingTogether) {
    const std::string nuevo = "CLecturaEquipo.Nuevo(" + reported + ")";
    for (const std::string request :
         {"begin", "key Lectura_Equipo", "sql   INSERT", "sql Update activo", "service ServicioActivos.Anotar",
          "service ServicioActivos.Fijar", "notice", "commit"}) {
        SCOPED_TRACE(request);
        world.FailOn(request);
        const ErrorRecord error = ErrorOf([&] { Nuevo(); });
        EXPECT_EQ(error.number, kConstraintRefused);
        EXPECT_EQ(CallsOf(error).back(), nuevo);
        EXPECT_EQ(world.Depth(), 1);
        world.Abort();
        EXPECT_THAT(world.Rows(all), ElementsAre());
        EXPECT_THAT(world.Rows(asset), ElementsAre("100|40|NULL|NULL"));
    }
    EXPECT_EQ(lecturas.ListaLecturasModificada()->Total(), 1);  // That of the refused commit.
}

TEST_F(CLecturaEquipoTest, AFailedAccumulatorIsReportedUnderTheReading) {
    world.FailOn("sql Update activo");
    const std::vector<std::string> calls = CallsOf(ErrorOf([&] { Nuevo(); }));
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0].find("CImputacionSistematica.ActualizarAcumulado("), 0U);
    EXPECT_EQ(calls[1], "CLecturaEquipo.Nuevo(" + reported + ")");
}

TEST_F(CLecturaEquipoTest, SalvarChangesFuelAndVoucherOnly) {
    Nuevo();
    const std::vector<std::string> before = world.Rows(asset);
    world.Forget();
    Salvar(1);
    Salvar(9);
    EXPECT_THAT(StepsOf(world), ElementsAre("begin", "sql", "notice", "commit", "begin", "sql", "notice", "commit"));
    EXPECT_THAT(world.Rows(all), ElementsAre("1|2026-03-05|A1|1|7.5|47.5|40|4.5|n|d'2|1.25|v'2"));
    EXPECT_EQ(world.Rows(asset), before);
}

TEST_F(CLecturaEquipoTest, BorrarTouchesTheRowAlone) {
    Nuevo();
    const std::vector<std::string> before = world.Rows(asset);
    world.Forget();
    lecturas.Borrar(1);
    EXPECT_THAT(StepsOf(world), ElementsAre("sql", "notice"));
    EXPECT_THAT(world.Rows(all), ElementsAre());
    EXPECT_EQ(world.Rows(asset), before);
}

TEST_F(CLecturaEquipoTest, EachChangeSendsOneEmptyNotice) {
    Nuevo();
    Salvar(1);
    lecturas.Borrar(1);
    const Ref<ListaCambios> lista = lecturas.ListaLecturasModificada();
    ASSERT_EQ(lista->Total(), 3);
    for (std::int32_t i = 1; i <= 3; ++i)
        EXPECT_EQ(lista->Elemento(i), "");
}

TEST_F(CLecturaEquipoTest, TheListCanBeSharedAndGivenUp) {
    CLecturaEquipo other;
    const Ref<ListaCambios> shared = Neighbours().NewListaCambios();
    lecturas.ListaLecturasModificada(shared);
    other.ListaLecturasModificada(shared);
    EXPECT_EQ(lecturas.ListaLecturasModificada(), shared);
    lecturas.Borrar(1);
    other.Borrar(1);
    EXPECT_EQ(shared->Total(), 2);
    lecturas.ListaLecturasModificada(nullptr);
    lecturas.Borrar(1);
    EXPECT_EQ(shared->Total(), 2);
    EXPECT_EQ(lecturas.ListaLecturasModificada()->Total(), 1);
}

TEST_F(CLecturaEquipoTest, AFailedNoticeLeavesADeletedRowDeleted) {
    Nuevo();
    world.FailOn("notice");
    EXPECT_THAT(CallsOf(ErrorOf([&] { lecturas.Borrar(1); })), ElementsAre("CLecturaEquipo.Borrar(SC_Lectura=1)"));
    EXPECT_THAT(world.Rows(all), ElementsAre());
}

TEST_F(CLecturaEquipoTest, OtherFailuresAreReportedWithTheirValues) {
    Nuevo();
    const std::string salvar =
        "CLecturaEquipo.Salvar(SC_Lectura=1, Fecha='01/01/2020', ID_Equipo='A2', SC_Unidad_Lectura=9, Valor_Real=99, "
        "Lectura=98, Lectura_Anterior=97, CombustibleConsumido=4.5, Nota='other', CodigoDepartamento='d'2', "
        "ValorValeSalida=1.25, NumeroVale='v'2', LecturaRealADisminuir=50)";
    ExpectRefused(world, all,
                  {{"begin", [&] { Salvar(1); }, salvar, 1},
                   {"sql   UPDATE", [&] { Salvar(1); }, salvar, 1},
                   {"sql   DELETE", [&] { lecturas.Borrar(1); }, "CLecturaEquipo.Borrar(SC_Lectura=1)"}});
    const std::vector<std::string> before = world.Rows(all);
    world.FailOn("notice");
    EXPECT_THAT(CallsOf(ErrorOf([&] { Salvar(1); })), ElementsAre(salvar));
    EXPECT_EQ(world.Depth(), 1);
    world.Abort();
    EXPECT_EQ(world.Rows(all), before);
}

/// Stands by at the life of the meter assignment that a new reading needs, and makes one end of it fail.
class Watcher : public LifeWatcher {
public:
    explicit Watcher(std::string_view refused = "") : refused_(refused) { ReplaceLifeWatcher(this); }
    ~Watcher() override { ReplaceLifeWatcher(nullptr); }
    void Creating(std::string_view typeName) override { See("made ", typeName); }
    void Releasing(std::string_view typeName) override { See("released ", typeName); }
    std::vector<std::string> seen;

private:
    void See(std::string_view what, std::string_view typeName) {
        seen.push_back(std::string(what) + std::string(typeName));
        if (seen.back() == refused_) Raise(RunTimeError::OutOfMemory);
    }
    std::string_view refused_;
};

TEST_F(CLecturaEquipoTest, NuevoMakesOneAssignmentAndLetsItGo) {
    Watcher watcher;
    Nuevo();
    EXPECT_THAT(watcher.seen, ElementsAre("made CImputacionSistematica", "released CImputacionSistematica"));
}

TEST_F(CLecturaEquipoTest, AnAssignmentThatCanNotBeMadeFailsBeforeTheTransaction) {
    Watcher watcher("made CImputacionSistematica");
    const ErrorRecord error = ErrorOf([&] { Nuevo(); });
    EXPECT_EQ(error.number, 7);
    EXPECT_THAT(CallsOf(error), ElementsAre("CLecturaEquipo.Nuevo(" + reported + ")"));
    EXPECT_THAT(StepsOf(world), ElementsAre());
    EXPECT_EQ(world.Depth(), 0);
}

TEST_F(CLecturaEquipoTest, AnAssignmentThatCanNotBeLetGoFailsBehindTheCommit) {
    Watcher watcher("released CImputacionSistematica");
    const ErrorRecord error = ErrorOf([&] { Nuevo(); });
    EXPECT_EQ(error.number, 7);
    EXPECT_THAT(CallsOf(error), ElementsAre("CLecturaEquipo.Nuevo(" + reported + ")"));
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_EQ(world.Rows(all).size(), 1U);
}

}  // namespace
