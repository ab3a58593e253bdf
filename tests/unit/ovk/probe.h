// A small object of the model for the tests: two interfaces, a record of its destruction.
#pragma once

#include "client/ovk/interface_impl.h"
#include "client/ovk/interface_ptr.h"

namespace ovk::testing {

class IGreeter : public virtual IInterface {
public:
    virtual int Greet() = 0;

protected:
    ~IGreeter() = default;
};

class IUnsupported : public virtual IInterface {
public:
    virtual void Nothing() = 0;

protected:
    ~IUnsupported() = default;
};

/// What a probe saw while it was destroyed.
struct ProbeDeath {
    int count = 0;
    bool sharedWasEmpty = false;
    bool sharedFromIntrusiveThrew = false;
};

class CProbe : public virtual detail::CInterface, public IGreeter {
public:
    explicit CProbe(ProbeDeath& death) : m_death(death) {}
    ~CProbe() override {
        ++m_death.count;
        boost::shared_ptr<IObject> shared;
        GetShared(shared);
        m_death.sharedWasEmpty = !shared;
        try {
            shared_from_intrusive();
        } catch (const boost::bad_weak_ptr&) {
            m_death.sharedFromIntrusiveThrew = true;
        }
    }
    int Greet() override { return 42; }

private:
    ProbeDeath& m_death;
};

}  // namespace ovk::testing
