#include "Perluma/session_door.h"

#include "Perluma/line_trace.h"
#include "Perluma/provider.h"
#include "Perluma/tracing_provider.h"
#include "dhRichClient3/connection.h"
#include "dhRichClient3/recordset.h"
#include "frame/provider.h"
#include "frame/raised_error.h"
#include "frame/table_builder.h"
#include "schema/create.h"

#include <memory>
#include <utility>

namespace Perluma {

using dhRichClient3::Connection;
using Zontara::Optional;
using Zontara::Raise;
using Zontara::Ref;
using Zontara::RunTimeError;

namespace {

/// The process's session; no connection when there is none.
struct OpenSessionParts {
    Ref<Connection> connection;
    std::shared_ptr<LineTrace> trace;
};

OpenSessionParts& Parts() {
    static OpenSessionParts parts;
    return parts;
}

Connection& Connected() {
    if (!Parts().connection) Raise(RunTimeError::ObjectNotSet, "No session is open. Call Abrir first.");
    return *Parts().connection;
}

Ref<Connection> OpenDatabase(const std::string& path, bool create) {
    dhRichClient3::Options options;
    if (create) options.mode = dhRichClient3::Options::Mode::Create;
    Ref<Connection> connection = Connection::Open(path, options);
    if (create && schema::IsEmpty(*connection)) schema::Create(*connection);
    return connection;
}

}  // namespace

const Zontara::ClassTable& SessionDoor::ClassMembers() {
    static const Zontara::ClassTable table =
        Zontara::TableBuilder<SessionDoor>("_SesionGlobal")
            .Creatable()
            .In(Zontara::Library::Perluma)
            .Method("Abrir", &SessionDoor::Abrir, {{"ruta"}, Optional("crear", false), Optional("trazar", false)})
            .Method("Cerrar", &SessionDoor::Cerrar)
            .Get("EstaAbierta", &SessionDoor::EstaAbierta)
            .Get("ProfundidadTransaccion", &SessionDoor::ProfundidadTransaccion)
            .Method("Consultar", &SessionDoor::Consultar, {{"sql"}})
            .Method("Ejecutar", &SessionDoor::Ejecutar, {{"sql"}})
            .Method("TextoParaSQL", &SessionDoor::TextoParaSQL, {{"texto"}})
            .Get("Traza", &SessionDoor::Traza)
            .Build();
    return table;
}

void SessionDoor::Abrir(const std::string& ruta, bool crear, bool trazar) {
    if (EstaAbierta()) Raise(RunTimeError::InvalidCall, "A session is open. Call Cerrar first.");
    Ref<Connection> connection = OpenDatabase(ruta, crear);
    std::shared_ptr<Zontara::Provider> provider = std::make_shared<Provider>(connection);
    std::shared_ptr<LineTrace> trace;
    if (trazar) {
        trace = std::make_shared<LineTrace>();
        provider = std::make_shared<TracingProvider>(std::move(provider), trace);
    }
    Zontara::InstallProvider(std::move(provider));
    Parts() = {std::move(connection), std::move(trace)};
}

void SessionDoor::Cerrar() {
    if (!EstaAbierta()) return;
    const OpenSessionParts parts = std::exchange(Parts(), {});
    Zontara::InstallProvider(nullptr);
    if (parts.connection->TransactionMeant()) parts.connection->RevertirTrans("", 0);
}

bool SessionDoor::EstaAbierta() const { return Parts().connection != nullptr; }

std::uint8_t SessionDoor::ProfundidadTransaccion() const {
    Connected();
    return Zontara::Session().ProfundidadTransaccion();
}

Ref<Zontara::Recordset> SessionDoor::Consultar(const std::string& sql) {
    Connected();
    Ref<Zontara::Recordset> rows = dhRichClient3::NewRecordset();
    rows->ConexionActiva(Parts().connection);
    rows->TextoSQL(sql);
    rows->Abrir("", Zontara::Absent{}, 0);
    rows->ConexionActiva(nullptr);
    return rows;
}

void SessionDoor::Ejecutar(const std::string& sql) { Connected().RunScript(sql); }

std::string SessionDoor::TextoParaSQL(const std::string& texto) const {
    Connected();
    return Zontara::Session().TextoParaSQL(texto);
}

Ref<Zontara::ListaCambios> SessionDoor::Traza() const {
    Connected();
    return Parts().trace ? Parts().trace->Lines() : nullptr;
}

}  // namespace Perluma
