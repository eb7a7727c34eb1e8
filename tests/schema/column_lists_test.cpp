#include "frame/class_registry.h"
#include "frame/invoke.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

/// Every read that takes a column list, run against the schema: with its own list, and with a caller's list that ends
/// with a blank or without one.
namespace {

using namespace Zontara;
using support::ErrorOf;
using support::World;

bool TakesColumns(const Member& member) {
    return std::ranges::any_of(member.arguments, [](const Argument& each) { return each.name == "sColumnas"; });
}

/// A value that every read takes for this argument.
Value Plausible(const Argument& argument) {
    if (argument.name == "UnOperador") return std::string("=");
    switch (argument.type.word) {
        case TypeWord::Text:
            return std::string();
        case TypeWord::Date:
            return World::Day("2026-03-05");
        default:
            return std::int32_t{1};
    }
}

std::string Outcome(Object& object, const Member& member, const char* columns) {
    CallArguments arguments;
    for (const Argument& each : member.arguments) {
        if (each.name != "sColumnas" && !each.optional) arguments.named.emplace_back(each.name, Plausible(each));
    }
    if (columns != nullptr) arguments.named.emplace_back("sColumnas", std::string(columns));
    try {
        Invoke(object, member.name, member.kind, arguments);
        return "runs";
    } catch (const RaisedError& raised) {
        const std::string& report = raised.Record().description;
        return report.substr(0, report.find(" \r\n"));
    }
}

const char* const kOutcomes =
    "operation, with its own list | with a caller's list | without a blank behind it\n"
    "CEjecutorGama.Seleccionar: runs | runs | runs\n"
    "CEjecutorGama.Buscar: runs | runs | runs\n"
    "CLecturaEquipo.Seleccionar: runs | runs | runs\n"
    "CLecturaEquipo.Buscar: runs | runs | runs\n"
    "CLecturaEquipo.SeleccionarTodos: runs | runs | runs\n"
    "CLecturaEquipo.Ultimas10Lecturas: runs | runs | runs\n"
    "CLecturaEquipo.ObtenerLecturas: runs | runs | runs\n"
    "CLecturaEquipo.ObtenerLecturasPorMes: runs | runs | runs\n"
    "CImputacionSistematica.SeleccionarPorGama: runs | runs | near \"Imputacion_Sistematica\": syntax error\n"
    "CImputacionSistematica.SeleccionarPorEquipo: runs | runs | near \"Imputacion_Sistematica\": syntax error\n"
    "CImputacionSistematica.ListarImputacionesVencidas: runs | runs | near \"Imputacion_Sistematica\": syntax error\n"
    "CImputacionSistematica.SeleccionarActivas: runs | runs | runs\n"
    "CImputacionSistematica.Buscar: no such column: Ejecutor_Gama.Descripcion | runs | near "
    "\"Imputacion_Sistematica\": syntax error\n"
    "CImputacionSistematica.SeleccionarAproximaciones: runs | runs | near \"Imputacion_Sistematica\": syntax error\n"
    "CImputacionSistematica.SeleccionarTodos: runs | runs | near \"Imputacion_Sistematica\": syntax error\n"
    "CImputacionSistematica.ListarImputacionesDeUnActivo: runs | runs | runs\n"
    "CImputacionPreventiva.SeleccionarPorGama: near \"FROM\": syntax error | runs | near \"Imputacion_Preventiva\": "
    "syntax error\n"
    "CImputacionPreventiva.SeleccionarPorEquipo: runs | runs | runs\n"
    "CImputacionPreventiva.SeleccionarActivas: runs | runs | runs\n"
    "CImputacionPreventiva.Buscar: runs | runs | near \"Imputacion_Preventiva\": syntax error\n"
    "CImputacionPreventiva.SeleccionarTodos: near \"FROM\": syntax error | runs | near \"Imputacion_Preventiva\": "
    "syntax error\n"
    "CImputacionParalela.Seleccionar: runs | runs | runs\n"
    "CGama.Seleccionar: runs | runs | runs\n"
    "CGama.Buscar: runs | runs | runs\n"
    "CGama.SeleccionarPorEjecutor: runs | runs | runs\n"
    "CEquipo.Seleccionar: runs | runs | near \"Equipo\": syntax error\n"
    "CEquipo.Buscar: runs | runs | runs\n"
    "CEquipo.BuscarHijos: runs | runs | runs\n"
    "CEquipo.Sistematicos: runs | runs | near \"Equipo\": syntax error\n"
    "CDocumentoEquipo.Seleccionar: runs | runs | runs\n"
    "CDocumentoEquipo.Buscar: runs | runs | runs\n"
    "CBoletin.Seleccionar: runs | runs | runs\n"
    "CBoletin.Buscar: runs | runs | runs\n";

TEST(ColumnLists, RunExceptWhereTheStatementItselfIsAtFault) {
    World world;
    std::string outcomes = "operation, with its own list | with a caller's list | without a blank behind it\n";
    for (const RegisteredClass& each : Descriptor().classes) {
        const ClassTable& table = each.table();
        if (!table.create) continue;
        const auto object = table.create();
        for (const Member& member : table.members) {
            if (!TakesColumns(member)) continue;
            outcomes += std::string(table.name) + "." + std::string(member.name) + ": " +
                        Outcome(*object, member, nullptr) + " | " + Outcome(*object, member, "count(*) as n ") + " | " +
                        Outcome(*object, member, "count(*) as n") + "\n";
        }
    }
    EXPECT_EQ(outcomes, kOutcomes);
}

}  // namespace
