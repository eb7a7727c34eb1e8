#include "planning/sheet.h"

#include "bulletins/CBoletin.h"
#include "catalogues/CMaterialGama.h"
#include "frame/convert.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <tuple>

namespace planning {

namespace {

/// A bulletin with its task and asset, whatever is missing of them: it has been launched and is to be worked off.
constexpr const char* kBulletin =
    "SELECT b.SC_Boletin, b.ID_Equipo, a.Descripcion, g.Numero_Gama, g.Descripcion, g.Texto_Mantenimiento,"
    " i.Frecuencia, r.Descripcion, e.Descripcion, g.Especialista, g.Hombres_Necesarios, g.Tiempo_Necesario,"
    " g.Equipo_Parado, g.Seguridades, g.Coordinaciones, g.Materiales_Herramientas, b.Fecha_Lanzamiento,"
    " b.Fecha_Entrega, b.Lunes, b.Martes, b.Miercoles, b.Jueves, b.Viernes, b.Sabado, b.Domingo, b.Nota,"
    " b.Estatus, b.sc_Orden_Trabajo, i.SC_Gama"
    " FROM Boletin b LEFT JOIN Imputacion_Preventiva i ON i.SC_Imputacion_Preventiva = b.SC_Imputacion_Preventiva"
    " LEFT JOIN Gama g ON g.SC_Gama = i.SC_Gama LEFT JOIN Activo a ON a.ID_Activo = b.ID_Equipo"
    " LEFT JOIN Grupo_Gama r ON r.SC_Grupo_Gama = g.SC_Grupo_Gama"
    " LEFT JOIN Ejecutor_Gama e ON e.SC_Ejecutor_Gama = g.SC_Ejecutor_Gama WHERE b.SC_Boletin = ?1";
constexpr int kTask = 28;

/// The keys of a list with commas between them.
std::vector<std::int32_t> Keys(const std::string& list) {
    std::vector<std::int32_t> keys;
    std::istringstream in(list);
    for (std::string key; std::getline(in, key, ',');)
        keys.push_back(std::stoi(key));
    return keys;
}

std::vector<SheetMaterial> MaterialsOf(Zontara::CGlobalPreventivo& component, std::int32_t task) {
    const auto rows = component.MaterialGama()->ListarMaterialesDeUnaGama(task);
    std::multimap<double, SheetMaterial> byItem;
    for (rows->MoverPrimero(); !rows->FinDeDatos(); rows->MoverSiguiente()) {
        const auto number = [&](std::string_view column) {
            return Zontara::NumberIn(Zontara::ToText(rows->Valor(column))).value_or(0);
        };
        byItem.emplace(number("item"),
                       SheetMaterial{Zontara::ToText(rows->Valor("Descripcion")), number("Cantidad_Necesaria")});
    }
    std::vector<SheetMaterial> materials;
    for (auto& [item, material] : byItem)
        materials.push_back(std::move(material));
    return materials;
}

/// The bulletin in the current row of `kBulletin`, without what the component is asked for.
SheetBulletin BulletinIn(const dhRichClient3::Statement& row) {
    SheetBulletin bulletin;
    int column = 0;
    const auto text = [&] { return row.Text(column++); };
    const auto number = [&] { return row.Int(column++); };
    bulletin.key = number();
    bulletin.asset = text();
    bulletin.assetName = text();
    bulletin.taskNumber = number();
    bulletin.taskName = text();
    bulletin.text = text();
    bulletin.frequency = text();
    bulletin.group = text();
    bulletin.executor = text();
    bulletin.specialist = text();
    bulletin.crew = number();
    bulletin.time = text();
    bulletin.standstill = number() != 0;
    bulletin.safety = text();
    bulletin.coordination = text();
    bulletin.tools = text();
    bulletin.launched = text();
    bulletin.delivery = text();
    for (std::string& day : bulletin.days)
        day = text();
    bulletin.note = text();
    bulletin.status = Zontara::NarrowToInt16(number());
    bulletin.order = number();
    return bulletin;
}

}  // namespace

Zontara::Date MondayOf(std::int32_t week, std::int32_t year) {
    const Zontara::Date newYear = Zontara::DateOf(year, 1, 1);
    return Zontara::AddDays(newYear, 1 - Zontara::WeekdayOf(newYear) + (week - 1) * 7);
}

WeekSheet SheetOf(Zontara::CGlobalPreventivo& component, dhRichClient3::Connection& database, std::uint8_t week,
                  std::int32_t year, const std::string& asset) {
    WeekSheet sheet{week, year, MondayOf(week, year), {}};
    auto row = database.Prepare(kBulletin);
    std::map<std::int32_t, std::vector<SheetMaterial>> materials;
    for (const std::int32_t key : Keys(component.Boletin()->SeleccionarPorSemana(week, year))) {
        if (!row.Bind(1, key).Step()) continue;
        SheetBulletin bulletin = BulletinIn(row);
        if (!asset.empty() && bulletin.asset != asset) continue;
        const std::int32_t task = row.Int(kTask);
        const auto [known, isNew] = materials.try_emplace(task);
        if (isNew) known->second = MaterialsOf(component, task);
        bulletin.materials = known->second;
        bulletin.statusName = component.Boletin()->Estatus(bulletin.status);
        sheet.bulletins.push_back(std::move(bulletin));
    }
    std::sort(sheet.bulletins.begin(), sheet.bulletins.end(), [](const SheetBulletin& a, const SheetBulletin& b) {
        return std::tie(a.asset, a.taskNumber, a.key) < std::tie(b.asset, b.taskNumber, b.key);
    });
    return sheet;
}

}  // namespace planning
