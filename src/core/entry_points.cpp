// The plug-in's entry functions, called by the toolkit layer's exports.
#include "core/qvxproe.h"
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

int user_initialize(int, char*[], const char* version, const char*, char* errbuf) {
    try {
        int hostSize = 0;
        if (QvxTkWcharSizeCheck(2, &hostSize) != 0 || hostSize != 2) {
            ReportWcharMismatch(hostSize, errbuf);
            return 0;
        }
        if (g_qvxProE) return 0;
        std::wstring wideVersion = qvx::os::WidenAcp(version ? version : "");
        g_qvxProE = std::make_unique<CQvxProE>(wideVersion.c_str());
        if (g_qvxProE->Start() == 0) g_qvxProE.reset();
    } catch (...) {
        // Nothing may reach the host; a failed start leaves the plug-in idle.
        g_qvxProE.reset();
    }
    return 0;
}

void user_terminate() {
    try {
        if (g_qvxProE) {
            g_qvxProE->Stop();
            g_qvxProE.reset();
        }
    } catch (...) {
        // An object whose stop failed is not trusted to destroy cleanly; it is let go.
        (void)g_qvxProE.release();
    }
    std::printf("user_terminate\n");
    std::fflush(stdout);
}
