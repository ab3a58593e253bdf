// The three animated zoom drivers. Each is entered on press and again on release of its
// command; a tap zooms by `firstFactor` in one eased step, a hold zooms on by `holdFactor` per
// hold period after `holdDelay` milliseconds.
#pragma once

namespace qvx::nav {

/// Zooms to the point under the cursor and brings it to the window's centre.
void ZoomToCursorCentring(double firstFactor, double holdFactor, int acceleration, int deceleration,
                          int holdPeriod, int holdDelay, bool pressed);
/// Zooms about the point under the cursor, which stays where it is.
void ZoomAboutCursor(double firstFactor, double holdFactor, int acceleration, int deceleration,
                     int holdPeriod, int holdDelay, bool pressed);
/// Zooms about the window's centre.
void ZoomAboutWindowCentre(double firstFactor, double holdFactor, int acceleration,
                           int deceleration, int holdPeriod, int holdDelay, bool pressed);

}  // namespace qvx::nav
