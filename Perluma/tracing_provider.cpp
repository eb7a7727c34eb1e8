#include "Perluma/tracing_provider.h"

#include "Perluma/tracing_services.h"
#include "dhRichClient3/connection.h"
#include "frame/raised_error.h"

#include <utility>

namespace Perluma {

using Zontara::Ref;

void TraceSink::Before(const std::string& /*line*/) {}

namespace {

/// Statements come two ways: those that give no rows through `Ejecutar`, the others from a recordset, which finds its
/// rows here as it would in the connection itself.
class TracedConexion : public Zontara::Conexion, public dhRichClient3::RowSource {
public:
    TracedConexion(Ref<Zontara::Conexion> inner, std::shared_ptr<TraceSink> sink)
        : inner_(std::move(inner)), sink_(std::move(sink)) {}

    const Ref<Zontara::Conexion>& Inner() const { return inner_; }

    void IniciarTrans(const std::string& texto) override {
        sink_->Before("begin");
        inner_->IniciarTrans(texto);
        Note("begin");
    }
    void ConfirmarTrans(const std::string& texto) override {
        sink_->Before("commit");
        inner_->ConfirmarTrans(texto);
        Note("commit");
    }
    void RevertirTrans(const std::string& texto, std::int32_t modo) override {
        sink_->Before("rollback");
        inner_->RevertirTrans(texto, modo);
        Note("rollback");
    }
    void Ejecutar(const std::string& sql) override {
        Announce(sql);
        inner_->Ejecutar(sql);
    }
    std::shared_ptr<const dhRichClient3::RowStore> Fetch(const std::string& sql) override {
        Announce(sql);
        auto* const source = dynamic_cast<dhRichClient3::RowSource*>(inner_.get());
        if (source == nullptr) Zontara::Raise(Zontara::RunTimeError::ObjectNotSet);
        return source->Fetch(sql);
    }

private:
    void Announce(const std::string& sql) {
        sink_->Before("sql " + sql);
        sink_->Sql(sql);
    }
    void Note(std::string_view what) {
        try {
            sink_->Transaction(what);
        } catch (...) {
            // What the database has done is done: to tell the client that it failed would be wrong.
        }
    }

    Ref<Zontara::Conexion> inner_;
    std::shared_ptr<TraceSink> sink_;
};

class TracedKeys : public Zontara::GeneradorClaves {
public:
    TracedKeys(Ref<Zontara::GeneradorClaves> inner, std::shared_ptr<TraceSink> sink)
        : inner_(std::move(inner)), sink_(std::move(sink)) {}

    const Ref<Zontara::GeneradorClaves>& Inner() const { return inner_; }

    std::int32_t ProximaClave(const std::string& tabla) override {
        sink_->Before("key " + tabla);
        const std::int32_t key = inner_->ProximaClave(tabla);
        sink_->Key(tabla, key);
        return key;
    }

private:
    Ref<Zontara::GeneradorClaves> inner_;
    std::shared_ptr<TraceSink> sink_;
};

class TracedList : public Zontara::ListaCambios {
public:
    TracedList(Ref<Zontara::ListaCambios> inner, std::shared_ptr<TraceSink> sink)
        : inner_(std::move(inner)), sink_(std::move(sink)) {}

    void Agregar(const std::string& texto) override {
        sink_->Before("notice " + texto);
        inner_->Agregar(texto);
        sink_->Notice(texto);
    }
    std::int32_t Total() const override { return inner_->Total(); }
    std::string Elemento(std::int32_t posicion) const override { return inner_->Elemento(posicion); }

private:
    Ref<Zontara::ListaCambios> inner_;
    std::shared_ptr<TraceSink> sink_;
};

class TracedSession : public Zontara::SesionGlobal {
public:
    TracedSession(Zontara::SesionGlobal& inner, std::shared_ptr<TraceSink> sink)
        : inner_(inner), sink_(std::move(sink)) {
        // The wrappers are there from the start, so that there is nothing to fail between the component, which has
        // counted a transaction, and its begin, nor in a handler that asks for the connection.
        Wrapped(connection_, inner_.LaConexion());
        Wrapped(keys_, inner_.ElGeneradorClaves());
    }

    Ref<Zontara::Conexion> LaConexion() override { return Wrapped(connection_, inner_.LaConexion()); }
    Ref<Zontara::GeneradorClaves> ElGeneradorClaves() override { return Wrapped(keys_, inner_.ElGeneradorClaves()); }
    std::uint8_t ProfundidadTransaccion() const override { return inner_.ProfundidadTransaccion(); }
    void ProfundidadTransaccion(std::uint8_t profundidad) override { inner_.ProfundidadTransaccion(profundidad); }
    std::string TextoParaSQL(const std::string& texto) const override { return inner_.TextoParaSQL(texto); }

private:
    /// The wrapper of an object: the same one for as long as the session behind gives the same object.
    template <class Wrapper, class Inner> Ref<Wrapper> Wrapped(Ref<Wrapper>& wrapper, const Ref<Inner>& inner) {
        if (!inner) return nullptr;
        if (!wrapper || wrapper->Inner() != inner) wrapper = std::make_shared<Wrapper>(inner, sink_);
        return wrapper;
    }

    Zontara::SesionGlobal& inner_;
    std::shared_ptr<TraceSink> sink_;
    Ref<TracedConexion> connection_;
    Ref<TracedKeys> keys_;
};

}  // namespace

TracingProvider::TracingProvider(std::shared_ptr<Zontara::Provider> inner, std::shared_ptr<TraceSink> sink)
    : inner_(std::move(inner)),
      sink_(std::move(sink)),
      session_(std::make_shared<TracedSession>(inner_->Session(), sink_)),
      services_(TracedServices(inner_->Perluma(), sink_)) {}

TracingProvider::~TracingProvider() = default;

Zontara::SesionGlobal& TracingProvider::Session() { return *session_; }

Zontara::GlobalPerluma& TracingProvider::Perluma() { return *services_; }

Ref<Zontara::Recordset> TracingProvider::NewRecordset() { return inner_->NewRecordset(); }

Ref<Zontara::ListaCambios> TracingProvider::NewListaCambios() {
    return std::make_shared<TracedList>(inner_->NewListaCambios(), sink_);
}

Ref<Zontara::ServicioActivos> TracingProvider::NewServicioActivos() {
    return TracedAssets(inner_->NewServicioActivos(), sink_);
}

void TracingProvider::EventRaised(std::string_view event, const Zontara::Value& argument) {
    sink_->Before("event " + std::string(event));
    inner_->EventRaised(event, argument);
    sink_->Event(event, argument);
}

}  // namespace Perluma
