#pragma once

#include "com/counted.h"
#include "com/module.h"
#include "com/windows_api.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace com {

/// An enumerator over interfaces or connections as they stood when it was made. `Interface` is the enumerator's, `Held`
/// one element with its references, `Given` the element as a client gets it; `Hand` makes the one from the other.
template <class Interface, class Held, class Given, Given (*Hand)(const Held&)>
class Enumerator final : public Interface {
public:
    explicit Enumerator(std::vector<Held> elements, std::size_t next = 0)
        : elements_(std::move(elements)), next_(next) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** made) override {
        if (made == nullptr) return E_POINTER;
        *made = nullptr;
        if (id != IID_IUnknown && id != __uuidof(Interface)) return E_NOINTERFACE;
        *made = static_cast<Interface*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE Next(ULONG count, Given* given, ULONG* fetched) override {
        if (given == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
        ULONG done = 0;
        for (; done < count && next_ < elements_.size(); ++done)
            given[done] = Hand(elements_[next_++]);
        if (fetched != nullptr) *fetched = done;
        return done == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const std::size_t left = elements_.size() - next_;
        next_ += count < left ? count : left;
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        next_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(Interface** made) override {
        if (made == nullptr) return E_POINTER;
        *made = new Enumerator(elements_, next_);
        return S_OK;
    }

private:
    ~Enumerator() = default;

    KeepsLoaded loaded_;
    std::vector<Held> elements_;
    std::size_t next_;
    ULONG references_ = 1;
};

}  // namespace com
