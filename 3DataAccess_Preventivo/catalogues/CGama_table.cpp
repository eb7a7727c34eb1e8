#include "catalogues/CGama.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& CGama::ClassMembers() {
    static const ClassTable table =
        TableBuilder<CGama>("_CGama")
            .Creatable()
            .Method("Nuevo", &CGama::Nuevo,
                    {{"Descripcion"},
                     {"Texto_Mantenimiento"},
                     {"Equipo_Parado"},
                     {"SC_Grupo_Gama"},
                     {"SC_Ejecutor_Gama"},
                     {"NumeroGama"},
                     {"Tipo_Gama"},
                     {"Costo_Actual"},
                     {"Tiempo_Necesario"},
                     {"Esquema"},
                     ByRef("Coordinaciones"),
                     {"Seguridades"},
                     {"Materiales_Herramientas"},
                     {"SC_Contratista"},
                     ByRef("Hombres_Necesarios"),
                     {"Especialista"},
                     {"Frecuencia_Gama"}})
            .Method("Borrar", &CGama::Borrar, {{"SC_Gama"}})
            .Method("Seleccionar", &CGama::Seleccionar,
                    {{"SC_Grupo_Gama"},
                     OptionalByRef("sColumnas", ""),
                     OptionalByRef("Tipo_Gama", ""),
                     OptionalByRef("sOrdenResultado", "")})
            .Method("Salvar", &CGama::Salvar,
                    {{"SC_Gama"},
                     {"Descripcion"},
                     {"Texto_Mantenimiento"},
                     {"Equipo_Parado"},
                     {"SC_Grupo_Gama"},
                     {"SC_Ejecutor_Gama"},
                     {"Numero_Gama"},
                     {"Tipo_Gama"},
                     {"Costo_Actual"},
                     {"Tiempo_Necesario"},
                     {"Esquema"},
                     ByRef("Coordinaciones"),
                     {"Seguridades"},
                     {"Materiales_Herramientas"},
                     {"SC_Contratista"},
                     ByRef("Hombres_Necesarios"),
                     {"Especialista"},
                     {"SC_Archivo_Digital"},
                     {"Frecuencia_Gama"}})
            .Method("Buscar", &CGama::Buscar, {{"SC_Gama"}, OptionalByRef("sColumnas", "")})
            .Method("SeleccionarPorEjecutor", &CGama::SeleccionarPorEjecutor,
                    {{"SC_Ejecutor_Gama"}, OptionalByRef("sColumnas", "")})
            .Method("ExisteNumero", &CGama::ExisteNumero, {{"NumeroGama"}, {"CodigoGrupoGama"}})
            .Method("ProximoNumeroGama", &CGama::ProximoNumeroGama)
            .Get("ListaDeTareasCambio", &CGama::ListaDeTareasCambio)
            .Build();
    return table;
}

const ClassTable* CGama::Table() const { return &ClassMembers(); }

}  // namespace Zontara
