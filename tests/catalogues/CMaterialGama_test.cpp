#include "catalogues/CMaterialGama.h"

#include "frame/Libreria.h"
#include "frame/invoke.h"
#include "tests/catalogues/report_check.h"
#include "tests/catalogues/table_check.h"

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

const std::string kItemOT = "ServicioMaterialesOT.AgregarItemOT";
const std::string kManoObra = "OrdenTrabajo.AsignarManoObra";

class CMaterialGamaTest : public testing::Test {
protected:
    void Agregar(std::int16_t item, const std::string& descripcion, double costo, float cantidad, std::int32_t gama) {
        materiales.AgregarItem(item, descripcion, Money::FromNumber(costo), cantidad, gama);
    }
    std::vector<Value> Linea(std::int16_t linea, const char* descripcion, double costo, float cantidad) {
        return {linea, descripcion, Money::FromNumber(costo), cantidad, kOT};
    }
    static constexpr std::int32_t kOT = 70;
    World world;
    CMaterialGama materiales;
    const std::string all = "select * from materiales_gama order by 1";
    const std::string orders = "select Linea, Descripcion, Costo_Unitario, Cantidad, SC_Orden_Trabajo from Material_OT";
};

TEST_F(CMaterialGamaTest, TableFollowsTheInterface) {
    EXPECT_EQ(HeadOf(CMaterialGama::ClassMembers()), "CMaterialGama _CMaterialGama creatable");
    EXPECT_EQ(materiales.Table(), &CMaterialGama::ClassMembers());
    EXPECT_THAT(MembersOf(CMaterialGama::ClassMembers()),
                ElementsAre("BorrarItem(IDItem int32&): nothing",
                            "AgregarItem(numeroItem int16, Descripcion text&, Costo_Unitario money&, "
                            "CantidadNecesaria float32&, NumeroGama int32&): nothing",
                            "ListarMaterialesDeUnaGama(NumeroGama int32): Recordset",
                            "CostoTotalMaterialesGama(NumeroGama int32): money",
                            "AgregarMaterialesAOT(numeroOT int32&, NumeroGama int32&): nothing",
                            "AsignarManoObraAOT(numeroOT int32&, NumeroGama int32&): nothing"));
}

TEST_F(CMaterialGamaTest, StatementsAreLetterForLetter) {
    ExpectStatements(
        world, {{"BorrarItem", [&] { materiales.BorrarItem(8); },
                 "  DELETE  from materiales_gama  where sc_materiales_gama =8"},
                {"AgregarItem", [&] { Agregar(4, "grease", 10.25, 2.5F, 6); },
                 "  INSERT Into materiales_gama (sc_materiales_gama ,Descripcion ,Costo_Unitario, Cantidad_Necesaria , "
                 "sc_gama,item)  VALUES (1,'grease',10.25,2.5,6,4)"},
                {"ListarMaterialesDeUnaGama", [&] { materiales.ListarMaterialesDeUnaGama(6); },
                 "SELECT * FROM materiales_gama Where sc_gama =6"},
                {"CostoTotalMaterialesGama", [&] { materiales.CostoTotalMaterialesGama(6); },
                 "SELECT sum(costo_unitario*cantidad_necesaria) as total FROM materiales_gama Where sc_gama =6"},
                {"AgregarMaterialesAOT", [&] { materiales.AgregarMaterialesAOT(kOT, 7); },
                 "SELECT * FROM materiales_gama Where sc_gama =7"},
                {"AsignarManoObraAOT", [&] { materiales.AsignarManoObraAOT(kOT, 7); },
                 "Select Hombres_Necesarios,Tiempo_Necesario FROM Gama  WHERE      SC_Gama =7"}});
}

TEST_F(CMaterialGamaTest, AgregarItemTakesTheKeyInsideItsTransactionAndKeepsItToItself) {
    const CallResult result = Invoke(materiales, "AgregarItem", MemberKind::Method, {{4, "grease", 10, 2.5, 6}, {}});
    EXPECT_EQ(result.value, Value());
    EXPECT_TRUE(result.changed.empty());
    EXPECT_THAT(StepsOf(world), ElementsAre("begin", "key materiales_gama", "sql", "commit"));
    const Ref<Recordset> rows = materiales.ListarMaterialesDeUnaGama(6);
    EXPECT_EQ(ColumnOf(rows, "sc_materiales_gama"), "1");
    EXPECT_EQ(ColumnsOf(rows), "sc_materiales_gama,Descripcion,Costo_Unitario,Cantidad_Necesaria,sc_gama,item");
}

TEST_F(CMaterialGamaTest, AQuoteInADescriptionBreaksAgregarItem) {
    EXPECT_EQ(ErrorOf([&] { Agregar(1, "o'ring", 1, 1, 6); }).number, kSyntaxRefused);
    EXPECT_EQ(world.Depth(), 1);
    world.Abort();
    EXPECT_THAT(world.Rows(all), ElementsAre());
}

TEST_F(CMaterialGamaTest, BorrarItemTakesTheLinesOwnKey) {
    Agregar(1, "a", 1, 1, 2);
    Agregar(2, "b", 1, 1, 1);
    materiales.BorrarItem(1);
    materiales.BorrarItem(99);
    EXPECT_THAT(world.Rows(all), ElementsAre("2|b|1|1|1|2"));
}

TEST_F(CMaterialGamaTest, CostoTotalSumsCostByQuantity) {
    Agregar(1, "a", 10, 2.5F, 6);
    Agregar(2, "b", 3, 1, 6);
    Agregar(1, "of another task", 1000, 1, 7);
    EXPECT_EQ(materiales.CostoTotalMaterialesGama(6), Money::FromNumber(28));
}

TEST_F(CMaterialGamaTest, CostoTotalOfATaskWithoutMaterialsIsZero) {
    EXPECT_EQ(materiales.CostoTotalMaterialesGama(6), Money());
    EXPECT_EQ(world.Scalar("SELECT sum(costo_unitario*cantidad_necesaria) FROM materiales_gama Where sc_gama =6"),
              "NULL");
}

TEST_F(CMaterialGamaTest, AgregarMaterialesAOTCopiesEveryLineUnderTheNumberOfLines) {
    Agregar(1, "a", 10, 2.5F, 6);
    Agregar(2, "b", 3.0625, 1, 6);
    Agregar(3, "c", 0, 0.1F, 6);
    Agregar(1, "of another task", 1, 1, 7);
    world.Forget();
    materiales.AgregarMaterialesAOT(kOT, 6);
    EXPECT_THAT(CallsOfService(world, kItemOT),
                ElementsAre(Linea(3, "a", 10, 2.5F), Linea(3, "b", 3.0625, 1), Linea(3, "c", 0, 0.1F)));
    EXPECT_THAT(StepsOf(world), testing::Not(testing::Contains("begin")));
    EXPECT_THAT(world.Rows(orders), testing::Contains("3|a|10|2.5|70"));
    EXPECT_EQ(world.Rows(orders).size(), 3U);
}

TEST_F(CMaterialGamaTest, AgregarMaterialesAOTAddsNothingForATaskWithout) {
    materiales.AgregarMaterialesAOT(kOT, 6);
    EXPECT_THAT(StepsOf(world), ElementsAre("sql"));
    EXPECT_THAT(world.Rows(orders), ElementsAre());
}

TEST_F(CMaterialGamaTest, AFailureHalfwayLeavesTheLinesCopiedSoFar) {
    Agregar(1, "a", 10, 2.5F, 6);
    Agregar(2, "b", 3, 1, 6);
    world.FailOn("service " + kItemOT, kConstraintRefused, "forced failure", 1);
    const ErrorRecord error = ErrorOf([&] { materiales.AgregarMaterialesAOT(kOT, 6); });
    EXPECT_THAT(CallsOf(error), ElementsAre("CMaterialGama.AgregarMaterialesAOT(numeroOT=70, NumeroGama=6)"));
    EXPECT_THAT(world.Rows(orders), ElementsAre("2|a|10|2.5|70"));
}

TEST_F(CMaterialGamaTest, ANullInALineIsNoMaterial) {
    world.Run(
        "insert into materiales_gama (sc_materiales_gama, Descripcion, Cantidad_Necesaria, sc_gama) "
        "values (1, 'a', 2, 6)");
    const ErrorRecord error = ErrorOf([&] { materiales.AgregarMaterialesAOT(kOT, 6); });
    EXPECT_EQ(error.number, 94);
    EXPECT_THAT(CallsOf(error), ElementsAre("CMaterialGama.AgregarMaterialesAOT(numeroOT=70, NumeroGama=6)"));
    EXPECT_THAT(world.Rows(orders), ElementsAre());
}

TEST_F(CMaterialGamaTest, AsignarManoObraAOTPassesATimeThatReadsAsANumberAndZeroForAnyOther) {
    struct Case {
        const char* stored;
        float passed;
    };
    for (const Case& c : {Case{"'2.5'", 2.5F}, Case{"' 3 '", 3.0F}, Case{"'-1e2'", -100.0F}, Case{"4", 4.0F},
                          Case{"'3 hours'", 0.0F}, Case{"'1:30'", 0.0F}, Case{"''", 0.0F}, Case{"null", 0.0F}}) {
        SCOPED_TRACE(c.stored);
        world.Run("delete from Gama");
        world.Run(std::string("insert into Gama (SC_Gama, Hombres_Necesarios, Tiempo_Necesario) values (6, 2, ") +
                  c.stored + ")");
        world.Forget();
        materiales.AsignarManoObraAOT(kOT, 6);
        EXPECT_THAT(CallsOfService(world, kManoObra), ElementsAre(std::vector<Value>{kOT, std::int16_t{2}, c.passed}));
    }
}

TEST_F(CMaterialGamaTest, AsignarManoObraAOTDoesNothingForAnUnknownTask) {
    materiales.AsignarManoObraAOT(kOT, 6);
    EXPECT_THAT(StepsOf(world), ElementsAre("sql"));
}

TEST_F(CMaterialGamaTest, ANullCrewIsAnInvalidUseOfNull) {
    world.Run("insert into Gama (SC_Gama, Tiempo_Necesario) values (6, '1')");
    const ErrorRecord error = ErrorOf([&] { materiales.AsignarManoObraAOT(kOT, 6); });
    EXPECT_EQ(error.number, 94);
    EXPECT_THAT(CallsOf(error), ElementsAre("CMaterialGama.AsignarManoObraAOT(numeroOT=70, NumeroGama=6)"));
    EXPECT_THAT(CallsOfService(world, kManoObra), ElementsAre());
}

TEST_F(CMaterialGamaTest, FailuresAreReportedWithTheirValues) {
    Agregar(1, "a", 10, 2.5F, 6);
    world.Run("insert into Gama (SC_Gama, Hombres_Necesarios, Tiempo_Necesario) values (6, 2, '1')");
    const std::string agregar =
        "CMaterialGama.AgregarItem(numeroItem=2, Descripcion='b', Costo_Unitario=3.5, CantidadNecesaria=0.25, "
        "NumeroGama=6)";
    ExpectRefused(world, all,
                  {{"sql   DELETE", [&] { materiales.BorrarItem(1); }, "CMaterialGama.BorrarItem(IDItem=1)"},
                   {"key materiales_gama", [&] { Agregar(2, "b", 3.5, 0.25F, 6); }, agregar, 1},
                   {"sql   INSERT", [&] { Agregar(2, "b", 3.5, 0.25F, 6); }, agregar, 1},
                   {"sql SELECT", [&] { materiales.ListarMaterialesDeUnaGama(6); },
                    "CMaterialGama.ListarMaterialesDeUnaGama(NumeroGama=6)"},
                   {"sql SELECT", [&] { materiales.CostoTotalMaterialesGama(6); },
                    "CMaterialGama.CostoTotalMaterialesGama(NumeroGama=6)"},
                   {"sql SELECT", [&] { materiales.AgregarMaterialesAOT(kOT, 6); },
                    "CMaterialGama.AgregarMaterialesAOT(numeroOT=70, NumeroGama=6)"},
                   {"service " + kManoObra, [&] { materiales.AsignarManoObraAOT(kOT, 6); },
                    "CMaterialGama.AsignarManoObraAOT(numeroOT=70, NumeroGama=6)"}});
}

TEST_F(CMaterialGamaTest, TheReportShowsTheOwnReadingOperationUnderTheCopy) {
    world.FailOn("sql SELECT");
    EXPECT_THAT(CallsOf(ErrorOf([&] { materiales.AgregarMaterialesAOT(kOT, 6); })),
                ElementsAre("Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})",
                            "CMaterialGama.ListarMaterialesDeUnaGama(NumeroGama=6)",
                            "CMaterialGama.AgregarMaterialesAOT(numeroOT=70, NumeroGama=6)"));
    world.FailOn("sql Select");
    EXPECT_THAT(CallsOf(ErrorOf([&] { materiales.AsignarManoObraAOT(kOT, 6); })),
                ElementsAre("Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})",
                            "CGama.Buscar(SC_Gama=6, sColumnas='Hombres_Necesarios,Tiempo_Necesario')",
                            "CMaterialGama.AsignarManoObraAOT(numeroOT=70, NumeroGama=6)"));
}

}  // namespace
