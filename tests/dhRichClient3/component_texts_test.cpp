// Every statement of the component gives the same whether its literals are lifted or it is run as it stands.
#include "bulletins/CConfiguracionOTBoletin.h"
#include "frame/class_registry.h"
#include "tests/dhRichClient3/outcome.h"
#include "tests/support/world.h"

#include "schema/create.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using Zontara::Member;
using Zontara::TypeWord;
using Zontara::Value;

const std::string kRows =
    "INSERT INTO Unidad_Lectura VALUES (4,'h'); INSERT INTO Grupo_Gama VALUES (3,'Mecánica',1);"
    "INSERT INTO Ejecutor_Gama VALUES (2,'Turno A',1);"
    "INSERT INTO Gama "
    "(SC_Gama,Descripcion,Numero_Gama,SC_Grupo_Gama,SC_Ejecutor_Gama,Hombres_Necesarios,Tiempo_Necesario)"
    " VALUES (5,'Engrase',5,3,2,2,'1.5'),(1,'Aceite',1,3,2,1,'2');"
    "INSERT INTO materiales_gama VALUES (5,'Grasa',4.25,0.5,5,1);"
    "INSERT INTO Activo (ID_Activo,Descripcion,SC_Unidad_Lectura,Acumulado_Lectura,Ultima_Lectura,sc_proyecto)"
    " VALUES ('5','Bomba',4,5000,5000,5),('A-1','Prensa',4,100,100,1);"
    "INSERT INTO Equipo (ID_Equipo,Descripcion,ID_Activo) VALUES ('5','Motor','5');"
    "INSERT INTO Imputacion_Preventiva (SC_Imputacion_Preventiva,ID_Activo,SC_Gama,SC_Usuario,Frecuencia,"
    "Intervalo_Frecuencia,Fecha_Inicio,Fecha_Ultimo_Lanzamiento,Semana,Programacion,Es_Sincronizada)"
    " VALUES (5,'5',5,7,'Semanal',1,'2026-01-01','2026-02-23',9,'1',1),"
    "(6,'A-1',1,7,'Semanal',1,'2026-01-01','2026-02-16',8,'1',0);"
    "INSERT INTO Imputacion_Sistematica (SC_Imputacion_Sistematica,ID_Activo,SC_Gama,Lectura_Limite,Ultimo_Acumulado,"
    "ID_Equipo) VALUES (5,'5',5,1000,3000,'5'),(6,'5',1,500,4800,'5');"
    "INSERT INTO Imputacion_Paralela VALUES (5,5,6);"
    "INSERT INTO Boletin (SC_Boletin,SC_Imputacion_Preventiva,ID_Equipo,Fecha_Lanzamiento,Semana_Del_Ano)"
    " VALUES (5,5,'5','2026-02-23',9);"
    "INSERT INTO Lectura_Equipo (SC_Lectura,Fecha,ID_Equipo,SC_Unidad_Lectura,Lectura) VALUES "
    "(5,'2026-02-23','5',4,4900);"
    "INSERT INTO Proceso VALUES (5,'Preventivo',1,1)";

/// A value for an argument that lets most operations come as far as their statements.
Value ValueFor(const Zontara::Argument& argument, int round) {
    const std::string name(argument.name);
    const auto named = [&](std::string_view part) { return name.find(part) != std::string::npos; };
    switch (argument.type.word) {
        case TypeWord::Date:
            return Value("2026-03-02");
        case TypeWord::Object:
            return std::make_shared<Zontara::CConfiguracionOTBoletin>();
        case TypeWord::Text:
            if (named("Columnas")) return round == 0 ? Value("") : Value("Gama.Descripcion ");
            if (named("Condicion")) return round == 0 ? Value("") : Value("1 = 1");
            if (named("Operador")) return Value("<=");
            if (named("Lista")) return Value("'5','A-1'");
            if (named("echa")) return Value("02/03/2026");
            return round == 2 ? Value("A-1") : Value("5");
        default:
            return Value(round == 2 ? 6 : 5);
    }
}

/// All statements that the methods of all classes make, in the order in which they come.
std::vector<std::string> TextsOfTheComponent() {
    support::World world;
    world.Run(kRows);
    world.Forget();
    for (const auto& registered : Zontara::Descriptor().classes) {
        const Zontara::ClassTable& table = registered.table();
        for (int round = 0; round < 3; ++round) {
            for (const Member& member : table.members) {
                if (member.kind != Zontara::MemberKind::Method || !table.create) continue;
                std::vector<Value> values;
                for (const auto& argument : member.arguments)
                    values.push_back(ValueFor(argument, round));
                try {
                    member.invoke(*table.create(), values);
                } catch (const Zontara::RaisedError&) {
                    // What it asked for until then is recorded.
                }
                if (world.Depth() > 0) world.Abort();
            }
        }
    }
    return world.Statements();
}

TEST(ComponentTexts, GiveTheSameWithTheirLiteralsLiftedAndAsTheyStand) {
    const std::vector<std::string> texts = TextsOfTheComponent();
    const auto lifting = support::InMemory();
    schema::Create(*lifting);
    lifting->RunScript(kRows);
    std::string script;
    for (const auto& sql :
         support::RowsOf(lifting, "SELECT sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY rowid"))
        script += sql + ";";
    support::Plain plain(script + kRows);
    // With a partial index, whatever table it is of, no literal of a WHERE is lifted.
    const auto asTheyStand =
        support::InMemory(script + kRows + "; CREATE TABLE o(a); CREATE INDEX p ON o(a) WHERE a = 1");
    std::set<std::string> seen;
    int compared = 0;
    for (const auto& text : texts) {
        const auto given = support::RunByDoor(lifting, text);
        EXPECT_EQ(given, support::RunByDoor(asTheyStand, text)) << text;
        const auto right = plain.Run(text);
        // A name that is ambiguous to the engine is none to the door.
        if (right.message.find("ambiguous column name") == std::string::npos) {
            EXPECT_EQ(given, right) << text;
            ++compared;
        }
        seen.insert(text);
    }
    EXPECT_GT(seen.size(), 150u);
    EXPECT_GT(compared, 150);
}

}  // namespace
