// The two exports: install the host's table, then hand over to the plug-in's entry functions.
#include "toolkit/host_table.h"

#include <cstring>

int user_initialize_plus(const QvxToolkitArgs* args) {
    try {
        qvx::toolkit::InstallHostTable(args);
        char ownBuffer[256] = {};
        char* errbuf = args && args->errorText ? args->errorText : ownBuffer;
        int result = user_initialize(0, nullptr, args ? args->displayVersion : nullptr,
                                     args ? args->build : nullptr, errbuf);
        return result;
    } catch (...) {
        return 0;
    }
}

void user_terminate_plus() {
    try {
        user_terminate();
    } catch (...) {
    }
    qvx::toolkit::InstallHostTable(nullptr);
}
