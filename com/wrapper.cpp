#include "com/wrapper.h"

#include "com/classes.h"
#include "com/enumerator.h"
#include "com/events.h"
#include "com/failure.h"
#include "com/late.h"
#include "com/module.h"
#include "com/vtable.h"
#include "com/windows_api.h"
#include "frame/raised_error.h"

#include <atomic>
#include <memory>
#include <unordered_map>

namespace com {

using Zontara::Object;
using Zontara::Ref;

namespace {

/// Known to the server alone: tells its own objects from foreign ones.
const IID kInside{0x5B0E4D10, 0x7C1A, 0x4F2B, {0x9E, 0x35, 0x84, 0xA0, 0xC1, 0xD2, 0x05, 0x00}};

struct Inside : IUnknown {
    virtual const Ref<Object>& TheObject() const = 0;
};

IConnectionPoint* HandPoint(const Counted<IConnectionPoint>& point) {
    point->AddRef();
    return point.get();
}

/// The COM object of one object: late binding, the dual interface, the description of its class, rich errors, and the
/// outgoing interface of a class that has one. All of it comes from the member table.
class Wrapper final : public IDispatch,
                      public IProvideClassInfo2,
                      public ISupportErrorInfo,
                      public IConnectionPointContainer,
                      public Inside {
public:
    explicit Wrapper(const Ref<Object>& object);
    ~Wrapper();

    IUnknown* OwnInterface() { return reinterpret_cast<IUnknown*>(&dual_); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** made) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT which, LCID locale, ITypeInfo** made) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* numbers) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID number, REFIID id, LCID locale, WORD flags, DISPPARAMS* given,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrong) override;

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** made) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override;
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override;
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

    const Ref<Object>& TheObject() const override { return object_; }

private:
    bool IsOwnInterface(REFIID id) const { return class_ != nullptr && id == dual_.interfaceId; }
    /// The interface of an identifier, without a reference; none if there is none.
    void* Face(REFIID id);

    KeepsLoaded loaded_;
    Ref<Object> object_;
    const LibraryClass* class_;
    Dual dual_;
    std::unique_ptr<Events> events_;
    std::atomic<ULONG> references_{0};
};

/// The COM objects that clients hold, by the objects behind them. Read and changed behind the door.
std::unordered_map<Object*, Wrapper*>& HeldByClients() {
    static std::unordered_map<Object*, Wrapper*> held;
    return held;
}

Wrapper::Wrapper(const Ref<Object>& object) : object_(object), class_(ClassOf(object->Table())) {
    dual_.object = object.get();
    dual_.owner = this;
    dual_.vtable = VtableOf(*object->Table());
    dual_.interfaceId = class_ != nullptr ? ToGuid(class_->interfaceId) : IID_IDispatch;
    auto* source = dynamic_cast<Zontara::EventSource*>(object.get());
    if (class_ != nullptr && source != nullptr) {
        events_ = std::make_unique<Events>(static_cast<IDispatch&>(*this), *this, *object->Table(), *source,
                                           ToGuid(class_->eventsId));
    }
    HeldByClients().emplace(object.get(), this);
}

Wrapper::~Wrapper() { HeldByClients().erase(object_.get()); }

void* Wrapper::Face(REFIID id) {
    if (id == IID_IUnknown || id == IID_IDispatch) return static_cast<IDispatch*>(this);
    if (IsOwnInterface(id)) return &dual_;
    if (id == IID_ISupportErrorInfo) return static_cast<ISupportErrorInfo*>(this);
    if (id == kInside) return static_cast<Inside*>(this);
    if (class_ != nullptr && (id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2)) {
        return static_cast<IProvideClassInfo2*>(this);
    }
    if (events_ && id == IID_IConnectionPointContainer) return static_cast<IConnectionPointContainer*>(this);
    return nullptr;
}

HRESULT Wrapper::QueryInterface(REFIID id, void** made) {
    if (made == nullptr) return E_POINTER;
    *made = Face(id);
    if (*made == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG Wrapper::Release() {
    const std::lock_guard lock(TheDoor());
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT Wrapper::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_POINTER;
    *count = class_ != nullptr ? 1 : 0;
    return S_OK;
}

HRESULT Wrapper::GetTypeInfo(UINT which, LCID /*locale*/, ITypeInfo** made) {
    if (made == nullptr) return E_POINTER;
    *made = nullptr;
    if (which != 0 || class_ == nullptr) return DISP_E_BADINDEX;
    return Guarded(IID_IDispatch, [&] { return DescribeInterface(*class_, made); });
}

HRESULT Wrapper::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID /*locale*/, DISPID* numbers) {
    if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (names == nullptr || numbers == nullptr) return E_POINTER;
    return Guarded(IID_IDispatch, [&] { return NumbersOf(*object_->Table(), names, count, numbers); });
}

HRESULT Wrapper::Invoke(DISPID number, REFIID id, LCID /*locale*/, WORD flags, DISPPARAMS* given, VARIANT* result,
                        EXCEPINFO* exception, UINT* /*wrong*/) {
    if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (given == nullptr) return E_POINTER;
    if (result != nullptr) VariantInit(result);
    return Guarded(IID_IDispatch, [&] {
        try {
            return CallLate(*object_, number, flags, *given, result);
        } catch (...) {
            return FillException(FailureInFlight(), exception);
        }
    });
}

HRESULT Wrapper::GetClassInfo(ITypeInfo** made) {
    if (made == nullptr) return E_POINTER;
    *made = nullptr;
    return Guarded(IID_IProvideClassInfo, [&] { return DescribeClass(*class_, made); });
}

HRESULT Wrapper::GetGUID(DWORD kind, GUID* id) {
    if (id == nullptr) return E_POINTER;
    *id = GUID_NULL;
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID || !events_) return E_INVALIDARG;
    *id = events_->Id();
    return S_OK;
}

HRESULT Wrapper::InterfaceSupportsErrorInfo(REFIID id) {
    return id == IID_IDispatch || IsOwnInterface(id) ? S_OK : S_FALSE;
}

HRESULT Wrapper::EnumConnectionPoints(IEnumConnectionPoints** points) {
    if (points == nullptr) return E_POINTER;
    using Point = Counted<IConnectionPoint>;
    return Guarded(IID_IConnectionPointContainer, [&]() -> HRESULT {
        *points = new Enumerator<IEnumConnectionPoints, Point, IConnectionPoint*, &HandPoint>({Point(events_.get())});
        return S_OK;
    });
}

HRESULT Wrapper::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    if (point == nullptr) return E_POINTER;
    *point = nullptr;
    if (id != events_->Id()) return CONNECT_E_NOCONNECTION;
    *point = events_.get();
    AddRef();
    return S_OK;
}

/// The COM object of an object, made now if nobody holds one.
Wrapper& WrapperOf(const Ref<Object>& object) {
    const auto known = HeldByClients().find(object.get());
    if (known != HeldByClients().end()) return *known->second;
    if (object->Table() == nullptr) Zontara::Raise(Zontara::RunTimeError::NoSuchMember);
    return *new Wrapper(object);
}

}  // namespace

IDispatch* Wrapped(const Ref<Object>& object) {
    if (!object) return nullptr;
    Wrapper& wrapper = WrapperOf(object);
    wrapper.AddRef();
    return &wrapper;
}

IUnknown* WrappedAsItsOwn(const Ref<Object>& object) {
    if (!object) return nullptr;
    Wrapper& wrapper = WrapperOf(object);
    wrapper.AddRef();
    return wrapper.OwnInterface();
}

Ref<Object> ObjectBehind(IUnknown* given) {
    Counted<Inside> inside;
    if (FAILED(given->QueryInterface(kInside, inside.ReceiveAny()))) return nullptr;
    return inside->TheObject();
}

}  // namespace com
