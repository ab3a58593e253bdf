#include "client/ovk/interface_impl.h"

namespace ovk::detail {

// Deletes the object through its virtual destructor, as the default deleter would, but can be
// disarmed: it starts disarmed, so that a failure to allocate the self reference's control
// block cannot delete an object still under construction.
class CInterface::CSelfDeleter {
public:
    void operator()(CInterface* object) const {
        if (m_armed) delete object;
    }
    void Arm() { m_armed = true; }
    void Disarm() { m_armed = false; }

private:
    bool m_armed = false;
};

CInterface::CInterface() : m_refCount(1), m_self(this, CSelfDeleter()), m_weakSelf(m_self) {
    boost::get_deleter<CSelfDeleter>(m_self)->Arm();
}

CInterface::~CInterface() {
    // In normal use the self reference has already let go. If it still holds the object, the
    // destructor was reached another way (a derived constructor threw) and the memory is
    // being freed by somebody else.
    if (m_self) boost::get_deleter<CSelfDeleter>(m_self)->Disarm();
}

void CInterface::AddRef() {
    if (m_refCount.fetch_add(1) == 0) {
        // Back from "shared only": the object is alive, so a shared pointer exists somewhere
        // and the lock succeeds.
        boost::shared_ptr<CInterface> self = m_weakSelf.lock();
        m_self.swap(self);
    }
}

void CInterface::Release() {
    if (m_refCount.fetch_sub(1) == 1) {
        boost::shared_ptr<CInterface> last;
        last.swap(m_self);
        // `last` may be the final owner: the object is destroyed as it goes out of scope, so
        // nothing here may touch a member after the swap.
    }
}

void CInterface::GetShared(boost::shared_ptr<IObject>& out) { out = m_weakSelf.lock(); }

boost::shared_ptr<IObject> CInterface::shared_from_intrusive() {
    return boost::shared_ptr<CInterface>(m_weakSelf);
}

}  // namespace ovk::detail
