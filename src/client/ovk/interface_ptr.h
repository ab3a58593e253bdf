// The smart pointer through which every consumer holds an object of the model, and the query
// for further interfaces by run-time type.
//
// Ownership rules, which differ on purpose between construction and assignment:
//  - construction from a raw pointer adopts the reference that the creator holds (it takes one
//    and gives one back), so `interface_ptr<ISlot> slot(signal.ConnectX(f))` leaves the count
//    as it was and the pointer its owner;
//  - assignment from a raw pointer takes a new reference first and then releases the old
//    object, so assigning an object to the pointer that holds it is safe.
// An empty interface_ptr<IObject> answers calls through its embedded NullObject; for every
// other interface the access operator gives the held pointer and callers test for empty first.
#pragma once

#include "client/ovk/interface.h"
#include "client/ovk/null_object.h"

#include <boost/intrusive_ptr.hpp>

#include <type_traits>

namespace ovk {

template <typename T>
class interface_ptr {
public:
    interface_ptr() = default;
    explicit interface_ptr(T* object) : m_object(object) {
        if (object) object->Release();
    }
    interface_ptr(const interface_ptr& other) : m_object(other.m_object) {}
    interface_ptr(interface_ptr&& other) noexcept : m_object(std::move(other.m_object)) {}
    /// Widening from a pointer to a derived interface: one more reference.
    template <typename U>
    requires(std::is_convertible_v<U*, T*> && !std::is_same_v<U, T>)
        interface_ptr(const interface_ptr<U>& other)
        : m_object(other.get()) {}
    virtual ~interface_ptr() = default;

    interface_ptr& operator=(const interface_ptr& other) {
        m_object = other.m_object;
        return *this;
    }
    interface_ptr& operator=(interface_ptr&& other) noexcept {
        m_object = std::move(other.m_object);
        return *this;
    }
    interface_ptr& operator=(T* object) {
        m_object = object;
        return *this;
    }

    /// The held object; for interface_ptr<IObject> the null object when empty.
    T* operator->() const {
        if constexpr (std::is_same_v<T, IObject>) {
            if (!m_object) return &m_null;
        }
        return m_object.get();
    }
    /// The held object or null, never the null object.
    T* get() const { return m_object.get(); }
    explicit operator bool() const { return static_cast<bool>(m_object); }
    void reset() { m_object.reset(); }

    template <typename U>
    bool operator==(const interface_ptr<U>& other) const {
        return get() == other.get();
    }

private:
    boost::intrusive_ptr<T> m_object;
    mutable NullObject m_null;
};

/// Asks `object` for the interface T. Empty when the object is null or has no such service;
/// else the result holds one new reference.
template <typename T>
interface_ptr<T> interface_cast(IInterface* object) {
    T* wanted = object ? dynamic_cast<T*>(object) : nullptr;
    if (!wanted) return interface_ptr<T>();
    wanted->AddRef();
    return interface_ptr<T>(wanted);
}

template <typename T, typename U>
interface_ptr<T> interface_cast(const interface_ptr<U>& object) {
    return interface_cast<T>(static_cast<IInterface*>(object.get()));
}

}  // namespace ovk
