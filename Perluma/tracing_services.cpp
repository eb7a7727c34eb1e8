#include "Perluma/tracing_services.h"

#include <string>
#include <type_traits>
#include <utility>

namespace Perluma {

using Zontara::Ref;
using Zontara::Value;

namespace {

/// What the wrappers of all services share: the service behind, and the frame of a call.
template <class Service> class Traced {
public:
    Traced(Ref<Service> inner, std::shared_ptr<TraceSink> sink) : inner_(std::move(inner)), sink_(std::move(sink)) {}

protected:
    /// Runs a call on the service behind and tells the sink of it, unless it fails.
    template <class Call> auto Report(std::string_view name, std::vector<Value> arguments, Call call) {
        sink_->Before("service " + std::string(name));
        if constexpr (std::is_void_v<decltype(call(*inner_))>) {
            call(*inner_);
            sink_->Service(name, arguments, Value());
        } else {
            auto result = call(*inner_);
            sink_->Service(name, arguments, Value(result));
            return result;
        }
    }

private:
    Ref<Service> inner_;
    std::shared_ptr<TraceSink> sink_;
};

class TracedOrders : public Zontara::OrdenTrabajo, private Traced<Zontara::OrdenTrabajo> {
public:
    using Traced::Traced;

    std::int32_t CrearOrden(const Zontara::DatosOrden& datos) override {
        return Report("OrdenTrabajo.CrearOrden",
                      {datos.Reservado, datos.Descripcion, datos.FechaSolicitud, datos.FechaDeseada, datos.Origen,
                       datos.EjecutorInterno, datos.TextoTrabajo, datos.UsuarioDestino, datos.Prioridad,
                       datos.ID_Activo, datos.TipoIntervencion, datos.SC_Proceso, datos.EjecutorExterno,
                       datos.SC_Imputacion_Sistematica, datos.SC_Gama},
                      [&](auto& service) { return service.CrearOrden(datos); });
    }
    void AsignarManoObra(std::int32_t numeroOT, std::int16_t hombres, float tiempo) override {
        Report("OrdenTrabajo.AsignarManoObra", {numeroOT, hombres, tiempo},
               [&](auto& service) { service.AsignarManoObra(numeroOT, hombres, tiempo); });
    }
};

class TracedProcesses : public Zontara::ServicioProcesos, private Traced<Zontara::ServicioProcesos> {
public:
    using Traced::Traced;

    Ref<Zontara::Recordset> SeleccionarProcesos(std::int32_t cuales) override {
        return Report("ServicioProcesos.SeleccionarProcesos", {cuales},
                      [&](auto& service) { return service.SeleccionarProcesos(cuales); });
    }
};

class TracedMaterials : public Zontara::ServicioMaterialesOT, private Traced<Zontara::ServicioMaterialesOT> {
public:
    using Traced::Traced;

    void AgregarItemOT(std::int16_t linea, const std::string& descripcion, Zontara::Money costoUnitario, float cantidad,
                       std::int32_t numeroOT) override {
        Report("ServicioMaterialesOT.AgregarItemOT", {linea, descripcion, costoUnitario, cantidad, numeroOT},
               [&](auto& service) { service.AgregarItemOT(linea, descripcion, costoUnitario, cantidad, numeroOT); });
    }
};

class TracedAssetService : public Zontara::ServicioActivos, private Traced<Zontara::ServicioActivos> {
public:
    using Traced::Traced;

    Ref<Zontara::Recordset> BuscarActivo(const std::string& ID_Activo, const std::string& columnas) override {
        return Report("ServicioActivos.BuscarActivo", {ID_Activo, columnas},
                      [&](auto& service) { return service.BuscarActivo(ID_Activo, columnas); });
    }
    Ref<Zontara::Recordset> SeleccionarActivos(const std::string& ID_Capitulo, std::int32_t cero1, std::int32_t cero2,
                                               bool enServicio, std::int32_t CodigoProyecto) override {
        return Report("ServicioActivos.SeleccionarActivos", {ID_Capitulo, cero1, cero2, enServicio, CodigoProyecto},
                      [&](auto& service) {
                          return service.SeleccionarActivos(ID_Capitulo, cero1, cero2, enServicio, CodigoProyecto);
                      });
    }
    Value FijarAcumulado(const std::string& ID_Activo, std::int32_t valor) override {
        return Report("ServicioActivos.FijarAcumulado", {ID_Activo, valor},
                      [&](auto& service) { return service.FijarAcumulado(ID_Activo, valor); });
    }
    Value FijarLectura(const std::string& ID_Activo, std::int32_t valor) override {
        return Report("ServicioActivos.FijarLectura", {ID_Activo, valor},
                      [&](auto& service) { return service.FijarLectura(ID_Activo, valor); });
    }
    std::int32_t AcumuladoActual(const std::string& ID_Activo) override {
        return Report("ServicioActivos.AcumuladoActual", {ID_Activo},
                      [&](auto& service) { return service.AcumuladoActual(ID_Activo); });
    }
    Value AnotarLectura(const std::string& ID_Activo, const std::string& nota) override {
        return Report("ServicioActivos.AnotarLectura", {ID_Activo, nota},
                      [&](auto& service) { return service.AnotarLectura(ID_Activo, nota); });
    }
};

class TracedGlobal : public Zontara::GlobalPerluma {
public:
    TracedGlobal(Zontara::GlobalPerluma& inner, std::shared_ptr<TraceSink> sink)
        : inner_(inner), sink_(std::move(sink)) {}

    Ref<Zontara::ServicioMaterialesOT> MaterialesOT() override {
        return std::make_shared<TracedMaterials>(inner_.MaterialesOT(), sink_);
    }
    Ref<Zontara::ServicioProcesos> Procesos() override {
        return std::make_shared<TracedProcesses>(inner_.Procesos(), sink_);
    }
    Ref<Zontara::OrdenTrabajo> OrdenesTrabajo() override {
        return std::make_shared<TracedOrders>(inner_.OrdenesTrabajo(), sink_);
    }
    Ref<Zontara::ServicioActivos> Activos() override { return TracedAssets(inner_.Activos(), sink_); }

private:
    Zontara::GlobalPerluma& inner_;
    std::shared_ptr<TraceSink> sink_;
};

}  // namespace

Ref<Zontara::GlobalPerluma> TracedServices(Zontara::GlobalPerluma& inner, std::shared_ptr<TraceSink> sink) {
    return std::make_shared<TracedGlobal>(inner, std::move(sink));
}

Ref<Zontara::ServicioActivos> TracedAssets(Ref<Zontara::ServicioActivos> inner, std::shared_ptr<TraceSink> sink) {
    return std::make_shared<TracedAssetService>(std::move(inner), std::move(sink));
}

}  // namespace Perluma
