// Any bytes as the settings file: reading it must keep the defaults for what it lacks or holds
// malformed, and saving into it (a corrupt file counts as empty) must keep the values read, so
// that a fresh reader of the saved file gets them back.
#include "support/settings/mouse_settings.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

const fs::path& Folder() {
    static const fs::path folder =
        fs::temp_directory_path() / ("qvx-fuzz-settings-" + std::to_string(getpid()));
    return folder;
}

s3dm::C3dmouseSettings::FolderLookup Lookup() {
    return [](const std::wstring&) { return std::optional<std::wstring>(Folder().wstring()); };
}

bool SameFloat(float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fs::create_directories(Folder());
    {
        s3dm::C3dmouseSettings probe(L"Fuzz", Lookup());
        std::ofstream(fs::path(*probe.FilePath()), std::ios::binary | std::ios::trunc)
            .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }
    s3dm::C3dmouseSettings first(L"Fuzz", Lookup());
    first.Load();
    first.Save();
    first.WaitForSaves();
    s3dm::C3dmouseSettings second(L"Fuzz", Lookup());
    second.SetPanZoom(!first.GetPanZoom());
    second.SetRotation(!first.GetRotation());
    second.SetDominant(!first.GetDominant());
    second.SetSpeed(first.GetSpeed() + 1.0f);
    second.Load();
    if (second.GetPanZoom() != first.GetPanZoom() || second.GetRotation() != first.GetRotation() ||
        second.GetDominant() != first.GetDominant() ||
        !SameFloat(second.GetSpeed(), first.GetSpeed())) {
        std::abort();
    }
    return 0;
}
