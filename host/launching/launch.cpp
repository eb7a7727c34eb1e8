#include "host/launching/launch.h"

#include "calendar/CImputacionPreventiva.h"
#include "meter/CImputacionSistematica.h"

#include <fmt/format.h>

namespace host::launching {

namespace {

using dhRichClient3::Connection;
using planning::Kind;

/// Last keys of the tables that a launch adds to: what comes after them is the launch's.
struct Mark {
    std::int32_t bulletin = 0;
    std::int32_t generated = 0;
};

std::int32_t LastKey(Connection& database, std::string_view sql) {
    auto last = database.Prepare(sql);
    last.Step();
    return last.Int(0);
}

Mark MarkNow(Connection& database) {
    return {LastKey(database, "SELECT max(SC_Boletin) FROM Boletin"),
            LastKey(database, "SELECT max(SC_Orden_Generada) FROM Orden_Generada")};
}

std::vector<Paper> BulletinsSince(Connection& database, std::int32_t mark) {
    auto rows = database.Prepare(
        "SELECT b.SC_Boletin, b.ID_Equipo, a.Descripcion, g.Numero_Gama, g.Descripcion, i.Frecuencia,"
        " b.Fecha_Lanzamiento, b.Fecha_Entrega, b.SC_Imputacion_Preventiva"
        " FROM Boletin b"
        " JOIN Imputacion_Preventiva i ON i.SC_Imputacion_Preventiva = b.SC_Imputacion_Preventiva"
        " JOIN Gama g ON g.SC_Gama = i.SC_Gama"
        " JOIN Activo a ON a.ID_Activo = b.ID_Equipo"
        " WHERE b.SC_Boletin > ?1 ORDER BY b.SC_Boletin");
    rows.Bind(1, mark);
    std::vector<Paper> papers;
    while (rows.Step()) {
        Paper paper;
        paper.number = rows.Int(0);
        paper.asset = rows.Text(1);
        paper.assetName = rows.Text(2);
        paper.task = rows.Int(3);
        paper.taskName = rows.Text(4);
        paper.frequency = rows.Text(5);
        paper.date = rows.Text(6);
        paper.delivery = rows.Text(7);
        paper.assignment = rows.Int(8);
        papers.push_back(std::move(paper));
    }
    return papers;
}

/// The frequency word that closes the text of a calendar order.
std::string FrequencyIn(const std::string& text) {
    constexpr std::string_view before = ",Frequency ";
    const std::size_t at = text.rfind(before);
    return at == std::string::npos ? std::string() : text.substr(at + before.size());
}

/// The orders logged since, those of the calendar with their task, those of a meter with their assignment's.
std::vector<Paper> OrdersSince(Connection& database, std::int32_t mark) {
    auto rows = database.Prepare(
        "SELECT o.SC_Orden_Trabajo, o.ID_Activo, a.Descripcion, g.Numero_Gama, g.Descripcion, o.Texto_Trabajo,"
        " s.Lectura_Limite, u.Descripcion, o.Fecha_Solicitud, o.Fecha_Deseada, o.Hombres, o.Tiempo,"
        " (SELECT count(*) FROM Material_OT m WHERE m.SC_Orden_Trabajo = o.SC_Orden_Trabajo),"
        " (SELECT sum(m.Costo_Unitario * m.Cantidad) FROM Material_OT m WHERE m.SC_Orden_Trabajo = o.SC_Orden_Trabajo),"
        " o.SC_Imputacion_Sistematica"
        " FROM Orden_Generada l"
        " JOIN Orden_Trabajo o ON o.SC_Orden_Trabajo = l.SC_Orden_Trabajo"
        " JOIN Activo a ON a.ID_Activo = o.ID_Activo"
        " LEFT JOIN Imputacion_Sistematica s ON o.SC_Imputacion_Sistematica > 0"
        " AND s.SC_Imputacion_Sistematica = o.SC_Imputacion_Sistematica"
        " LEFT JOIN Unidad_Lectura u ON u.SC_Unidad_Lectura = a.SC_Unidad_Lectura"
        " LEFT JOIN Gama g ON g.SC_Gama = coalesce(s.SC_Gama, o.SC_Gama)"
        " WHERE l.SC_Orden_Generada > ?1 ORDER BY l.SC_Orden_Generada");
    rows.Bind(1, mark);
    std::vector<Paper> papers;
    while (rows.Step()) {
        Paper paper;
        paper.order = true;
        paper.number = rows.Int(0);
        paper.asset = rows.Text(1);
        paper.assetName = rows.Text(2);
        paper.task = rows.Int(3);
        paper.taskName = rows.Text(4);
        paper.text = rows.Text(5);
        paper.frequency = rows.IsNull(6) ? FrequencyIn(paper.text) : rows.Text(6) + " " + rows.Text(7);
        paper.date = rows.Text(8).substr(0, 10);
        paper.delivery = rows.Text(9).substr(0, 10);
        paper.crew = rows.Int(10);
        paper.time = rows.Real(11);
        paper.materials = rows.Int(12);
        paper.cost = rows.Real(13);
        paper.assignment = rows.Int(14);
        papers.push_back(std::move(paper));
    }
    return papers;
}

/// Live meter assignments of the assets that a meter launch selects.
std::int64_t MeterAssignmentsIn(Connection& database, const Request& request) {
    auto count = database.Prepare(
        "SELECT count(*) FROM Imputacion_Sistematica i JOIN Activo a ON a.ID_Activo = i.ID_Activo"
        " WHERE i.Anulada = 0 AND a.estatus_actual NOT IN (3, 4, 5, 7)"
        " AND (?1 = '' OR substr(a.ID_Activo, 1, 1) = ?1) AND (?2 <= 0 OR a.sc_proyecto = ?2)");
    count.Bind(1, request.chapter).Bind(2, request.project).Step();
    return count.Int64(0);
}

void Run(Plant& plant, const Request& request, Outcome& outcome, Progress& progress) {
    const auto calendar = plant.Component().ImputacionPreventiva();
    progress.Label(std::string(NameOf(outcome.kind)));
    switch (outcome.kind) {
        case Kind::Synchronised:
            outcome.launched = calendar->LanzarPreventivo(request.date, request.user, "", request.orders);
            outcome.looked = progress.Looked();
            break;
        case Kind::Conventional:
            outcome.launched =
                calendar->LanzarPreventivoConvensional(request.date, request.user, "", request.orders, request.project);
            outcome.looked = progress.Looked();
            break;
        case Kind::Meter:
            plant.Component().ImputacionSistematica()->GenerarOTSSistematicas(
                request.date, request.orders ? request.orders : std::make_shared<Zontara::CConfiguracionOTBoletin>(),
                request.chapter, 0, request.project);
            outcome.looked = MeterAssignmentsIn(plant.Database(), request);
            break;
    }
}

}  // namespace

std::vector<Outcome> Launch(Plant& plant, const Request& request, Progress& progress) {
    std::vector<Outcome> outcomes;
    for (const Kind kind : request.kinds) {
        const Mark mark = MarkNow(plant.Database());
        Outcome outcome;
        outcome.kind = kind;
        Run(plant, request, outcome, progress);
        outcome.papers = BulletinsSince(plant.Database(), mark.bulletin);
        for (Paper& order : OrdersSince(plant.Database(), mark.generated))
            outcome.papers.push_back(std::move(order));
        if (kind == Kind::Meter) outcome.launched = static_cast<std::int64_t>(outcome.papers.size());
        outcomes.push_back(std::move(outcome));
    }
    return outcomes;
}

}  // namespace host::launching
