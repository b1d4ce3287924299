#pragma once
// One move-only owner for every kind of handle the program holds (WinINet,
// registry keys, kernel objects, GDI objects, icons). Each kind differs only in
// its "no handle" value and in how it is released, so those two facts live in a
// small Traits struct and everything else is written once. It is never
// copyable: a copied owner would release the same handle twice.
//
// Traits must provide:
//   using Handle = ...;                 // the raw handle type
//   static Handle invalid() noexcept;   // the value that owns nothing
//   static void close(Handle) noexcept; // releases a valid handle
#include <utility>

template <class Traits>
class UniqueHandle {
  public:
    using Handle = typename Traits::Handle;

    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Handle handle) noexcept : handle_(handle) {}
    ~UniqueHandle() { reset(); }

    UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) reset(other.release());
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;

    Handle get() const noexcept { return handle_; }
    explicit operator bool() const noexcept { return handle_ != Traits::invalid(); }

    // Gives up ownership without releasing.
    Handle release() noexcept { return std::exchange(handle_, Traits::invalid()); }

    // Releases what is owned now, then owns handle.
    void reset(Handle handle = Traits::invalid()) noexcept {
        Handle old = std::exchange(handle_, handle);
        if (old != Traits::invalid()) Traits::close(old);
    }

    // For APIs that hand a new handle back through an out-parameter
    // (RegOpenKeyExA and the like): releases what is owned and lends the slot.
    Handle* put() noexcept {
        reset();
        return &handle_;
    }

  private:
    Handle handle_ = Traits::invalid();
};
