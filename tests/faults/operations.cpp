#include "tests/faults/operations.h"

#include "bulletins/CConfiguracionOTBoletin.h"
#include "calendar/CImputacionPreventiva.h"
#include "frame/convert.h"
#include "frame/creation.h"
#include "frame/provider.h"

#include <algorithm>
#include <map>

namespace faults {

using support::World;
using Zontara::Argument;
using Zontara::MemberKind;
using Zontara::TypeWord;
using Zontara::Value;

const char* const kSmallPlant = R"(
INSERT INTO Unidad_Lectura VALUES (1, 'h');
INSERT INTO Activo (ID_Activo, Descripcion, SC_Unidad_Lectura, Acumulado_Lectura, sc_proyecto)
    VALUES ('A-1', 'Bomba', 1, 700, 1), ('B-1', 'Grúa', 1, 900, 1), ('C-1', 'Motor', 1, 0, 2);
INSERT INTO Grupo_Gama VALUES (1, 'Bombas', 1);
INSERT INTO Ejecutor_Gama VALUES (1, 'Taller', 1);
INSERT INTO Usuario_Ejecutor_Gama VALUES (1, 7, 1);
INSERT INTO Proceso (SC_Proceso, Descripcion, Estatus_Valido) VALUES (1, 'Preventivo', 1);
INSERT INTO Gama (SC_Gama, Descripcion, SC_Grupo_Gama, SC_Ejecutor_Gama, Numero_Gama, Hombres_Necesarios,
    Tiempo_Necesario) VALUES (1, 'Engrase', 1, 1, 1, 2, '1.5');
INSERT INTO materiales_gama VALUES (1, 'Grasa', 2.5, 10, 1, 1), (2, 'Trapo', 0.25, 4, 1, 2);
INSERT INTO Equipo (ID_Equipo, Descripcion, ID_Activo, Nivel) VALUES ('A-1', 'Bomba', 'A-1', 1);
INSERT INTO Documento_Equipo VALUES (1, 'Manual', 'm.pdf', 1, 'Estante', 'A-1', 5);
INSERT INTO Imputacion_Preventiva (SC_Imputacion_Preventiva, ID_Activo, SC_Gama, Frecuencia, Intervalo_Frecuencia,
    Fecha_Inicio, Fecha_Ultimo_Lanzamiento, Semana, Programacion, Es_Sincronizada, Numero_Repeticion_Ciclo,
    Acumulado_Ciclo, Finaliza)
    VALUES (1, 'A-1', 1, 'Semanal', 1, '2026-01-01', '2026-02-23', 9, '', 1, 3, 0, 1),
           (2, 'B-1', 1, 'Semanal', 1, '2026-01-01', '2026-02-23', 9, '', 1, 1, 0, 1),
           (3, 'A-1', 1, 'Mensual', 1, '2026-01-01', '2026-01-05', 1, '1', 0, 0, 0, 0),
           (4, 'B-1', 1, 'Semanal', 1, '2026-01-01', '2026-01-05', 1, '1', 0, 0, 0, 0);
INSERT INTO Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Activo, SC_Gama, Ultimo_Acumulado, Lectura_Limite,
    Aproximacion_Lectura, Fecha_Inicio)
    VALUES (1, 'A-1', 1, 0, 500, 600, '2026-01-01'), (2, 'A-1', 1, 100, 300, 0, '2026-01-01'),
           (3, 'B-1', 1, 0, 500, 0, '2026-01-01'), (4, 'B-1', 1, 0, 5000, 0, '2026-01-01');
INSERT INTO Imputacion_Paralela VALUES (1, 1, 2), (2, 1, 3);
INSERT INTO Boletin (SC_Boletin, SC_Imputacion_Preventiva, ID_Equipo, Fecha_Lanzamiento, Fecha_Entrega,
    Semana_Del_Ano) VALUES (1, 1, 'A-1', '2026-02-23', '2026-02-27', 9);
INSERT INTO Orden_Trabajo (SC_Orden_Trabajo, ID_Activo) VALUES (1, 'A-1');
INSERT INTO Orden_Generada (SC_Orden_Generada, SC_Orden_Trabajo, SC_Imputacion_Sistematica, Fecha_Generacion)
    VALUES (1, 1, 1, '2026-02-23');
INSERT INTO Lectura_Equipo (SC_Lectura, Fecha, ID_Equipo, SC_Unidad_Lectura, Valor_Real, Lectura)
    VALUES (1, '2026-02-20', 'A-1', 1, 10, 690);
)";

namespace {

constexpr std::string_view kDay = "2026-03-02";
const char* const kConfigurations[] = {"ConfiguracionOT", "ConfigOT"};

/// What an argument of one name gets in all operations, or in one, where its location stands in front.
const std::map<std::string, Value, std::less<>>& Known() {
    static const std::map<std::string, Value, std::less<>> known{
        {"ID_Activo", "A-1"},
        {"IDActivo", "A-1"},
        {"ID_Equipo", "A-1"},
        {"IDEquipo", "A-1"},
        {"CEquipo.Nuevo.ID_Equipo", "A-9"},
        {"Equipo_Padre", "A-1"},
        {"Anulada", std::int32_t{0}},
        {"ConIDCero", false},
        {"Lectura_Limite", std::int32_t{500}},
        {"frecuencia", "Semanal"},
        {"TipoFrecuencia", "Breve"},
        {"Programacion", "1"},
        {"sCondicion", "1 = 1"},
        {"sColumnas", ""},
        // These have no column list of their own that the engine would take.
        {"CImputacionSistematica.Buscar.sColumnas", " Lectura_Limite "},
        {"CImputacionPreventiva.SeleccionarPorGama.sColumnas", " Frecuencia "},
        {"CImputacionPreventiva.SeleccionarTodos.sColumnas", " Frecuencia "},
        {"sGrupoActivo", ""},
        {"sOrdenResultado", ""},
        {"ListaActivos", ""},
        {"ID_Capitulo", ""},
        {"UnOperador", "="},
        {"SC_Imputacion_Sistematica", std::int32_t{1}},
        {"Ano", std::int32_t{2026}},
        {"AnoActual", std::int32_t{2026}},
        {"SemanaDelAno", std::int32_t{9}},
    };
    return known;
}

/// The rows of the launch, as a client hands them to an operation that wants one.
Value RowsOfLaunch() { return Zontara::Create<Zontara::CImputacionPreventiva>()->SeleccionarActivas(World::Day(kDay)); }

Value OfType(const Argument& argument) {
    switch (argument.type.word) {
        case TypeWord::Text:
            return argument.name.find("echa") == std::string_view::npos ? Value("texto") : Value(kDay);
        case TypeWord::Date:
            return World::Day(kDay);
        case TypeWord::Bool:
            return true;
        case TypeWord::Object:
            if (argument.type.className == "Recordset") return RowsOfLaunch();
            if (argument.type.className == "ListaCambios") return Zontara::Neighbours().NewListaCambios();
            return nullptr;
        default:
            return std::int32_t{1};
    }
}

bool IsConfiguration(const Argument& argument) {
    for (const char* name : kConfigurations) {
        if (argument.name == name) return true;
    }
    return false;
}

bool TakesConfiguration(const Zontara::Member& member) {
    for (const Argument& argument : member.arguments) {
        if (IsConfiguration(argument)) return true;
    }
    return false;
}

}  // namespace

std::unique_ptr<World> MakeSmallPlant() {
    auto world = std::make_unique<World>();
    world->Run(kSmallPlant);
    world->Platform().now = World::Day("2026-03-02 08:00:00");
    return world;
}

std::string Operation::Location() const { return std::string(table->name) + "." + std::string(member->name); }

std::string Operation::Name() const {
    const char* const kind = member->kind == MemberKind::Get      ? "get "
                             : member->kind == MemberKind::Method ? ""
                                                                  : "set ";
    return kind + Location() + (withConfiguration ? " into orders" : "");
}

Zontara::Ref<Zontara::Object> Operation::Object() const { return table->create(); }

std::vector<Value> Operation::Arguments() const {
    std::vector<Value> values;
    for (const Argument& argument : member->arguments) {
        auto known = Known().find(Location() + "." + std::string(argument.name));
        if (known == Known().end()) known = Known().find(argument.name);
        const bool fits =
            known != Known().end() && known->second.Is<std::string>() == (argument.type.word == TypeWord::Text);
        if (IsConfiguration(argument)) {
            values.push_back(withConfiguration ? Value(Zontara::Create<Zontara::CConfiguracionOTBoletin>())
                                               : Value(nullptr));
        } else {
            values.push_back(fits ? known->second : OfType(argument));
        }
    }
    return values;
}

Value Operation::Call(Zontara::Object& object, std::vector<Value>& arguments) const {
    return member->invoke(object, arguments);
}

void Operation::Call() const {
    const auto object = Object();
    std::vector<Value> arguments = Arguments();
    Call(*object, arguments);
}

std::vector<Operation> OperationsBesideTransactions() {
    std::vector<Operation> operations = AllOperations();
    operations.erase(std::remove_if(operations.begin(), operations.end(),
                                    [](const Operation& operation) {
                                        return operation.table->appObject &&
                                               operation.member->name.find("Transaccion") != std::string_view::npos;
                                    }),
                     operations.end());
    return operations;
}

std::vector<Operation> AllOperations() {
    std::vector<Operation> operations;
    for (const Zontara::RegisteredClass& each : Zontara::Descriptor().classes) {
        for (const Zontara::Member& member : each.table().members) {
            const bool takes = TakesConfiguration(member);
            // Work by meter knows orders alone.
            if (!takes || member.name != "GenerarOTSSistematicas")
                operations.push_back({&each.table(), &member, false});
            if (takes) operations.push_back({&each.table(), &member, true});
        }
    }
    return operations;
}

}  // namespace faults
