// A real device object on this thread against the simulated driver, which the test holds
// loaded, as a driver's process stays up while a client comes and goes.
#pragma once

#include "client/detail/registered_messages_win32.h"
#include "client/detail/smart_s80_device_win32.h"
#include "client/oxapp/client_flags.h"
#include "client/oxapp/signal_interfaces.h"
#include "client/ovk/interface_ptr.h"
#include "tests/win/shim/shim_fixture.h"

#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace qvx::testing {

/// The flags the plug-in opens its device with.
inline constexpr std::uint32_t kPluginFlags = oxapp::kFlagCommands | oxapp::kFlagCallback;

class ClientTest : public ShimTest {
protected:
    void TearDown() override {
        m_object.reset();
        oxapp::detail::CS80ClientImpl::SetTimersForTest({}, nullptr);
        PumpPending();
        ShimTest::TearDown();
    }

    /// Makes the device with `flags` (the plug-in passes kPluginFlags); the test keeps it.
    oxapp::CSmartS80Device& Open(std::uint32_t flags) {
        m_device = new oxapp::CSmartS80Device(flags);
        m_object = ovk::interface_ptr<ovk::IObject>(
            static_cast<ovk::IObject*>(static_cast<oxapp::detail::CSmartDeviceImpl*>(m_device)));
        return *m_device;
    }

    /// Handles the messages that wait for this thread now, posted and sent; waits for none.
    static void PumpPending() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }

    /// Handles this thread's messages as they come until `done` holds; false when it still
    /// does not after `timeoutMs`. Sleeps only while no message is there.
    static bool PumpUntil(const std::function<bool()>& done, DWORD timeoutMs = 5000) {
        ULONGLONG deadline = GetTickCount64() + timeoutMs;
        for (;;) {
            PumpPending();
            if (done()) return true;
            ULONGLONG now = GetTickCount64();
            if (now >= deadline) return false;
            MsgWaitForMultipleObjectsEx(/*nCount=*/0, nullptr, static_cast<DWORD>(deadline - now),
                                        QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        }
    }

    /// Handles this thread's messages for `ms` milliseconds, for tests that show that
    /// something does not happen within a time; keep `ms` short.
    static void PumpFor(DWORD ms) {
        PumpUntil([] { return false; }, ms);
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

/// A client test whose device reports every command, numeric command and setting change.
class ListeningTest : public ClientTest {
protected:
    void Listen() {
        auto cmd = ovk::interface_cast<oxapp::IAppcmdSignals>(m_object);
        auto cfg = ovk::interface_cast<oxapp::IAppcfgSignals>(m_object);
        m_slots.emplace_back(cmd->ConnectCommand([this](const char* text, bool pressed) {
            commands.push_back(std::string(text) + (pressed ? "+" : "-"));
            handlerThread = GetCurrentThreadId();
        }));
        m_slots.emplace_back(cmd->ConnectCommandEx(
            [this](std::uint32_t id, bool pressed, const void* ints, const void* floats) {
                codes.push_back(pressed ? static_cast<int>(id) : -static_cast<int>(id));
                handlerThread = GetCurrentThreadId();
                firstInt = static_cast<const int*>(ints)[0];
                firstFloat = static_cast<const float*>(floats)[0];
            }));
        m_slots.emplace_back(cfg->ConnectValueChanged([this] { ++valueChanges; }));
    }

    std::vector<std::string> commands;
    std::vector<int> codes;
    int firstInt = 0;
    float firstFloat = 0;
    int valueChanges = 0;
    DWORD handlerThread = 0;

private:
    std::vector<ovk::interface_ptr<ovk::ISlot>> m_slots;
};

}  // namespace qvx::testing
