#include "com/factory.h"

#include "com/classes.h"
#include "com/counted.h"
#include "com/failure.h"
#include "com/module.h"
#include "com/wrapper.h"

#include <atomic>

namespace com {

namespace {

class Factory final : public IClassFactory {
public:
    explicit Factory(const LibraryClass& of) : class_(of) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** made) override {
        if (made == nullptr) return E_POINTER;
        *made = nullptr;
        if (id != IID_IUnknown && id != IID_IClassFactory) return E_NOINTERFACE;
        *made = static_cast<IClassFactory*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** made) override {
        if (made == nullptr) return E_POINTER;
        *made = nullptr;
        if (outer != nullptr) return CLASS_E_NOAGGREGATION;
        return Guarded(IID_IClassFactory, [&] {
            Counted<IDispatch> object;
            *object.Receive() = Wrapped(class_.create());
            return object->QueryInterface(id, made);
        });
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        com::LockServer(lock != FALSE);
        return S_OK;
    }

private:
    ~Factory() = default;

    KeepsLoaded loaded_;
    const LibraryClass& class_;
    std::atomic<ULONG> references_{1};
};

}  // namespace

HRESULT MakeFactory(REFCLSID classId, REFIID id, void** made) {
    if (made == nullptr) return E_POINTER;
    *made = nullptr;
    return Guarded(IID_IClassFactory, [&]() -> HRESULT {
        const LibraryClass* of = CreatableClass(FromGuid(classId));
        if (of == nullptr) return CLASS_E_CLASSNOTAVAILABLE;
        Counted<IClassFactory> factory;
        *factory.Receive() = new Factory(*of);
        return factory->QueryInterface(id, made);
    });
}

}  // namespace com
