// What COM asks of a server beyond plain calls: identity, descriptions, late binding in all its forms, references of
// every type, sinks that fail, and the life of the server. Silent but for what isn't so; the exit code tells.
#include "com/tests/console.h"
#include "com/tests/late_call.h"
#include "com/tests/sink.h"

#include <initguid.h>

#include "Zontara.h"

using namespace client;

namespace {

Counted<_SesionGlobal> session;
Counted<_CGlobalPreventivo> facade;

const CLSID kClasses[] = {__uuidof(CMaterialGama),
                          __uuidof(CConfiguracionOTBoletin),
                          __uuidof(CEjecutorGama),
                          __uuidof(CUsuarioEjecutorGama),
                          __uuidof(CUnidadLectura),
                          __uuidof(COrdenGenerada),
                          __uuidof(CLecturaEquipo),
                          __uuidof(CImputacionSistematica),
                          __uuidof(CImputacionPreventiva),
                          __uuidof(CImputacionParalela),
                          __uuidof(CGrupoGama),
                          __uuidof(CGama),
                          __uuidof(CEquipo),
                          __uuidof(CDocumentoEquipo),
                          __uuidof(CBoletin),
                          __uuidof(CGlobalPreventivo),
                          __uuidof(SesionGlobal),
                          __uuidof(ListaCambios)};

template <class Interface> Counted<Interface> As(IUnknown* object) {
    Counted<Interface> made;
    object->QueryInterface(__uuidof(Interface), made.ReceiveAny());
    return made;
}

template <class Interface, class Object, class Getter> Counted<Interface> Get(const Object& object, Getter getter) {
    Counted<Interface> got;
    ExpectResult("a property is read", (object.get()->*getter)(got.Receive()), S_OK);
    return got;
}

/// The latest line of the trace that holds a text.
std::wstring Traced(const wchar_t* holding) {
    const auto trace = Get<_ListaCambios>(session, &_SesionGlobal::get_Traza);
    LONG total = 0;
    for (trace->get_Total(&total); total > 0; --total) {
        Text line;
        trace->Elemento(total, &line);
        if (line.Wide().find(holding) != std::wstring::npos) return line.Wide();
    }
    return L"";
}

bool Has(const std::wstring& text, const wchar_t* part) { return text.find(part) != std::wstring::npos; }

void ObjectsHaveOneIdentity() {
    const auto first = Get<_CBoletin>(facade, &_CGlobalPreventivo::get_Boletin);
    const auto second = Get<_CBoletin>(facade, &_CGlobalPreventivo::get_Boletin);
    Expect("one object a property", first.get() == second.get());
    Expect("every interface leads to one object",
           As<IUnknown>(first.get()).get() == As<IUnknown>(As<ISupportErrorInfo>(first.get()).get()).get());
    Expect("another facade has objects of its own",
           Get<_CBoletin>(Create<_CGlobalPreventivo>(__uuidof(CGlobalPreventivo)), &_CGlobalPreventivo::get_Boletin)
                   .get() != first.get());
    Counted<IPersist> nothing;
    ExpectResult("what it isn't, it doesn't say", first->QueryInterface(IID_IPersist, nothing.ReceiveAny()),
                 E_NOINTERFACE);
    Expect("only what raises events has connection points", !As<IConnectionPointContainer>(first.get()));
}

void FactoriesKeepTheServer() {
    const auto canUnload = reinterpret_cast<HRESULT(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"Zontara.dll"), "DllCanUnloadNow")));
    ExpectResult("objects keep the server", canUnload(), S_FALSE);
    session->Cerrar();
    session = {};
    facade = {};
    ExpectResult("nothing keeps it then", canUnload(), S_OK);

    Counted<IClassFactory> factory;
    CoGetClassObject(__uuidof(CBoletin), CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.ReceiveAny());
    ExpectResult("a factory keeps it", canUnload(), S_FALSE);
    factory->LockServer(TRUE);
    Counted<IUnknown> made;
    ExpectResult("it makes no part of another object",
                 factory->CreateInstance(factory.get(), IID_IUnknown, made.ReceiveAny()), CLASS_E_NOAGGREGATION);
    factory = {};
    ExpectResult("a lock keeps it", canUnload(), S_FALSE);
    CoGetClassObject(__uuidof(CBoletin), CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.ReceiveAny());
    factory->LockServer(FALSE);
    factory = {};
    ExpectResult("nothing keeps it at last", canUnload(), S_OK);
    ExpectResult(
        "a class that clients can't create has no factory",
        CoGetClassObject(__uuidof(Recordset), CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.ReceiveAny()),
        REGDB_E_CLASSNOTREG);

    auto other = Create<_SesionGlobal>(__uuidof(SesionGlobal));
    other->Abrir(Text(L":memory:"), VARIANT_TRUE, VARIANT_FALSE);
    other = {};
    ExpectResult("an open session keeps it", canUnload(), S_FALSE);
    Create<_SesionGlobal>(__uuidof(SesionGlobal))->Cerrar();
    ExpectResult("a closed one doesn't", canUnload(), S_OK);
}

/// A member as the type library describes it and as the object answers.
void CompareMember(const Counted<IDispatch>& object, const Counted<ITypeInfo>& description, UINT index) {
    FUNCDESC* function = nullptr;
    if (FAILED(description->GetFuncDesc(index, &function))) return;
    BSTR names[32] = {};
    UINT count = 0;
    description->GetNames(function->memid, names, 32, &count);
    // Numbers below 1 and from 0x60000000 belong to IUnknown and IDispatch.
    if (function->memid >= 1 && function->memid < 0x60000000) {
        DISPID numbers[32] = {};
        const UINT asked = function->invkind == INVOKE_FUNC ? count : 1;
        ExpectResult("every name is known", object->GetIDsOfNames(IID_NULL, names, asked, LOCALE_USER_DEFAULT, numbers),
                     S_OK);
        Expect("a member has its number", numbers[0] == function->memid);
        for (UINT i = 1; i < asked; ++i)
            Expect("an argument has its number", numbers[i] == static_cast<DISPID>(i - 1));
    }
    for (UINT i = 0; i < count; ++i)
        SysFreeString(names[i]);
    description->ReleaseFuncDesc(function);
}

void DescriptionsAgreeWithObjects() {
    for (const CLSID& classId : kClasses) {
        const auto object = Create<IDispatch>(classId);
        Counted<ITypeInfo> description;
        ExpectResult("every object describes itself", object->GetTypeInfo(0, 0, description.Receive()), S_OK);
        if (!description) return;
        TYPEATTR* attributes = nullptr;
        description->GetTypeAttr(&attributes);
        Counted<IUnknown> own;
        ExpectResult("it has the interface described", object->QueryInterface(attributes->guid, own.ReceiveAny()),
                     S_OK);
        ExpectResult("which gives rich errors",
                     As<ISupportErrorInfo>(object.get())->InterfaceSupportsErrorInfo(attributes->guid), S_OK);
        for (UINT i = 0; i < attributes->cFuncs; ++i)
            CompareMember(object, description, i);
        description->ReleaseTypeAttr(attributes);

        Counted<ITypeInfo> ofClass;
        ExpectResult("its class too", As<IProvideClassInfo2>(object.get())->GetClassInfo(ofClass.Receive()), S_OK);
        ofClass->GetTypeAttr(&attributes);
        Expect("under its identifier", attributes->guid == classId);
        ofClass->ReleaseTypeAttr(attributes);
    }
    GUID outgoing{};
    const auto calendar = Create<IProvideClassInfo2>(__uuidof(CImputacionPreventiva));
    ExpectResult("a source tells its events' interface", calendar->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &outgoing),
                 S_OK);
    Expect("which is this", outgoing == __uuidof(__CImputacionPreventiva));
    Counted<ITypeLib> library;
    ExpectResult("the type library is registered", LoadRegTypeLib(LIBID_Zontara, 84, 0, 1033, library.Receive()), S_OK);
}

void LateCallsAreChecked() {
    const auto groups = As<IDispatch>(Get<_CGrupoGama>(facade, &_CGlobalPreventivo::get_GrupoGama).get());
    const Text words(L"Sellos");
    Expect("an unknown name has no number", NumberOf(groups.get(), L"Nada") == DISPID_UNKNOWN);
    Expect("case doesn't matter", NumberOf(groups.get(), L"NUEVO") == NumberOf(groups.get(), L"Nuevo"));
    ExpectResult("a method is no property", Call(groups.get(), L"Nuevo", {}, DISPATCH_PROPERTYGET).result,
                 DISP_E_MEMBERNOTFOUND);
    ExpectResult("a missing argument is 449", Call(groups.get(), L"Nuevo", {Borrowed(words)}).number,
                 static_cast<HRESULT>(0x800A01C1));
    ExpectResult("one too many is 450",
                 Call(groups.get(), L"Nuevo", {Borrowed(words), Number(1), Missing(), Number(1)}).number,
                 static_cast<HRESULT>(0x800A01C2));
    ExpectResult("what isn't a number is 13", Call(groups.get(), L"Borrar", {Borrowed(words)}).number,
                 static_cast<HRESULT>(0x800A000D));
    ExpectResult("an optional argument may be missing",
                 Call(groups.get(), L"Nuevo", {Borrowed(words), Number(1), Missing()}).result, S_OK);

    // By name, in another order, with one left out.
    VARIANT named[] = {Number(7), Borrowed(words)};
    DISPID numbers[] = {1, 0};
    DISPPARAMS given{named, numbers, 2, 2};
    Variant key;
    ExpectResult(
        "arguments may be named",
        groups->Invoke(NumberOf(groups.get(), L"Nuevo"), IID_NULL, 0, DISPATCH_METHOD, &given, &key, nullptr, nullptr),
        S_OK);
    Expect("each finds its place", Has(Traced(L"Grupo_Gama "), L"'Sellos',7)"));
    numbers[0] = 9;
    ExpectResult("a name that there isn't is refused",
                 groups->Invoke(NumberOf(groups.get(), L"Nuevo"), IID_NULL, 0, DISPATCH_METHOD, &given, nullptr,
                                nullptr, nullptr),
                 DISP_E_UNKNOWNNAME);
}

/// Passes money by reference as some other type, which has to come back in that type.
void PassMoneyAs(VARTYPE type, const wchar_t* inStatement) {
    const auto materials = As<IDispatch>(Get<_CMaterialGama>(facade, &_CGlobalPreventivo::get_MaterialGama).get());
    Variant number(static_cast<LONG>(8));
    Variant held;
    ExpectResult("a number has that type", VariantChangeType(&held, &number, 0, type), S_OK);
    VARIANT reference{};
    reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
    reference.byref = type == VT_DECIMAL ? static_cast<void*>(&held.decVal) : static_cast<void*>(&held.llVal);
    const Text words(L"Junta");
    const Outcome outcome =
        Call(materials.get(), L"AgregarItem", {Number(1), Borrowed(words), reference, Number(2), Number(1)});
    ExpectResult("money goes in as another type", outcome.result, S_OK);
    Expect("with its value", Has(Traced(L"materiales_gama "), inStatement));
    Variant back;
    ExpectResult("and comes back in it", VariantChangeType(&back, &held, 0, VT_I4), S_OK);
    Expect("unharmed", held.vt == type && back.lVal == 8);
}

void ReferencesAreOfAnyType() {
    for (const VARTYPE type : {VT_UI1, VT_I1, VT_I2, VT_UI2, VT_I4, VT_UI4, VT_INT, VT_UINT, VT_I8, VT_UI8, VT_R4,
                               VT_R8, VT_CY, VT_DECIMAL, VT_BSTR}) {
        PassMoneyAs(type, L"'Junta',8,2,1,1)");
    }
    const auto readings = As<IDispatch>(Get<_CLecturaEquipo>(facade, &_CGlobalPreventivo::get_LecturaEquipo).get());
    VARIANT day{};
    day.vt = VT_DATE;
    day.date = 46082;
    // A chapter of "0" comes back as the empty text, in whatever the client points to.
    Variant inner(std::wstring_view(L"0"));
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &inner;
    ExpectResult("a reference to a VARIANT", Call(readings.get(), L"ObtenerLecturas", {day, day, reference}).result,
                 S_OK);
    Expect("comes back changed", inner.vt == VT_BSTR && SysStringLen(inner.bstrVal) == 0);
    Text text(L"0");
    reference.vt = VT_BYREF | VT_BSTR;
    reference.pbstrVal = &text;
    ExpectResult("a reference to a text", Call(readings.get(), L"ObtenerLecturas", {day, day, reference}).result, S_OK);
    Expect("comes back changed too", text.Wide().empty());
    LONG zero = 0;
    reference.vt = VT_BYREF | VT_I4;
    reference.plVal = &zero;
    ExpectResult("the empty text is no number", Call(readings.get(), L"ObtenerLecturas", {day, day, reference}).number,
                 static_cast<HRESULT>(0x800A000D));
}

/// Another's code calls through the vtable: the type library's own invocation, which lays out registers and stack
/// itself.
void RegistersHoldWhatTheySay() {
    const auto meters = Get<_CImputacionSistematica>(facade, &_CGlobalPreventivo::get_ImputacionSistematica);
    Counted<ITypeInfo> description;
    meters->GetTypeInfo(0, 0, description.Receive());
    const Text key(L"P-1");
    LONG unit = 3;
    VARIANT arguments[5]{};
    arguments[0].vt = VT_R4;
    arguments[0].fltVal = 0.25F;
    arguments[1].vt = VT_R4;
    arguments[1].fltVal = 12.5F;
    arguments[2].vt = VT_DATE;
    arguments[2].date = 46086;
    arguments[3].vt = VT_BYREF | VT_I4;
    arguments[3].plVal = &unit;
    arguments[4] = Borrowed(key);
    DISPPARAMS given{arguments, nullptr, 5, 0};
    ExpectResult("a date in the third register, floats on the stack",
                 description->Invoke(meters.get(), NumberOf(meters.get(), L"ActualizarAcumulado"), DISPATCH_METHOD,
                                     &given, nullptr, nullptr, nullptr),
                 S_OK);
    Expect("arrive", Has(Traced(L"sql"), L"Acumulado_Lectura +12.5, Ultima_Lectura = 0.25 Where id_activo ='P-1'"));

    const auto log = Get<_COrdenGenerada>(facade, &_CGlobalPreventivo::get_OrdenGenerada);
    Counted<_Recordset> rows;
    Text sign(L">");
    ExpectResult("a date in the second register", log->SeleccionarPorFecha(5, 46086, &sign, rows.Receive()), S_OK);
    Expect("arrives", Has(Traced(L"sql"), L"2026-03-05"));
    auto* stray = reinterpret_cast<_Recordset*>(&rows);
    Text noSign(L"no sign");
    ExpectResult("a refused statement fails", log->SeleccionarPorFecha(5, 46086, &noSign, &stray),
                 static_cast<HRESULT>(0x80040001));
    Expect("and leaves no result", stray == nullptr);
    ExpectResult("a result goes nowhere", log->SeleccionarPorFecha(5, 46086, &sign, nullptr), E_POINTER);
}

/// The thread's error object holds what a late-bound caller got as an exception.
void ErrorObjectTells(const Outcome& expected) {
    Counted<IErrorInfo> error;
    ExpectResult("there is an error object", GetErrorInfo(0, error.Receive()), S_OK);
    if (!error) return;
    Text source;
    Text description;
    Text helpFile;
    DWORD helpContext = 0;
    GUID raisedBy{};
    error->GetSource(&source);
    error->GetDescription(&description);
    error->GetHelpFile(&helpFile);
    error->GetHelpContext(&helpContext);
    error->GetGUID(&raisedBy);
    Expect("with the source", source.Wide() == expected.source);
    Expect("the report, up to its time", description.Wide().substr(0, description.Wide().find(L"Time=")) ==
                                             expected.description.substr(0, expected.description.find(L"Time=")));
    Expect("the help", helpFile.Wide() == expected.helpFile && helpContext == expected.helpContext);
    Expect("and the interface that was called", raisedBy == __uuidof(_CImputacionPreventiva));
}

void SinksMayFail() {
    const auto calendar = Get<_CImputacionPreventiva>(facade, &_CGlobalPreventivo::get_ImputacionPreventiva);
    Sink sink(IID_IDispatch);
    sink.Connect(calendar.get(), __uuidof(__CImputacionPreventiva));
    sink.answer = static_cast<HRESULT>(0x800A000D);
    sink.raises = true;
    const Text words(L"Breve");
    VARIANT day{};
    day.vt = VT_DATE;
    day.date = 46086;
    const auto late = As<IDispatch>(calendar.get());
    const Outcome refused = Call(late.get(), L"LanzarPreventivo", {day, Number(7), Borrowed(words)});
    ExpectResult("a sink's error ends the launch", refused.number, static_cast<HRESULT>(0x800A000D));
    Expect("with its words", Has(refused.description, L"Not so fast") && Has(refused.description, L"Source: Sink"));
    Expect("the report's source", refused.source == L"HuntERR.ErrorIn");
    Expect("and the sink's help", refused.helpFile == L"fendral.chm" && refused.helpContext == 42);
    LONG launched = 0;
    ExpectResult("through the vtable too", calendar->LanzarPreventivo(day.date, 7, words, nullptr, 0, &launched),
                 static_cast<HRESULT>(0x800A000D));
    ErrorObjectTells(refused);
    sink.answer = DISP_E_MEMBERNOTFOUND;
    sink.told.clear();
    sink.raises = false;
    ExpectResult("a sink without a handler doesn't",
                 Call(late.get(), L"LanzarPreventivo", {day, Number(7), Borrowed(words)}).result, S_OK);
    Expect("but hears", !sink.told.empty());

    Counted<IEnumConnectionPoints> points;
    As<IConnectionPointContainer>(calendar.get())->EnumConnectionPoints(points.Receive());
    Counted<IConnectionPoint> point;
    ExpectResult("there is one connection point", points->Next(1, point.Receive(), nullptr), S_OK);
    Counted<IConnectionPoint> another;
    ExpectResult("and no other", points->Next(1, another.Receive(), nullptr), S_FALSE);
    Counted<IEnumConnections> connections;
    point->EnumConnections(connections.Receive());
    CONNECTDATA connection{};
    ExpectResult("with one sink", connections->Next(1, &connection, nullptr), S_OK);
    Expect("which is this", connection.pUnk == &sink);
    sink.Disconnect();
}

void SessionsAreFilesToo() {
    session->Cerrar();
    Text sql;
    Counted<_Recordset> rows;
    ExpectResult("without a session there are no rows", session->Consultar(sql, rows.Receive()),
                 static_cast<HRESULT>(0x800A005B));
    const Text path(L"C:\\plant_\u00f1and\u00fa.db");
    DeleteFileW(path);
    ExpectResult("a missing file is refused", session->Abrir(path, VARIANT_FALSE, VARIANT_FALSE),
                 static_cast<HRESULT>(0x8004000E));
    ExpectResult("or made", session->Abrir(path, VARIANT_TRUE, VARIANT_FALSE), S_OK);
    Expect("under its name", GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES);
    ExpectResult("a second session is refused", session->Abrir(path, VARIANT_TRUE, VARIANT_FALSE),
                 static_cast<HRESULT>(0x800A0005));
    LONG key = 0;
    Get<_CUnidadLectura>(facade, &_CGlobalPreventivo::get_UnidadLectura)->Nuevo(Text(L"h"), nullptr, &key);
    session->Cerrar();
    ExpectResult("it opens again", session->Abrir(path, VARIANT_FALSE, VARIANT_FALSE), S_OK);
    ExpectResult("with what was written",
                 Get<_CUnidadLectura>(facade, &_CGlobalPreventivo::get_UnidadLectura)->Buscar(key, rows.Receive()),
                 S_OK);
    LONG total = 0;
    rows->get_TotalRegistros(&total);
    Expect("which is one row", total == 1);
    rows = {};
}

void Run() {
    session = Create<_SesionGlobal>(__uuidof(SesionGlobal));
    session->Abrir(Text(L":memory:"), VARIANT_TRUE, VARIANT_TRUE);
    facade = Create<_CGlobalPreventivo>(__uuidof(CGlobalPreventivo));
    session->Ejecutar(Text(L"INSERT INTO Activo (ID_Activo, SC_Unidad_Lectura) VALUES ('P-1', 3)"));
    session->Ejecutar(Text(L"INSERT INTO Gama (SC_Gama, Descripcion, Numero_Gama) VALUES (1, 'Engrase', 1)"));
    LONG key = 0;
    Get<_CImputacionPreventiva>(facade, &_CGlobalPreventivo::get_ImputacionPreventiva)
        ->Nuevo(Text(L"P-1"), 1, Text(L"2026-03-01"), 0, 7, Text(L"Diaria"), 1, 0, 0, Text(L"2026-03-01"),
                Text(L"2026-02-26"), Text(), Text(), 9, 0, Text(), VARIANT_TRUE, Text(), &key);
    ObjectsHaveOneIdentity();
    DescriptionsAgreeWithObjects();
    LateCallsAreChecked();
    ReferencesAreOfAnyType();
    RegistersHoldWhatTheySay();
    SinksMayFail();
    SessionsAreFilesToo();
    FactoriesKeepTheServer();
}

}  // namespace

int main() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    Run();
    CoUninitialize();
    return Failures() == 0 ? 0 : 1;
}
