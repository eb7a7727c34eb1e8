#include "frame/invoke.h"
#include "frame/member_table.h"
#include "meter/CImputacionParalela.h"
#include "meter/CImputacionSistematica.h"
#include "meter/COrdenGenerada.h"
#include "tests/meter/meter_test.h"

using namespace Zontara;
using namespace support;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

namespace {

std::string Told(const Argument& argument) {
    std::string text = std::string(argument.name) + ": " + WordOf(argument.type);
    if (argument.byRef) text += " byref";
    if (!argument.optional) return text;
    const Value& value = argument.defaultValue;
    return text + " = " + (value.Is<std::string>() ? "'" + ToText(value) + "'" : ToText(value));
}

/// "Nuevo(ID_Activo: text, ...) -> int32": all that late binding knows of a member, in one line.
std::string Told(const Member& member) {
    std::string text;
    if (member.kind == MemberKind::Get) text = "get ";
    if (member.kind == MemberKind::Put) text = "put ";
    if (member.kind == MemberKind::PutRef) text = "putref ";
    text += std::string(member.name) + "(";
    for (const Argument& argument : member.arguments) {
        if (&argument != &member.arguments.front()) text += ", ";
        text += Told(argument);
    }
    return text + ") -> " + WordOf(member.result);
}

std::vector<std::string> Told(const ClassTable& table) {
    std::vector<std::string> lines;
    for (const Member& member : table.members)
        lines.push_back(Told(member));
    return lines;
}

TEST(MeterMemberTables, CImputacionSistematicaHasItsInterface) {
    const ClassTable& table = CImputacionSistematica::ClassMembers();
    EXPECT_EQ(table.name, "CImputacionSistematica");
    EXPECT_EQ(table.interfaceName, "_CImputacionSistematica");
    EXPECT_THAT(
        Told(table),
        ElementsAreArray({
            "Nuevo(ID_Activo: text, SC_Gama: int32, Fecha_Imputacion: text, Anulada: byte, SC_Usuario: int32, "
            "Fecha_Inicio: text, Fecha_Fin: text, Acumulado_Lectura: int32, Ultima_Lectura: int32, "
            "Aproximacion_Lectura: int32, Fecha_Ultimo_Lanzamiento: text, Fecha_Ultima_Modificacion: text, "
            "Causa_Modificacion: text, Lectura_Limite: int32) -> int32",
            "Borrar(SC_Imputacion_Sistematica: int32) -> nothing",
            "SeleccionarPorGama(SC_Gama: int32, sColumnas: text byref = '') -> Recordset",
            "Salvar(SC_Imputacion_Sistematica: int32, ID_Activo: text, SC_Gama: int32, Fecha_Imputacion: text, "
            "Anulada: byte, SC_Usuario: int32, Fecha_Inicio: text, Fecha_Fin: text, Aproximacion_Lectura: int32, "
            "Lectura_Limite: int32) -> nothing",
            "SeleccionarPorEquipo(ID_Activo: text, sColumnas: text byref = '') -> Recordset",
            "ListarImputacionesVencidas(ID_Activo: text, sColumnas: text byref = '') -> Recordset",
            "AnularPorEquipo(ID_Activo: text) -> nothing",
            "Anular(SC_Imputacion_Sistematica: int32) -> nothing",
            "LanzarSistematico(Fecha_Lanzamiento: date, CodigoUsuario: int32, ID_Capitulo: text byref = '') -> nothing",
            "UltimaLectura(ID_Activo: text, Unidad_Lectura: int32) -> float32",
            "Resetear(SC_Imputacion_Sistematica: int32, Fecha_Lanzamiento: date) -> nothing",
            "ActualizarAcumulado(ID_Activo: text, Unidad_Lectura: int32 byref, Fecha_Lectura: date, "
            "Valor_Real_Lectura: float32, Valor_Lectura: float32) -> nothing",
            "ActualizarAcumuladoDeReferencia(SC_Imputacion_Sistematica: int32, Fecha_Lanzamiento: date, "
            "NuevoAcumulado: int32) -> nothing",
            "SeleccionarActivas(Fecha_Lanzamiento: date, sColumnas: text byref = '', ID_Capitulo: text byref = '') -> "
            "Recordset",
            "Buscar(SC_Imputacion_Sistematica: int32, sColumnas: text byref = '') -> Recordset",
            "Existe(NumeroGama: byte, CodigoGrupo: int32, IDEquipo: text) -> bool",
            "SeleccionarAproximaciones(sColumnas: text byref = '') -> Recordset",
            "SeleccionarTodos(sCondicion: text, sColumnas: text byref = '', AgrupadaPorActivo: bool byref = False) -> "
            "Recordset",
            "GenerarOTSSistematicas(Fecha_Lanzamiento: date, ConfigOT: CConfiguracionOTBoletin, ID_Capitulo: text "
            "byref = '', ID_Localizacion: int32 byref = 0, CodigoProyecto: int32 byref = 0) -> nothing",
            "ListarImputacionesDeUnActivo(ID_Activo: text byref, sColumnas: text byref = '') -> Recordset",
            "ReprogramarImputacionesDeunActivo(IDActivo: text, IdImputacionALanzar: int32 byref) -> nothing",
            "AdelantarMantenimiento(IdImputacion: int32, IDActivo: text) -> nothing",
            "EsProgramacionPrima(Programacion: int32 byref, IDActivo: text byref) -> bool",
            "ActivoNecesitaMantenimiento(ID_Activo: text byref, IdImputacion: int32 byref = 0) -> bool",
            "IdGamaImputacion(SC_Imputacion_Sistematica: int32) -> int32",
            "get ActivoReprogramado() -> ListaCambios",
            "putref ActivoReprogramado(value: ListaCambios) -> nothing",
            "get OrdenesSistematicasGeneradas() -> ListaCambios",
            "putref OrdenesSistematicasGeneradas(value: ListaCambios) -> nothing",
            "get CatalogoModificado() -> ListaCambios",
            "putref CatalogoModificado(value: ListaCambios) -> nothing",
            "ElActivoTieneAproximacionesVencidas(IDActivo: text byref) -> bool",
        }));
}

TEST(MeterMemberTables, CImputacionParalelaHasItsInterface) {
    const ClassTable& table = CImputacionParalela::ClassMembers();
    EXPECT_EQ(table.name, "CImputacionParalela");
    EXPECT_EQ(table.interfaceName, "_CImputacionParalela");
    EXPECT_THAT(Told(table),
                ElementsAre("Nuevo(SC_Imputacion_Sistematica: int32, SC_Paralela: int32) -> int32",
                            "Borrar(SC_Imputacion_Paralela: int32) -> nothing",
                            "Seleccionar(SC_Imputacion_Sistematica: int32, sColumnas: text byref = '') -> Recordset",
                            "Salvar(SC_Imputacion_Paralela: int32, SC_Imputacion_Sistematica: int32, SC_Paralela: "
                            "int32) -> nothing",
                            "ResetearParalelas(SC_Imputacion_Sistematica: int32, Fecha_Lanzamiento: date) -> nothing"));
}

TEST(MeterMemberTables, COrdenGeneradaHasItsInterface) {
    const ClassTable& table = COrdenGenerada::ClassMembers();
    EXPECT_EQ(table.name, "COrdenGenerada");
    EXPECT_EQ(table.interfaceName, "_COrdenGenerada");
    EXPECT_THAT(
        Told(table),
        ElementsAre("Nuevo(SC_Orden_Trabajo: int32, SC_Imputacion: int32, Fecha_Generacion: date byref) -> int32",
                    "Borrar(SC_Orden_Generada: int32) -> nothing",
                    "Seleccionar(SC_Imputacion_Sistematica: int32) -> Recordset",
                    "Salvar(SC_Orden_Generada: int32, SC_Orden_Trabajo: int32, SC_Imputacion: int32, "
                    "Fecha_Generacion: date) -> nothing",
                    "SeleccionarPorFecha(SC_Imputacion_Sistematica: int32, Fecha_Generacion: date, UnOperador: "
                    "text byref = '=') -> Recordset",
                    "SeleccionarPorSemana(SemanaDelAno: int16, Ano: int32) -> text"));
}

TEST(MeterMemberTables, ClientsCreateEveryClass) {
    for (const ClassTable* table : {&CImputacionSistematica::ClassMembers(), &CImputacionParalela::ClassMembers(),
                                    &COrdenGenerada::ClassMembers()}) {
        SCOPED_TRACE(table->name);
        ASSERT_TRUE(table->create);
        const Ref<Object> object = table->create();
        EXPECT_EQ(object->TypeName(), table->name);
        EXPECT_EQ(object->Table(), table);
        EXPECT_EQ(table->library, Library::Zontara);
        EXPECT_TRUE(table->events.empty());
    }
}

class MeterLateBindingTest : public MeterTest {};

TEST_F(MeterLateBindingTest, ArgumentsOfAnyKindReachTheOperation) {
    AddAsset("A1", "500");
    const Value key = Invoke(*imputaciones, "nuevo", MemberKind::Method,
                             {{"A1", "30", World::Day("2026-03-01"), 0, 9.4, "", "", 0, 0, 0, "", "", ""},
                              {{"lectura_limite", "200"}}})
                          .value;
    EXPECT_EQ(key, Value(1));
    EXPECT_THAT(world.Rows("SELECT ID_Activo, SC_Gama, Fecha_Imputacion, SC_Usuario, Lectura_Limite FROM"
                           " Imputacion_Sistematica"),
                ElementsAre("A1|30|2026-03-01|9|200"));
}

TEST_F(MeterLateBindingTest, AByteThatDoesNotFitNeverReachesTheOperation) {
    EXPECT_EQ(ErrorOf([&] { Invoke(*imputaciones, "Existe", MemberKind::Method, {{256, 5, "A1"}, {}}); }).number, 6);
    EXPECT_THAT(world.Statements(), ::testing::IsEmpty());
}

TEST_F(MeterLateBindingTest, AListIsReadAndWritten) {
    const Value theirs = Invoke(*imputaciones, "ActivoReprogramado", MemberKind::Get, {}).value;
    Invoke(*imputaciones, "CatalogoModificado", MemberKind::PutRef, {{theirs}, {}});
    EXPECT_EQ(Value(imputaciones->CatalogoModificado()), theirs);
    EXPECT_EQ(ErrorOf([&] {
                  Invoke(*imputaciones, "CatalogoModificado", MemberKind::PutRef, {{Value(imputaciones)}, {}});
              }).number,
              13);
}

TEST_F(MeterLateBindingTest, NoOperationWritesItsByReferenceArguments) {
    AddAsset("A1", "500");
    AddAssignment({7, "A1", 1000});
    const auto changed = [&](std::string_view member, std::vector<Value> arguments) {
        return Invoke(*imputaciones, member, MemberKind::Method, {std::move(arguments), {}}).changed.size();
    };
    EXPECT_EQ(changed("SeleccionarTodos", {"", "", true}), 0u);
    EXPECT_EQ(changed("ActualizarAcumulado", {"A1", 1, World::Day("2026-03-05"), 1, 1}), 0u);
    EXPECT_EQ(changed("EsProgramacionPrima", {1000, "A1"}), 0u);
    EXPECT_EQ(changed("ReprogramarImputacionesDeunActivo", {"A1", 7}), 0u);
}

}  // namespace
