// Reference counting: the root of every counted interface, the base that implements it, and the pointer that keeps it.
#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

namespace connectdialog {

/// The root of the counted interfaces.
///
/// Owns: whoever was given a reference releases it. A function that gives out a counted object gives the caller one
/// reference of its own, unless its comment says otherwise.
class IUnknownBase {
  public:
    /// What QueryInterface answers: interfaces are reached by dynamic cast, never by this call.
    static constexpr std::uint32_t kNoInterface = 0x80004002;

    /// Sets `*out` to null and gives kNoInterface. `out` may be null.
    virtual std::uint32_t QueryInterface(const void* interfaceId, void** out) = 0;

    /// Adds a reference, atomically; gives the new count.
    virtual std::int32_t AddRef() = 0;

    /// Drops a reference, atomically; gives the new count. At 0 the object is destroyed.
    virtual std::int32_t Release() = 0;

    /// Ends the object and frees its storage, whatever its count is; Release calls it at 0.
    virtual void Destroy() { delete this; }

  protected:
    virtual ~IUnknownBase() = default;
};

/// Implements the counting for an interface derived from IUnknownBase. The count starts at 1, for the creator.
template <class Interface>
class VUnknown : public Interface {
  public:
    VUnknown() = default;
    /// A copy is an object of its own: its count starts at 1.
    VUnknown(const VUnknown& other) : Interface(other) {}
    VUnknown& operator=(const VUnknown&) = delete;

    std::uint32_t QueryInterface(const void* /*interfaceId*/, void** out) override {
        if (out != nullptr) *out = nullptr;
        return IUnknownBase::kNoInterface;
    }
    std::int32_t AddRef() override { return references.fetch_add(1, std::memory_order_relaxed) + 1; }
    std::int32_t Release() override {
        const std::int32_t left = references.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) this->Destroy();
        return left;
    }

  protected:
    /// Pure, so that no object is a mere VUnknown: the compiler then expects none in `delete this` either.
    ~VUnknown() override = 0;

  private:
    std::atomic<std::int32_t> references{1};
};

template <class Interface>
VUnknown<Interface>::~VUnknown() = default;

/// Keeps one reference on a counted object, or none.
template <class T>
class VRef {
  public:
    VRef() = default;
    VRef(std::nullptr_t) {}  // NOLINT(google-explicit-constructor): null is a natural value of a reference
    VRef(const VRef& other) : object(other.object) {
        if (object != nullptr) object->AddRef();
    }
    VRef(VRef&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    VRef& operator=(VRef other) noexcept {
        std::swap(object, other.object);
        return *this;
    }
    ~VRef() {
        if (object != nullptr) object->Release();
    }

    /// Takes over a reference that the caller holds. `object` may be null.
    static VRef Adopt(T* object) {
        VRef result;
        result.object = object;
        return result;
    }
    /// Adds a reference of its own. `object` may be null.
    static VRef Share(T* object) {
        if (object != nullptr) object->AddRef();
        return Adopt(object);
    }

    /// Gives the reference to the caller, who must release it; holds null after that.
    [[nodiscard]] T* Detach() { return std::exchange(object, nullptr); }
    T* Get() const { return object; }
    T* operator->() const { return object; }
    T& operator*() const { return *object; }
    explicit operator bool() const { return object != nullptr; }

  private:
    T* object = nullptr;
};

}  // namespace connectdialog
