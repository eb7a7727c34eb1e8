#include "com/events.h"

#include "com/enumerator.h"
#include "com/failure.h"
#include "com/text.h"
#include "com/variant.h"
#include "com/windows_api.h"

#include <algorithm>
#include <utility>

namespace com {

namespace {

/// The number of an event in the outgoing interface: its place in the table, from 1.
DISPID NumberOfEvent(const Zontara::ClassTable& table, std::string_view event) {
    const auto found = std::find_if(table.events.begin(), table.events.end(),
                                    [event](const Zontara::Event& each) { return each.name == event; });
    return static_cast<DISPID>(found - table.events.begin()) + 1;
}

std::string TakeText(BSTR text) {
    std::string taken = FromBstr(text);
    SysFreeString(text);
    return taken;
}

[[noreturn]] void RaiseFromSink(EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
    const HRESULT result = exception.scode != 0 ? exception.scode : ResultOf(exception.wCode);
    Zontara::ErrorRecord error;
    error.number = NumberOf(result);
    error.source = TakeText(exception.bstrSource);
    error.description = TakeText(exception.bstrDescription);
    error.helpFile = TakeText(exception.bstrHelpFile);
    error.helpContext = static_cast<std::int32_t>(exception.dwHelpContext);
    throw Zontara::RaisedError(std::move(error));
}

void TellSink(IDispatch& sink, DISPID number, VARIANT& argument) {
    VARIANT reference;
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &argument;
    DISPPARAMS given{&reference, nullptr, 1, 0};
    EXCEPINFO exception{};
    UINT wrong = 0;
    const HRESULT result =
        sink.Invoke(number, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &given, nullptr, &exception, &wrong);
    if (result == DISP_E_EXCEPTION) RaiseFromSink(exception);
}

CONNECTDATA HandConnection(const std::pair<DWORD, Counted<IDispatch>>& connection) {
    connection.second->AddRef();
    return {connection.second.get(), connection.first};
}

}  // namespace

Events::Events(IUnknown& owner, IConnectionPointContainer& container, const Zontara::ClassTable& table,
               Zontara::EventSource& source, const IID& id)
    : owner_(owner), container_(container), table_(table), source_(source), id_(id) {
    subscription_ =
        source_.Subscribe([this](std::string_view event, Zontara::Value& argument) { Tell(event, argument); });
}

Events::~Events() { source_.Unsubscribe(subscription_); }

void Events::Tell(std::string_view event, Zontara::Value& argument) {
    const auto listening = sinks_;
    for (const auto& [cookie, sink] : listening) {
        OwnVariant told;
        ToVariant(argument, told.held);
        TellSink(*sink.get(), NumberOfEvent(table_, event), told.held);
        argument = ToValue(told.held);
    }
}

HRESULT Events::QueryInterface(REFIID id, void** made) {
    if (made == nullptr) return E_POINTER;
    *made = nullptr;
    if (id != IID_IUnknown && id != IID_IConnectionPoint) return E_NOINTERFACE;
    *made = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
}

HRESULT Events::GetConnectionInterface(IID* id) {
    if (id == nullptr) return E_POINTER;
    *id = id_;
    return S_OK;
}

HRESULT Events::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr) return E_POINTER;
    *container = &container_;
    container_.AddRef();
    return S_OK;
}

HRESULT Events::Advise(IUnknown* sink, DWORD* cookie) {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    *cookie = 0;
    return Guarded(IID_IConnectionPoint, [&]() -> HRESULT {
        Counted<IDispatch> told;
        if (FAILED(sink->QueryInterface(id_, told.ReceiveAny())) &&
            FAILED(sink->QueryInterface(IID_IDispatch, told.ReceiveAny()))) {
            return CONNECT_E_CANNOTCONNECT;
        }
        sinks_.emplace(++lastCookie_, std::move(told));
        *cookie = lastCookie_;
        return S_OK;
    });
}

HRESULT Events::Unadvise(DWORD cookie) {
    return Guarded(IID_IConnectionPoint,
                   [&]() -> HRESULT { return sinks_.erase(cookie) != 0 ? S_OK : CONNECT_E_NOCONNECTION; });
}

HRESULT Events::EnumConnections(IEnumConnections** connections) {
    if (connections == nullptr) return E_POINTER;
    using Connection = std::pair<DWORD, Counted<IDispatch>>;
    return Guarded(IID_IConnectionPoint, [&]() -> HRESULT {
        *connections = new Enumerator<IEnumConnections, Connection, CONNECTDATA, &HandConnection>(
            std::vector<Connection>(sinks_.begin(), sinks_.end()));
        return S_OK;
    });
}

}  // namespace com
