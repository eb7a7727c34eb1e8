#include "calendar/CImputacionPreventiva.h"

#include "bulletins/CConfiguracionOTBoletin.h"
#include "frame/convert.h"
#include "frame/invoke.h"
#include "frame/member_table.h"
#include "tests/calendar/plant.h"

namespace {

using testing::ElementsAre;
using Zontara::CImputacionPreventiva;
using Zontara::MemberKind;
using Zontara::TypeWord;
using Zontara::Value;

std::string DefaultText(const Value& value) {
    if (value.Is<Zontara::Ref<Zontara::Object>>()) return "none";
    return value.Is<std::string>() ? "'" + value.Get<std::string>() + "'" : Zontara::ToText(value);
}

/// A member in one line: kind, name, arguments, result.
std::string Line(const Zontara::Member& member) {
    const char* kinds[] = {"method ", "get ", "put ", "putref "};
    std::string line = kinds[static_cast<int>(member.kind)] + std::string(member.name) + "(";
    for (const Zontara::Argument& argument : member.arguments) {
        if (line.back() != '(') line += ", ";
        line += std::string(argument.byRef ? "ref " : "") + std::string(argument.name) + " " +
                Zontara::WordOf(argument.type);
        if (argument.optional) line += " = " + DefaultText(argument.defaultValue);
    }
    return line + ") " + Zontara::WordOf(member.result);
}

TEST(CImputacionPreventivaTable, ListsAllMembersInInterfaceOrder) {
    const Zontara::ClassTable& table = CImputacionPreventiva::ClassMembers();
    EXPECT_EQ(table.name, "CImputacionPreventiva");
    EXPECT_EQ(table.interfaceName, "_CImputacionPreventiva");
    EXPECT_FALSE(table.appObject);
    std::vector<std::string> lines;
    for (const Zontara::Member& member : table.members)
        lines.push_back(Line(member));
    const std::string launch =
        "(Fecha_Lanzamiento date, SC_Usuario int32, TipoFrecuencia text, ConfiguracionOT CConfiguracionOTBoletin = "
        "none, "
        "CodigoProyecto int32 = 0) int32";
    const std::string overdue = "(IDActivo text, IdImputacion int32 = 0, fechaSimulada text = '') bool";
    EXPECT_THAT(
        lines,
        ElementsAre(
            "get CatalogoModificado() ListaCambios", "get OTPreventivaGenerada() ListaCambios",
            "putref OTPreventivaGenerada(value ListaCambios) nothing",
            "method Nuevo(ID_Activo text, SC_Gama int32, Fecha_Imputacion text, Anulada byte, SC_Usuario int32, "
            "frecuencia text, Intervalo_Frecuencia int32, Numero_Repeticion_Ciclo int32, Acumulado_Ciclo int32, "
            "Fecha_Inicio text, Fecha_Ultimo_Lanzamiento text, Fecha_Ultima_Modificacion text, Causa_Modificacion "
            "text, Semana int32, Finaliza byte, Programacion text, EsProgramacionSincronizada bool, Breve_Descripcion "
            "text) int32",
            "method Borrar(SC_Imputacion_Preventiva int32) nothing",
            "method SeleccionarPorGama(SC_Gama int32, sColumnas text = '') Recordset",
            "method Salvar(SC_Imputacion_Preventiva int32, ID_Activo text, SC_Gama int32, Fecha_Imputacion text, "
            "Anulada byte, SC_Usuario int32, frecuencia text, Intervalo_Frecuencia int32, Numero_Repeticion_Ciclo "
            "int32, Fecha_Inicio text, Finaliza byte, Programacion byte, Fecha_Ultimo_Lanzamiento text) nothing",
            "method SeleccionarPorEquipo(ID_Activo text, sColumnas text = '', frecuencia text = '') Recordset",
            "method Anular(SC_Imputacion_Preventiva int32) nothing", "method AnularPorEquipo(ID_Activo text) nothing",
            "method LanzarPreventivo" + launch,
            "method SeleccionarActivas(Fecha_Lanzamiento date, sColumnas text = '', LasSincronizadas bool = True, "
            "IDActivo text = '', SoloActivoEnServicio bool = False, CodigoProyecto int32 = 0, IdImputacion int32 = 0) "
            "Recordset",
            "method Buscar(SC_Imputacion_Preventiva int32, sColumnas text = '') Recordset",
            "method Existe(NumeroGama byte, CodigoGrupo int32, IDEquipo text) bool",
            "method SeleccionarTodos(sCondicion text, sColumnas text = '') Recordset",
            "method FrecuenciaValida(frecuencia text, TipoFrecuencia text) bool",
            "method ImputacionEstaVencida(rs Recordset, Fecha_Lanzamiento date) bool",
            "method MesCoordinaConProgramacion(mesAEvaluar int16, mesProgramacion int16, frecuencia int16) bool",
            "method ObtenerProgramacionAnteriorA(mesProgramacion int16, frecuencia int16) int16",
            "method ObtenerProgramacionMenorAMesActual(mesActual int16, mesProgramacion int16, frecuencia int16) int16",
            "method LanzarPreventivoConvensional" + launch, "method ActivoTieneMantenimientoVencido" + overdue,
            "method ActivoTieneMantenimientoConvencionalVencido" + overdue,
            "method ReiniciarTareaNoSincronizada(IDActivo text, Fecha_Reinicio date) nothing"));
}

TEST(CImputacionPreventivaTable, DeclaresItsTwoEventsWithATaggedValueByReference) {
    const Zontara::ClassTable& table = CImputacionPreventiva::ClassMembers();
    ASSERT_EQ(table.events.size(), 2u);
    EXPECT_EQ(table.events[0].name, "ProcesandoImputacion");
    EXPECT_EQ(table.events[1].name, "ImputacionesRecuperadas");
    const char* names[] = {"numeroRegistro", "totalRegistros"};
    for (std::size_t i = 0; i < 2; ++i) {
        ASSERT_EQ(table.events[i].arguments.size(), 1u);
        EXPECT_EQ(table.events[i].arguments[0].name, names[i]);
        EXPECT_EQ(table.events[i].arguments[0].type.word, TypeWord::Variant);
        EXPECT_TRUE(table.events[i].arguments[0].byRef);
    }
}

TEST(CImputacionPreventivaTable, MakesAnObjectThatAnswersFromIt) {
    const Zontara::Ref<Zontara::Object> made = CImputacionPreventiva::ClassMembers().create();
    EXPECT_EQ(made->Table(), &CImputacionPreventiva::ClassMembers());
    EXPECT_EQ(made->TypeName(), "CImputacionPreventiva");
}

class CImputacionPreventivaInvokeTest : public support::CalendarTest {
protected:
    Value Call(std::string_view member, std::vector<Value> arguments, MemberKind kind = MemberKind::Method) {
        return Zontara::Invoke(*preventive, member, kind, {std::move(arguments), {}}).value;
    }
};

TEST_F(CImputacionPreventivaInvokeTest, LaunchesByNameWithAndWithoutAConfiguration) {
    Add({.key = 1});
    const Value day = support::World::Day("2026-03-05");
    EXPECT_EQ(Call("lanzarpreventivo", {day, 3, "Breve"}), Value(1));
    EXPECT_EQ(Bulletins().size(), 1u);
    world.Run("UPDATE Imputacion_Preventiva SET Semana = 1");
    EXPECT_EQ(Call("LanzarPreventivo", {day, 3, "Breve", Zontara::Create<Zontara::CConfiguracionOTBoletin>()}),
              Value(1));
    EXPECT_EQ(Bulletins().size(), 1u);
    EXPECT_EQ(world.Scalar("SELECT COUNT(*) FROM Orden_Generada"), "1");
}

TEST_F(CImputacionPreventivaInvokeTest, PutsAndGetsTheListOfLaunches) {
    const auto list = Zontara::Create<CImputacionPreventiva>()->OTPreventivaGenerada();
    Call("OTPreventivaGenerada", {list}, MemberKind::PutRef);
    EXPECT_EQ(preventive->OTPreventivaGenerada(), list);
    EXPECT_EQ(Call("OTPreventivaGenerada", {}, MemberKind::Get), Value(list));
}

TEST_F(CImputacionPreventivaInvokeTest, RefusesAnArgumentThatDoesNotFitBeforeAnythingRuns) {
    EXPECT_EQ(support::NumberOf([&] { Call("Existe", {256, 1, "A-1"}); }), 6);
    EXPECT_EQ(support::NumberOf([&] { Call("Borrar", {"x"}); }), 13);
    EXPECT_EQ(support::NumberOf([&] { Call("Salvar", {1}); }), 449);
    EXPECT_TRUE(world.Record().empty());
}

}  // namespace
