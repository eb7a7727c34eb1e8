#include "catalogues/CMaterialGama.h"

#include "catalogues/CGama.h"
#include "catalogues/keyed_insert.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/convert.h"
#include "frame/creation.h"
#include "frame/provider.h"
#include "frame/sql.h"

namespace Zontara {

void CMaterialGama::BorrarItem(std::int32_t IDItem) {
    Trap(
        "CMaterialGama.BorrarItem(IDItem)",
        [&] {
            Libreria::Ejecutar(Sql({"  DELETE  from materiales_gama ", " where sc_materiales_gama =", IDItem}));
        },
        [&] { return Arguments(IDItem); });
}

void CMaterialGama::AgregarItem(std::int16_t numeroItem, const std::string& Descripcion, Money Costo_Unitario,
                                float CantidadNecesaria, std::int32_t NumeroGama) {
    Trap(
        "CMaterialGama.AgregarItem(numeroItem,Descripcion,Costo_Unitario,CantidadNecesaria,NumeroGama)",
        [&] {
            const auto insert = [&](std::int32_t clave) {
                return Sql({"  INSERT Into materiales_gama ", "(sc_materiales_gama ,Descripcion ,",
                            "Costo_Unitario, Cantidad_Necesaria , sc_gama,item) ", " VALUES (", clave, ",'",
                            Descripcion, "',", Costo_Unitario, ",", CantidadNecesaria, ",", NumeroGama, ",", numeroItem,
                            ")"});
            };
            catalogues::InsertWithKey("materiales_gama", insert);
        },
        [&] { return Arguments(numeroItem, Descripcion, Costo_Unitario, CantidadNecesaria, NumeroGama); });
}

Ref<Recordset> CMaterialGama::ListarMaterialesDeUnaGama(std::int32_t NumeroGama) {
    return Trap(
        "CMaterialGama.ListarMaterialesDeUnaGama(NumeroGama)",
        [&] {
            return Libreria::Abierto(Sql({"SELECT * ", "FROM materiales_gama Where sc_gama =", NumeroGama}));
        },
        [&] { return Arguments(NumeroGama); });
}

Money CMaterialGama::CostoTotalMaterialesGama(std::int32_t NumeroGama) {
    return Trap(
        "CMaterialGama.CostoTotalMaterialesGama(NumeroGama)",
        [&]() -> Money {
            const Ref<Recordset> costo =
                Libreria::Abierto(Sql({"SELECT sum(costo_unitario*cantidad_necesaria) as total ",
                                       "FROM materiales_gama Where sc_gama =", NumeroGama}));
            if (!Libreria::ExistenRegistros(costo)) return {};
            const Value total = costo->Valor("TOTAL");
            // The sum over no lines is null.
            if (total.IsNull()) return {};
            return ConvertTo<Money>(total);
        },
        [&] { return Arguments(NumeroGama); });
}

void CMaterialGama::AgregarMaterialesAOT(std::int32_t numeroOT, std::int32_t NumeroGama) {
    Trap(
        "CMaterialGama.AgregarMaterialesAOT(numeroOT,NumeroGama)",
        [&] {
            const Ref<Recordset> materiales = ListarMaterialesDeUnaGama(NumeroGama);
            if (!Libreria::ExistenRegistros(materiales)) return;
            while (!materiales->FinDeDatos()) {
                const Value descripcion = materiales->Valor("Descripcion");
                const Value costo = materiales->Valor("Costo_Unitario");
                const Value cantidad = materiales->Valor("cantidad_necesaria");
                // Each copied line is numbered with how many there are, whatever its place in the list.
                Neighbours().Perluma().MaterialesOT()->AgregarItemOT(
                    NarrowToInt16(materiales->TotalRegistros()), ConvertTo<std::string>(descripcion),
                    ConvertTo<Money>(costo), ConvertTo<float>(cantidad), numeroOT);
                materiales->MoverSiguiente();
            }
        },
        [&] { return Arguments(numeroOT, NumeroGama); });
}

void CMaterialGama::AsignarManoObraAOT(std::int32_t numeroOT, std::int32_t NumeroGama) {
    Trap(
        "CMaterialGama.AsignarManoObraAOT(numeroOT,NumeroGama)",
        [&] {
            const Ref<Recordset> gama = Create<CGama>()->Buscar(NumeroGama, "Hombres_Necesarios,Tiempo_Necesario");
            if (!Libreria::ExistenRegistros(gama)) return;
            const std::int16_t hombres = ConvertTo<std::int16_t>(gama->Valor("Hombres_Necesarios"));
            // A free text: a time with a unit behind it is no number.
            const double tiempo = NumberIn(ToText(gama->Valor("Tiempo_Necesario"))).value_or(0);
            Neighbours().Perluma().OrdenesTrabajo()->AsignarManoObra(numeroOT, hombres, ConvertTo<float>(tiempo));
        },
        [&] { return Arguments(numeroOT, NumeroGama); });
}

}  // namespace Zontara
