// The one implementation of the reference count, shared by every object of the model.
//
// An object is owned intrusively (AddRef/Release) and may also be held by boost::shared_ptr.
// While the intrusive count is above zero the object holds a strong shared pointer to itself;
// the last Release drops it, and the object dies when no shared pointer handed out earlier is
// left. A thread that has taken a shared pointer therefore keeps the object alive through a
// Release to zero on another thread, and a later AddRef makes it owned again.
#pragma once

#include "client/ovk/interface.h"

#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <atomic>
#include <cstdint>

namespace ovk::detail {

class CInterface : public virtual IObject, public ishared_from_intrusive {
public:
    /// Starts owned, with a count of 1 that belongs to the creator. Objects live on the heap
    /// only: the self reference deletes them.
    CInterface();
    CInterface(const CInterface&) = delete;
    CInterface& operator=(const CInterface&) = delete;
    ~CInterface() override;

    void AddRef() override;
    void Release() override;
    void GetShared(boost::shared_ptr<IObject>& out) override;
    boost::shared_ptr<IObject> shared_from_intrusive() override;

private:
    class CSelfDeleter;

    // Invariant: m_self is set exactly while m_refCount is above zero. The transition through
    // zero swaps m_self without a lock, so it must happen on one thread at a time.
    std::atomic<std::int32_t> m_refCount;
    boost::shared_ptr<CInterface> m_self;
    boost::weak_ptr<CInterface> m_weakSelf;
};

}  // namespace ovk::detail
