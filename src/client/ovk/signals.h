// Signal and slot objects that hide the signal library from consumers.
//
// A signal group offers ConnectX(function) operations. Each connects the function at the back
// of the ungrouped slots of its boost::signals2::signal and returns the connection as a raw
// ISlot* with one reference, which the caller wraps in interface_ptr<ISlot>:
//
//     ovk::interface_ptr<ovk::ISlot> slot(device->ConnectValueChanged(&OnChanged));
//     ...
//     slot->Disconnect();
//
// Every signal uses the library's default combiner and mutex; none returns a value. Slots run
// on the thread that fires the signal, outside the signal's mutex.
#pragma once

#include "client/ovk/interface.h"
#include "client/ovk/interface_impl.h"

#include <boost/function.hpp>
#include <boost/signals2/connection.hpp>
#include <boost/signals2/signal.hpp>

namespace ovk {

class ISlot : public virtual IInterface {
public:
    /// Cuts the connection; a connection already cut is no error.
    virtual void Disconnect() = 0;

protected:
    ~ISlot() = default;
};

class ISignal : public virtual IInterface {
public:
    /// Cuts `slot`'s connection; a null slot does nothing.
    virtual void Disconnect(ISlot* slot) = 0;

protected:
    ~ISignal() = default;
};

namespace detail {

/// Owns one connection. Made only by the connect operations of the signal groups.
class CSlot : public ISlot, public virtual CInterface {
public:
    explicit CSlot(boost::signals2::connection connection);
    void Disconnect() override;

private:
    boost::signals2::connection m_connection;
};

/// Base of every signal group. The reference count comes from the object the group is part of.
class CSignal : public ISignal {
public:
    template <typename Signature>
    using signal_type = boost::signals2::signal<Signature>;

    void Disconnect(ISlot* slot) override;

protected:
    ~CSignal() = default;

    /// The body of every ConnectX: connects `function` at the back of `signal` and returns a
    /// new slot with one reference. If the slot cannot be made the connection is cut again
    /// and the exception passes to the caller.
    template <typename Signature>
    static ISlot* Connect(signal_type<Signature>& signal, boost::function<Signature> function) {
        boost::signals2::scoped_connection pending(
            signal.connect(std::move(function), boost::signals2::at_back));
        ISlot* slot = new CSlot(pending.release());
        return slot;
    }
};

}  // namespace detail
}  // namespace ovk
