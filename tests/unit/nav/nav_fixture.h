// The plug-in running in a simulated host with a model open, for command and view tests, on a
// virtual clock: time passes only while the plug-in waits, and events come inside its waits.
#pragma once

#include "core/qvxproe.h"
#include "sim/host/session.h"
#include "core/entry_points.h"

#include "tests/unit/common/fake_device.h"
#include "tests/unit/common/fake_main_loop.h"
#include "tests/unit/common/recorded_notices.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace qvx::testing {

class NavTest : public ::testing::Test {
protected:
    void SetUp() override {
        ::testing::internal::CaptureStdout();
        user_terminate_plus();
        sim::CSession::Instance().Reset();
        Host().OpenModel("bracket.prt");
        user_initialize_plus(Host().Args());
        ::testing::internal::GetCapturedStdout();
        ASSERT_TRUE(g_qvxProE);
    }
    void TearDown() override {
        ::testing::internal::CaptureStdout();
        user_terminate_plus();
        ::testing::internal::GetCapturedStdout();
    }

    /// Delivers `event` as a message 20 ms into the plug-in's waits.
    void PumpSoon(std::function<void()> event) {
        m_loop.Schedule(m_loop.NowMs() + 20, std::move(event));
    }

    static sim::CSession& Host() { return sim::CSession::Instance(); }

    /// A command code from the driver, with a first float parameter.
    static void Send(unsigned code, bool pressed, float parameter = 0.0f) {
        std::array<int, 16> ints{};
        std::array<float, 16> floats{};
        floats[0] = parameter;
        g_qvxProE->OnCommandEx(code, pressed, ints.data(), floats.data());
    }

    static void ExpectMatrixNear(const sim::Matrix4& a, const sim::Matrix4& b, double tolerance) {
        for (int i = 0; i < 4; ++i) {
            for (int j = 0; j < 4; ++j) {
                EXPECT_NEAR(a[i][j], b[i][j], tolerance) << "at [" << i << "][" << j << "]";
            }
        }
    }

    CFakeMainLoop m_loop;
    CRecordedNotices m_notices;
    CFakeDeviceFactory m_devices;
};

}  // namespace qvx::testing
