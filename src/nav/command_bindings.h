// The binding table: which handler answers which driver command code. Handlers of different
// signatures share one table through three adapters; the rows are built when the library
// loads and copied into the plug-in's map when the driver connects.
#pragma once

#include <boost/array.hpp>
#include <boost/function.hpp>

#include <cstdint>
#include <vector>

namespace qvx::nav {

/// A command code's handler: press state, 16 integers, 16 floats.
using CommandHandler = boost::function<void(bool, boost::array<int, 16>, boost::array<float, 16>)>;

/// The timing of an animated zoom, in milliseconds.
struct animation_times_t {
    std::int32_t acceleration;
    std::int32_t deceleration;
    std::int32_t holdPeriod;
};

/// Calls the target on press; a release does nothing.
void InvokeOnPress(const boost::function<void()>& target, bool pressed, boost::array<int, 16>,
                   boost::array<float, 16>);
/// Calls the target with the press state, on press and on release.
void InvokeWithState(const boost::function<void(bool)>& target, bool pressed, boost::array<int, 16>,
                     boost::array<float, 16>);
/// Calls the target with the first float parameter and the press state.
void InvokeWithParameter(const boost::function<void(float, bool)>& target, bool pressed,
                         boost::array<int, 16>, boost::array<float, 16> floats);

struct CCommandBinding {
    std::uint32_t code;
    std::uint32_t reserved;  ///< always 0
    CommandHandler handler;
};

/// The three groups in the order they go into the map: animated zoom, views, the device menu.
const std::vector<CCommandBinding>& AnimatedZoomBindings();
const std::vector<CCommandBinding>& ViewBindings();
const std::vector<CCommandBinding>& MenuBindings();

}  // namespace qvx::nav
