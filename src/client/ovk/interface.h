// The root interfaces of the object model. Every interface derives virtually from IInterface,
// so one object can expose many interfaces over one reference count; interfaces hold no data.
// Further interfaces are asked for by run-time type query (interface_cast in interface_ptr.h).
#pragma once

#include <boost/shared_ptr.hpp>

namespace ovk {

class IInterface {
public:
    /// Takes one intrusive reference.
    virtual void AddRef() = 0;
    /// Gives one back; the last one may destroy the object.
    virtual void Release() = 0;

protected:
    ~IInterface() = default;
};

/// The root that a holder of an object of unknown kind keeps.
class IObject : public virtual IInterface {
public:
    virtual ~IObject() = default;
    /// Fills `out` with a shared pointer to the object; empty while the object is being
    /// destroyed. Never throws.
    virtual void GetShared(boost::shared_ptr<IObject>& out) = 0;
};

/// Bridge from intrusive to shared ownership, in the manner of enable_shared_from_this.
class ishared_from_intrusive {
public:
    virtual ~ishared_from_intrusive() = default;
    /// A shared pointer to the object. Throws boost::bad_weak_ptr once the object is being
    /// destroyed; GetShared is the form that does not throw.
    virtual boost::shared_ptr<IObject> shared_from_intrusive() = 0;
};

// Hooks for boost::intrusive_ptr, found by argument-dependent lookup for every interface.
inline void intrusive_ptr_add_ref(IInterface* object) { object->AddRef(); }
inline void intrusive_ptr_release(IInterface* object) { object->Release(); }

}  // namespace ovk
