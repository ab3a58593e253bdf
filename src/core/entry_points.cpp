// The two exports the host calls and the plug-in's entry functions behind them.
#include "core/entry_points.h"
#include "core/qvxproe.h"
#include "support/boundary.h"
#include "support/os.h"
#include "toolkit/host_table.h"
#include "toolkit/pro_toolkit.h"

#include <cstdio>
#include <cstring>

namespace {

/// The host's error buffer holds 80 bytes.
constexpr std::size_t kErrbufSize = 80;

void ReportWcharMismatch(int hostSize, char* errbuf) {
    char text[128];
    std::snprintf(text, sizeof text, "ERROR wchar_t Incorrect size (%d). Should be: %d", 2,
                  hostSize);
    ProMessageDisplay(L"msg_user.txt", "USER %0s", text);
    std::printf("%s\n", text);
    std::fflush(stdout);
    if (errbuf) {
        std::strncpy(errbuf, text, kErrbufSize - 1);
        errbuf[kErrbufSize - 1] = '\0';
    }
}

}  // namespace

int user_initialize_plus(const QvxToolkitArgs* args) {
    return qvx::CallAtBoundary("user_initialize_plus", 0, [&] {
        qvx::toolkit::InstallHostTable(args);
        char ownBuffer[256] = {};
        char* errbuf = args && args->errorText ? args->errorText : ownBuffer;
        return user_initialize(0, nullptr, args ? args->displayVersion : nullptr,
                               args ? args->build : nullptr, errbuf);
    });
}

void user_terminate_plus() {
    qvx::CallAtBoundary("user_terminate_plus", [] { user_terminate(); });
    qvx::CallAtBoundary("user_terminate_plus", [] { qvx::toolkit::InstallHostTable(nullptr); });
}

int user_initialize(int, char*[], const char* version, const char*, char* errbuf) {
    qvx::CallAtBoundary("user_initialize", [&] {
        int hostSize = 0;
        if (QvxTkWcharSizeCheck(2, &hostSize) != 0 || hostSize != 2) {
            ReportWcharMismatch(hostSize, errbuf);
            return;
        }
        if (g_qvxProE) return;
        std::wstring wideVersion = qvx::os::WidenAcp(version ? version : "");
        // Published before Start(), which may already be called back into.
        g_qvxProE = std::make_unique<CQvxProE>(wideVersion.c_str());
        // A failed start leaves the plug-in idle.
        bool started =
            qvx::CallAtBoundary("CQvxProE::Start", false, [] { return g_qvxProE->Start() != 0; });
        if (!started) g_qvxProE.reset();
    });
    return 0;
}

void user_terminate() {
    qvx::CallAtBoundary("user_terminate", [] {
        if (!g_qvxProE) return;
        bool stopped = qvx::CallAtBoundary("CQvxProE::Stop", false, [] {
            g_qvxProE->Stop();
            return true;
        });
        // An object whose stop failed is not trusted to destroy cleanly; it is let go.
        if (stopped) {
            g_qvxProE.reset();
        } else {
            (void)g_qvxProE.release();
        }
    });
    std::printf("user_terminate\n");
    std::fflush(stdout);
}
