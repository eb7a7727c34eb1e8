// A failure deep inside a launch, as the client receives it: one header, one line a level, innermost first.
#include "calendar/CImputacionPreventiva.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using namespace Zontara;
using support::ErrorOf;

std::string Line(std::string text) {
    if (text.size() < 100) text.append(100 - text.size(), '-');
    return text + "\r\n";
}

TEST(ReportChainTest, ALaunchThatFailsInABulletinTellsAllThreeLevels) {
    support::World world;
    world.Run(
        "insert into Activo (ID_Activo, Descripcion, estatus_actual) values ('A-1','Bomba',0);"
        "insert into Gama (SC_Gama, Descripcion, Numero_Gama) values (1,'Engrase',1);"
        "insert into Imputacion_Preventiva (SC_Imputacion_Preventiva, ID_Activo, SC_Gama, Anulada, Frecuencia,"
        " Intervalo_Frecuencia, Fecha_Inicio, Fecha_Ultimo_Lanzamiento, Semana, Programacion, Es_Sincronizada)"
        " values (4,'A-1',1,0,'Semanal',1,'2026-01-01','2026-02-23',9,'1',1)");
    CImputacionPreventiva calendar;
    world.FailOn("INSERT Into Boletin", -2147221504 + 13, "database or disk is full");

    const ErrorRecord error = ErrorOf([&] { calendar.LanzarPreventivo(DateOf(2026, 3, 2), 7, "Breve"); });

    EXPECT_EQ(error.number, -2147221491);
    EXPECT_EQ(error.source, "HuntERR.ErrorIn");
    EXPECT_EQ(error.description,
              "database or disk is full \r\n"
              "  Time='03/05/26 08:00:00' App='planner:84.0.0' ADO-version='?' Computer='PLANT-1' \r\n"
              "  Method: CBoletin.Nuevo \r\n"
              "  Number: -2147221491 = &H8004000D = vbObjectError + 13 = ERRMAP_APP_FIRST - 5185 \r\n"
              "  Source: dhRichClient3 \r\n"
              "  Description: database or disk is full\r\n" +
                  Line("  Call Stack: CBoletin.Nuevo(SC_Imputacion_Preventiva=4, ID_Equipo='A-1', "
                       "Fecha_Lanzamiento='02/03/2026', Fecha_Entrega='09/03/2026', "
                       "Fecha_Real_Entrega='02/03/2026', Lunes='', Martes='', Miercoles='', Jueves='', Viernes='', "
                       "Sabado='', Domingo='', Semana_Del_Ano=10, SC_Usuario=7) ") +
                  Line("  Call Stack: CImputacionPreventiva.GeneroBoletin(rs={Recordset}, "
                       "Fecha_Lanzamiento='02/03/2026', SC_Usuario=7, Frecuencia='Semanal') ") +
                  Line("  Call Stack: CImputacionPreventiva.LanzarPreventivo(Fecha_Lanzamiento='02/03/2026', "
                       "SC_Usuario=7, TipoFrecuencia='Breve') "));
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_FALSE(world.InTransaction());
    EXPECT_EQ(world.Scalar("select Semana from Imputacion_Preventiva"), "9");
}

}  // namespace
