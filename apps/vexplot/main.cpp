// The `vexplot` command: one program, several sub-commands.
#include <cstdio>
#include <cstring>

#include "InfoCommand.h"
#include "PaletteCommand.h"
#include "RegisterCommand.h"
#include "RenderCommand.h"
#include "SettingsCommand.h"
#include "vexplot/Version.h"

namespace {

struct Command {
    const char* name;
    int (*run)(int argc, char** argv);
    const char* summary;
};

constexpr Command kCommands[] = {
    {"info", vexplot::RunInfoCommand, "load data files and print what they hold"},
    {"settings", vexplot::RunSettingsCommand, "inspect and edit the per-user settings store"},
    {"register", vexplot::RunRegisterCommand, "register the OpenGL graph engine plug-in"},
    {"render", vexplot::RunRenderCommand, "draw a data file through the control and save it as an image"},
    {"palette", vexplot::RunPaletteCommand, "write a standard palette or a palette file, resampled if asked"},
};

int Usage(std::FILE* to = stderr) {
    std::fprintf(to, "usage: vexplot COMMAND [ARGS...]\n       vexplot --version\n\ncommands:\n");
    for (const Command& c : kCommands) std::fprintf(to, "  %-10s %s\n", c.name, c.summary);
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return Usage();
    if (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) {
        Usage(stdout);
        return 0;
    }
    if (std::strcmp(argv[1], "--version") == 0) {
        std::printf("vexplot %s\n", vexplot::Version());
        return 0;
    }
    for (const Command& c : kCommands)
        if (std::strcmp(argv[1], c.name) == 0) return c.run(argc - 1, argv + 1);
    std::fprintf(stderr, "vexplot: unknown command '%s'\n", argv[1]);
    return Usage();
}
