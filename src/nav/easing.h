// Easing curves of the animated zoom: the fraction of the way done after t milliseconds.
#pragma once

#include <cstdint>

namespace easing {

class IEase {
public:
    virtual ~IEase() = default;
    /// The fraction done at `t` milliseconds: 0 at or before the start, 1 at or after the end.
    virtual double Position(const std::int64_t& t) = 0;
    /// Writes the curve's end time in milliseconds.
    virtual void Finish(std::int64_t& t) = 0;
};

/// Even acceleration for t1, then even braking for t2, from the initial velocity vStart
/// (fraction per millisecond); with vStart 0 it reaches 1.0 exactly at t1 + t2.
class CConstantAcceleration : public IEase {
public:
    CConstantAcceleration(std::int64_t t1, std::int64_t t2, double vStart);
    double Position(const std::int64_t& t) override;
    void Finish(std::int64_t& t) override;

private:
    double m_t1;
    double m_t2;
    double m_a;
    double m_d;
};

/// A straight line from 0 to 1 over `duration` milliseconds.
class CConstantVelocity : public IEase {
public:
    explicit CConstantVelocity(std::int64_t duration);
    double Position(const std::int64_t& t) override;
    void Finish(std::int64_t& t) override;

private:
    double m_duration;
};

}  // namespace easing
