// Helper process for the concurrency test: waits until its standard input is
// closed (so all writers start together), then writes `count` values into a
// key shared by all writers and `count` strings into a key of its own.
// Exit status 0 only if every open and write succeeded.
#include <unistd.h>

#include <cstdio>
#include <string>

#include "settings/CRegistryKey.h"
#include "settings/SettingsStore.h"

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: settings_writer DATABASE ID COUNT\n");
        return 2;
    }
    const std::string id = argv[2];
    const int count = std::stoi(argv[3]);
    char ignored;
    while (read(0, &ignored, 1) > 0) {
    }
    vexplot::CRegistryKey shared(nullptr, vexplot::SettingsStore::Open(argv[1]));
    vexplot::CRegistryKey own(nullptr, vexplot::SettingsStore::Open(argv[1]));
    if (shared.Open("Shared") == 0 || own.Open("Writer" + id) == 0) {
        return 1;
    }
    int failures = 0;
    for (int i = 0; i < count; ++i) {
        const std::string name = "w" + id + "_" + std::to_string(i);
        failures += shared.WriteInt(name, std::stoi(id) * 100000 + i) != 0;
        failures += own.WriteString(name, name) != 0;
    }
    return failures == 0 ? 0 : 1;
}
