#pragma once

#include "frame/provider.h"
#include "frame/value.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Perluma {

/// Hears of what the component asks of its neighbours, in order.
struct TraceSink {
    virtual ~TraceSink() = default;

    /// A statement, letter for letter, before it runs: a refused one is heard too.
    virtual void Sql(const std::string& text) = 0;
    /// "begin", "commit" or "rollback", once it has reached the database. What it raises is lost.
    virtual void Transaction(std::string_view what) = 0;
    /// A key that was handed out.
    virtual void Key(const std::string& table, std::int32_t value) = 0;
    /// A call on a service that went well, such as "OrdenTrabajo.CrearOrden": its arguments in order, and its result
    /// (empty for a call that gives none).
    virtual void Service(std::string_view name, const std::vector<Zontara::Value>& arguments,
                         const Zontara::Value& result) = 0;
    /// An event that an object raised, after its subscribers heard of it.
    virtual void Event(std::string_view name, const Zontara::Value& argument) = 0;
    /// A notice that was added to a list.
    virtual void Notice(const std::string& text) = 0;

    /// Called ahead of every request, and free to raise: then the request goes no further and nothing else is heard of
    /// it. The line is the request in short: "begin", "commit", "rollback", "key Boletin", "sql <text>",
    /// "service OrdenTrabajo.CrearOrden", "event ProcesandoImputacion", "notice <text>".
    virtual void Before(const std::string& line);
};

/// Stands between the component and any provider, and tells a sink of everything that passes. It changes nothing of
/// what is asked or answered. What the services do for themselves goes past it, since they hold the session behind.
/// Objects that it handed out (lists, services) keep the sink alive.
class TracingProvider : public Zontara::Provider {
public:
    /// Both are kept for as long as the provider lives; neither may be none.
    TracingProvider(std::shared_ptr<Zontara::Provider> inner, std::shared_ptr<TraceSink> sink);
    ~TracingProvider() override;

    Zontara::SesionGlobal& Session() override;
    Zontara::GlobalPerluma& Perluma() override;
    /// The recordset of the provider behind: it finds the traced connection when it is opened.
    Zontara::Ref<Zontara::Recordset> NewRecordset() override;
    Zontara::Ref<Zontara::ListaCambios> NewListaCambios() override;
    Zontara::Ref<Zontara::ServicioActivos> NewServicioActivos() override;
    void EventRaised(std::string_view event, const Zontara::Value& argument) override;

private:
    std::shared_ptr<Zontara::Provider> inner_;
    std::shared_ptr<TraceSink> sink_;
    Zontara::Ref<Zontara::SesionGlobal> session_;
    Zontara::Ref<Zontara::GlobalPerluma> services_;
};

}  // namespace Perluma
