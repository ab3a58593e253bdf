// IOvkLcdFunctor: what the applet library calls back with one number: a button mask, a
// notification code, or a configure request.
#pragma once

#include <cstdint>

namespace _Qvx {

class IOvkLcdFunctor {
public:
    virtual ~IOvkLcdFunctor() = default;
    virtual void operator()(std::uint32_t value) = 0;
};

}  // namespace _Qvx
