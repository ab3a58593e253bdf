#include "nav/easing.h"

namespace easing {

CConstantAcceleration::CConstantAcceleration(std::int64_t t1, std::int64_t t2, double vStart)
    : m_t1(static_cast<double>(t1)), m_t2(static_cast<double>(t2)) {
    m_a = (2.0 - m_t2 * vStart) / ((m_t1 + m_t2) * m_t1);
    m_d = -(m_t1 * m_a - vStart) / m_t2;
}

double CConstantAcceleration::Position(const std::int64_t& t) {
    const double time = static_cast<double>(t);
    if (time > m_t1 + m_t2) return 1.0;
    if (time > m_t1) {
        const double u = time - m_t1;
        return m_a / 2 * m_t1 * m_t1 + m_a * m_t1 * u + m_d / 2 * u * u;
    }
    if (t <= 0) return 0.0;
    return m_a / 2 * time * time;
}

void CConstantAcceleration::Finish(std::int64_t& t) { t = static_cast<std::int64_t>(m_t1 + m_t2); }

CConstantVelocity::CConstantVelocity(std::int64_t duration)
    : m_duration(static_cast<double>(duration)) {}

double CConstantVelocity::Position(const std::int64_t& t) {
    const double time = static_cast<double>(t);
    if (time >= m_duration) return 1.0;
    if (t <= 0) return 0.0;
    return time / m_duration;
}

void CConstantVelocity::Finish(std::int64_t& t) { t = static_cast<std::int64_t>(m_duration); }

}  // namespace easing
