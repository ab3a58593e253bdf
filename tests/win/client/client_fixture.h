// A real device object on this thread against the simulated driver, which the test holds
// loaded, as a driver's process stays up while a client comes and goes.
#pragma once

#include "client/detail/registered_messages_win32.h"
#include "client/oxapp/smart_s80_device_win32.h"
#include "client/ovk/interface_ptr.h"
#include "tests/win/shim/shim_fixture.h"

#include <chrono>
#include <cstring>
#include <string>
#include <thread>

namespace qvx::testing {

class ClientTest : public ShimTest {
protected:
    void TearDown() override {
        m_object.reset();
        ShimTest::TearDown();
    }

    /// Makes the device with `flags` (the plug-in passes 48); the test keeps it.
    oxapp::CSmartS80Device& Open(std::uint32_t flags) {
        m_device = new oxapp::CSmartS80Device(flags);
        m_object = ovk::interface_ptr<ovk::IObject>(
            static_cast<ovk::IObject*>(static_cast<oxapp::detail::CSmartDeviceImpl*>(m_device)));
        return *m_device;
    }

    /// Handles this thread's messages for `ms` milliseconds.
    static void Pump(unsigned ms) {
        auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
        do {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        } while (std::chrono::steady_clock::now() < end);
    }

    /// The context the client registers with its callback: its transport half.
    static void* Context(oxapp::CSmartS80Device& device) {
        return static_cast<oxapp::detail::CS80ClientImpl*>(&device);
    }

    static oxapp::detail::CKvwEvent Event(std::uint32_t type) {
        oxapp::detail::CKvwEvent event;
        std::memset(event.raw, 0, sizeof(event.raw));
        event.type = type;
        return event;
    }
    static oxapp::detail::CKvwEvent Command(const std::string& text, bool pressed) {
        auto event = Event(10);
        event.command.pressed = pressed ? 1 : 0;
        std::memcpy(event.command.command, text.data(),
                    std::min(text.size(), sizeof(event.command.command)));
        return event;
    }
    static oxapp::detail::CKvwEvent Code(std::uint32_t code, bool pressed, float parameter = 0) {
        auto event = Event(17);
        event.matrixCommand.pressed = pressed ? 1 : 0;
        event.matrixCommand.id = code;
        std::memcpy(&event.matrixCommand.blockB[0], &parameter, sizeof(parameter));
        return event;
    }

    oxapp::CSmartS80Device* m_device = nullptr;
    ovk::interface_ptr<ovk::IObject> m_object;
};

}  // namespace qvx::testing
