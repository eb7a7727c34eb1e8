#pragma once

#include <utility>

namespace com {

/// Holds one reference on a COM interface, or none.
template <class T> class Counted {
public:
    Counted() = default;
    /// Takes a further reference.
    explicit Counted(T* held) : held_(held) {
        if (held_ != nullptr) held_->AddRef();
    }
    Counted(const Counted& other) : Counted(other.held_) {}
    Counted(Counted&& other) noexcept : held_(std::exchange(other.held_, nullptr)) {}
    Counted& operator=(Counted other) noexcept {
        std::swap(held_, other.held_);
        return *this;
    }
    ~Counted() {
        if (held_ != nullptr) held_->Release();
    }

    T* get() const { return held_; }
    T* operator->() const { return held_; }
    explicit operator bool() const { return held_ != nullptr; }

    /// Where a call puts an interface with its reference. What was held goes.
    T** Receive() {
        *this = Counted();
        return &held_;
    }
    void** ReceiveAny() { return reinterpret_cast<void**>(Receive()); }
    /// The interface with its reference, for the caller to release.
    T* Detach() { return std::exchange(held_, nullptr); }

private:
    T* held_ = nullptr;
};

}  // namespace com
