// The script clients' session, early-bound: compiled against the type library's header, every call through the vtable,
// with an event sink of the outgoing interface and a sink that knows late binding alone.
#include "com/tests/console.h"
#include "com/tests/sink.h"

#include <initguid.h>

#include "Zontara.h"

using namespace client;

namespace {

/// Days of the year 2026.
constexpr DATE kFirstOfMarch = 46082;
constexpr DATE kThursday = kFirstOfMarch + 4;
constexpr DATE kLastOfMarch = kFirstOfMarch + 30;

Counted<_SesionGlobal> session;
Counted<_CGlobalPreventivo> facade;

void Done(HRESULT result, const char* what) { ExpectResult(what, result, S_OK); }

/// The value of a getter of the facade or of another object.
template <class Interface, class Object, class Getter> Counted<Interface> Get(const Object& object, Getter getter) {
    Counted<Interface> got;
    Done((object.get()->*getter)(got.Receive()), "read a property");
    return got;
}

Counted<_Recordset> Query(const wchar_t* sql) {
    Counted<_Recordset> rows;
    Done(session->Consultar(Text(sql), rows.Receive()), "query");
    return rows;
}

void TellRows(const char* label, const Counted<_Recordset>& rows, const std::vector<const wchar_t*>& columns) {
    LONG total = 0;
    rows->get_TotalRegistros(&total);
    Tell(label, total);
    rows->MoverPrimero();
    const auto fields = Get<_Campos>(rows, &_Recordset::get_Campos);
    VARIANT_BOOL end = VARIANT_TRUE;
    for (rows->get_FinDeDatos(&end); end == VARIANT_FALSE; rows->get_FinDeDatos(&end)) {
        std::string line = " ";
        for (const wchar_t* column : columns) {
            Variant name{std::wstring_view(column)};
            Variant value;
            Counted<_Campo> field;
            Done(fields->Item(&name, field.Receive()), "find a field");
            Done(field->get_Valor(&value), "read a field");
            line += " " + Shown(value);
        }
        std::printf("%s\n", line.c_str());
        rows->MoverSiguiente();
    }
}

void TellNotices(const char* label, const Counted<_ListaCambios>& list) {
    LONG total = 0;
    list->get_Total(&total);
    Tell(label, total);
    for (LONG i = 1; i <= total; ++i) {
        Text notice;
        Done(list->Elemento(i, &notice), "read a notice");
        std::printf("  %s\n", Escaped(notice.Wide()).c_str());
    }
}

void TellError(const char* label, HRESULT result) {
    Counted<IErrorInfo> error;
    ExpectResult("an error object", GetErrorInfo(0, error.Receive()), S_OK);
    const bool runTime = HRESULT_FACILITY(result) == FACILITY_CONTROL;
    Tell(label, runTime ? result & 0xFFFF : result);
    if (!error) return;
    Text description;
    error->GetDescription(&description);
    TellReport(description.Wide());
}

LONG FillCatalogue() {
    LONG key = 0;
    LONG group = 0;
    LONG executor = 0;
    LONG task = 0;
    VARIANT_BOOL zero = VARIANT_FALSE;
    const auto units = Get<_CUnidadLectura>(facade, &_CGlobalPreventivo::get_UnidadLectura);
    Done(units->Nuevo(Text(L"Kil\u00f3metros N\u00ba 5 \U0001F600"), &zero, &key), "unit");
    Done(Get<_CGrupoGama>(facade, &_CGlobalPreventivo::get_GrupoGama)
             ->Nuevo(Text(L"Lubricaci\u00f3n"), 1, &zero, &group),
         "group");
    Done(Get<_CEjecutorGama>(facade, &_CGlobalPreventivo::get_EjecutorGama)
             ->Nuevo(Text(L"Mec\u00e1nicos"), 1, &executor),
         "executor");
    CY price{};
    price.int64 = 405000;
    Text coordination;
    unsigned char crew = 2;
    Done(Get<_CGama>(facade, &_CGlobalPreventivo::get_Gama)
             ->Nuevo(Text(L"Cambio de aceite"), Text(L"Vaciar, filtro, llenar."), 1, group, executor, 1, Text(L"P"),
                     price, Text(L"1.5"), Text(L""), &coordination, Text(L"Bloquear el motor"), Text(L""), 0, &crew,
                     Text(L""), Text(L"cada 250 h"), &task),
         "task");
    Counted<_Recordset> rows;
    Done(units->Seleccionar(rows.Receive()), "units");
    TellRows("units", rows, {L"SC_Unidad_Lectura", L"Descripcion"});

    const auto materials = Get<_CMaterialGama>(facade, &_CGlobalPreventivo::get_MaterialGama);
    Text oil(L"Aceite, litro");
    CY unitPrice{};
    unitPrice.int64 = 81000;
    float quantity = 5;
    Done(materials->AgregarItem(1, &oil, &unitPrice, &quantity, &task), "material");
    CY cost{};
    Done(materials->CostoTotalMaterialesGama(task, &cost), "cost");
    Tell("cost", Shown(static_cast<double>(cost.int64) / 10000));
    return executor;
}

void Assign(const char* label, const Counted<_CImputacionPreventiva>& calendar, const wchar_t* asset,
            const wchar_t* frequency, const wchar_t* from, const wchar_t* last, short week, const wchar_t* anchor,
            bool synchronised, const wchar_t* words) {
    LONG key = 0;
    Done(calendar->Nuevo(Text(asset), 1, Text(L"2026-03-01"), 0, 7, Text(frequency), 1, 0, 0, Text(from), Text(last),
                         Text(L""), Text(L""), week, 0, Text(anchor), synchronised ? VARIANT_TRUE : VARIANT_FALSE,
                         Text(words), &key),
         "assignment");
    Tell(label, key);
}

/// The numbers that a launch's events told, in the order in which they came.
std::string Told(const Sink& sink) {
    std::string all;
    for (const auto& [event, number] : sink.told)
        all += std::to_string(event) + ":" + std::to_string(number) + " ";
    return all;
}

void Launch(LONG executor) {
    const auto calendar = Get<_CImputacionPreventiva>(facade, &_CGlobalPreventivo::get_ImputacionPreventiva);
    const auto other = Create<_CImputacionPreventiva>(__uuidof(CImputacionPreventiva));
    Done(calendar->putref_OTPreventivaGenerada(
             Get<_ListaCambios>(other, &_CImputacionPreventiva::get_OTPreventivaGenerada).get()),
         "share a list");
    Assign("first", calendar, L"P-100", L"Semanal", L"2026-03-01", L"2026-02-26", 9, L"", true, L"aceite");
    Assign("second", calendar, L"P-200", L"Diaria", L"2026-03-01", L"2026-02-26", 9, L"", true, L"aceite");
    Assign("third", calendar, L"P-200", L"Semanal", L"2026-01-01", L"2026-01-01", 0, L"1", false, L"filtro");

    Sink early(__uuidof(__CImputacionPreventiva));
    Sink late(IID_IDispatch);
    early.Connect(calendar.get(), __uuidof(__CImputacionPreventiva));
    late.Connect(calendar.get(), __uuidof(__CImputacionPreventiva));
    LONG launched = 0;
    Done(calendar->LanzarPreventivo(kThursday, 7, Text(L"Breve"), nullptr, 0, &launched), "launch");
    Tell("launched", launched);
    Expect("both sinks heard of the launch", Told(early) == "2:2 1:1 1:2 " && Told(late) == Told(early));
    early.Disconnect();
    late.Disconnect();
    TellRows("bulletins", Query(L"SELECT * FROM Boletin"),
             {L"SC_Boletin", L"SC_Imputacion_Preventiva", L"Fecha_Lanzamiento", L"Semana_Del_Ano", L"Nota"});

    const auto orders = Create<_CConfiguracionOTBoletin>(__uuidof(CConfiguracionOTBoletin));
    orders->put_CodigoEjecutorOT(executor);
    orders->put_EsEjecutorExterno(VARIANT_FALSE);
    orders->put_PrioridadSolicitada(2);
    Done(calendar->LanzarPreventivoConvensional(kThursday, 7, Text(L"Breve"), orders.get(), 0, &launched), "orders");
    Tell("launched into orders", launched);
    Expect("nobody hears after taking leave", Told(early) == "2:2 1:1 1:2 ");
    TellRows("orders", Query(L"SELECT * FROM Orden_Trabajo"),
             {L"SC_Orden_Trabajo", L"ID_Activo", L"Descripcion", L"Prioridad", L"Hombres", L"Tiempo"});
    TellNotices("catalogue notices", Get<_ListaCambios>(calendar, &_CImputacionPreventiva::get_CatalogoModificado));
    TellNotices("launch notices", Get<_ListaCambios>(other, &_CImputacionPreventiva::get_OTPreventivaGenerada));
}

void Read() {
    const auto readings = Get<_CLecturaEquipo>(facade, &_CGlobalPreventivo::get_LecturaEquipo);
    CY voucher{};
    voucher.int64 = 123456;
    LONG key = 0;
    Done(readings->Nuevo(Text(L"2026-03-05"), Text(L"P-100"), 1, 260, 260, 0, 0.5F, Text(L""), Text(L""), voucher,
                         Text(L""), &key),
         "reading");
    Tell("reading", key);
    DATE from = kFirstOfMarch;
    DATE to = kLastOfMarch;
    Text chapter(L"0");
    Text columns;
    Text assets;
    LONG place = 0;
    LONG unit = 0;
    Counted<_Recordset> rows;
    Done(readings->ObtenerLecturas(&from, &to, &chapter, &place, &unit, &columns, &assets, rows.Receive()), "readings");
    Expect("the chapter was written back", chapter.Wide().empty());
    LONG total = 0;
    rows->get_TotalRegistros(&total);
    Tell("readings", total);
    Text asset(L"P-100");
    Text on(L"2026-04-01");
    VARIANT_BOOL overdue = VARIANT_FALSE;
    Done(facade->ElActivoTieneMantenimientoVencido(&asset, &on, &overdue), "overdue");
    TellBool("overdue", overdue);
}

void Fail() {
    const auto calendar = Get<_CImputacionPreventiva>(facade, &_CGlobalPreventivo::get_ImputacionPreventiva);
    Counted<_Recordset> rows;
    Text columns;
    TellError("refused statement", calendar->SeleccionarTodos(Text(L""), columns, rows.Receive()));
    const auto readings = Get<_CLecturaEquipo>(facade, &_CGlobalPreventivo::get_LecturaEquipo);
    DATE from = kFirstOfMarch;
    DATE to = kLastOfMarch;
    Text chapter;
    Text unknown(L"Nada");
    LONG none = 0;
    TellError("unknown column",
              readings->ObtenerLecturas(&from, &to, &chapter, &none, &none, &unknown, nullptr, rows.Receive()));
    TellError("nothing to end", facade->TerminarTransaccion());
}

void RollBack() {
    const auto groups = Get<_CGrupoGama>(facade, &_CGlobalPreventivo::get_GrupoGama);
    Done(facade->IniciarTransaccion(), "begin");
    LONG key = 0;
    Done(groups->Nuevo(Text(L"Se va"), 2, nullptr, &key), "group");
    unsigned char depth = 0;
    Done(session->get_ProfundidadTransaccion(&depth), "depth");
    Tell("depth", depth);
    Done(facade->AbortarTransaccion(), "abort");
    Counted<_Recordset> rows;
    Done(groups->Seleccionar(rows.Receive()), "groups");
    TellRows("groups", rows, {L"SC_Grupo_Gama", L"Descripcion"});
}

void Run() {
    session = Create<_SesionGlobal>(__uuidof(SesionGlobal));
    Done(session->Abrir(Text(L":memory:"), VARIANT_TRUE, VARIANT_TRUE), "open");
    VARIANT_BOOL open = VARIANT_FALSE;
    session->get_EstaAbierta(&open);
    TellBool("open", open);
    facade = Create<_CGlobalPreventivo>(__uuidof(CGlobalPreventivo));
    const LONG executor = FillCatalogue();
    Done(session->Ejecutar(
             Text(L"INSERT INTO Activo (ID_Activo, Descripcion, ID_Grupo_Activo, SC_Unidad_Lectura) VALUES "
                  L"('P-100', 'Bomba N\u00ba 1', '', 1), ('P-200', NULL, 'G', 1)")),
         "assets");
    TellRows("assets", Query(L"SELECT ID_Activo, Descripcion, ID_Grupo_Activo, Acumulado_Lectura FROM Activo"),
             {L"ID_Activo", L"Descripcion", L"ID_Grupo_Activo", L"Acumulado_Lectura"});
    Launch(executor);
    Read();
    Fail();
    RollBack();
    TellNotices("trace", Get<_ListaCambios>(session, &_SesionGlobal::get_Traza));
    Done(session->Cerrar(), "close");
    facade = {};
    session = {};
}

}  // namespace

int main() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    Run();
    CoUninitialize();
    return 0;
}
