#pragma once

#include "com/counted.h"
#include "com/tests/console.h"
#include "com/windows_api.h"

#include <utility>
#include <vector>

namespace client {

/// Hears of events: their numbers and their arguments. It answers to `IDispatch` and to one interface more, and lives
/// as long as the client that made it.
class Sink final : public IDispatch {
public:
    explicit Sink(REFIID also) : also_(also) {}

    void Connect(IUnknown* source, REFIID outgoing) {
        com::Counted<IConnectionPointContainer> container;
        ExpectResult("has events", source->QueryInterface(IID_IConnectionPointContainer, container.ReceiveAny()), S_OK);
        ExpectResult("has this interface's", container->FindConnectionPoint(outgoing, point_.Receive()), S_OK);
        ExpectResult("takes a sink", point_->Advise(this, &cookie_), S_OK);
    }
    void Disconnect() {
        ExpectResult("lets a sink go", point_->Unadvise(cookie_), S_OK);
        ExpectResult("lets it go once", point_->Unadvise(cookie_), CONNECT_E_NOCONNECTION);
        point_ = {};
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** made) override {
        const bool known = id == IID_IUnknown || id == IID_IDispatch || id == also_;
        *made = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID number, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*,
                                     EXCEPINFO* exception, UINT*) override {
        const VARIANT& argument = given->rgvarg[0];
        Expect("an event has one argument, by reference", given->cArgs == 1 && argument.vt == (VT_BYREF | VT_VARIANT));
        told.emplace_back(number, argument.pvarVal->lVal);
        if (!raises) return answer;
        exception->scode = answer;
        exception->bstrSource = SysAllocString(L"Sink");
        exception->bstrDescription = SysAllocString(L"Not so fast");
        exception->bstrHelpFile = SysAllocString(L"fendral.chm");
        exception->dwHelpContext = 42;
        return DISP_E_EXCEPTION;
    }

    std::vector<std::pair<DISPID, LONG>> told;
    /// What it answers, plainly or by raising an exception of that number.
    HRESULT answer = S_OK;
    bool raises = false;

private:
    IID also_;
    com::Counted<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

}  // namespace client
