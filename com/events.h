#pragma once

#include "com/counted.h"
#include "com/module.h"
#include "com/windows_api.h"
#include "frame/event_source.h"
#include "frame/member_table.h"

#include <map>
#include <string_view>

namespace com {

/// The one connection point of an object with an outgoing interface. Sinks are told late-bound, in the order in which
/// they came, with the event's argument by reference as a VARIANT. An exception that a sink raises travels on to the
/// operation that raised the event; a sink that doesn't know the event, or is gone, counts for nothing.
class Events final : public IConnectionPoint {
public:
    /// Part of the COM object `owner`, whose references it shares. `id` is the outgoing interface's.
    Events(IUnknown& owner, IConnectionPointContainer& container, const Zontara::ClassTable& table,
           Zontara::EventSource& source, const IID& id);
    Events(const Events&) = delete;
    Events& operator=(const Events&) = delete;
    ~Events();

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** made) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return owner_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); }
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

    const IID& Id() const { return id_; }

private:
    void Tell(std::string_view event, Zontara::Value& argument);

    IUnknown& owner_;
    IConnectionPointContainer& container_;
    const Zontara::ClassTable& table_;
    Zontara::EventSource& source_;
    IID id_;
    std::map<DWORD, Counted<IDispatch>> sinks_;
    DWORD lastCookie_ = 0;
    std::int32_t subscription_ = 0;
};

}  // namespace com
