// The object behind every empty interface_ptr<IObject>: a call through it does nothing.
#pragma once

#include "client/ovk/interface.h"

namespace ovk {

class NullObject : public IObject {
public:
    void AddRef() override {}
    void Release() override {}
    void GetShared(boost::shared_ptr<IObject>& out) override { out.reset(); }
};

}  // namespace ovk
