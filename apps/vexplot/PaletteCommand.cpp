#include "PaletteCommand.h"

#include <cstdio>
#include <cstring>
#include <optional>
#include <string>

#include "model/CGD_Palette.h"
#include "settings/NumberText.h"
#include "TerminalText.h"

namespace vexplot {

namespace {

// Enough for any colour scale on any screen, and small enough that the
// resampled strip stays a few megabytes.
constexpr int64_t kMaxRows = 65536;

struct Options {
    std::string source;
    std::string output;
    std::optional<int64_t> rows;
};

int Usage() {
    std::fprintf(stderr,
                 "usage: vexplot palette SOURCE -o OUT.plt [--rows N]\n"
                 "       SOURCE is a standard palette 0-6 (the PaletteId values) or a palette file (.plt)\n"
                 "       --rows N  resample to N colours (1-%lld, an odd N is rounded up to even),\n"
                 "                 listed from the highest as a colour scale shows them\n",
                 static_cast<long long>(kMaxRows));
    return 2;
}

std::optional<Options> ParseOptions(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const bool hasValue = i + 1 < argc;
        if (std::strcmp(argv[i], "-o") == 0 && hasValue) {
            options.output = argv[++i];
        } else if (std::strcmp(argv[i], "--rows") == 0 && hasValue) {
            options.rows = ParseInteger(argv[++i], 1, kMaxRows);
            if (!options.rows) return std::nullopt;
        } else if (argv[i][0] != '-' && options.source.empty()) {
            options.source = argv[i];
        } else {
            return std::nullopt;
        }
    }
    if (options.source.empty() || options.output.empty()) return std::nullopt;
    return options;
}

// A single digit names a standard palette; anything else is a file.
bool LoadSource(CGD_Palette& palette, const std::string& source) {
    if (const std::optional<int64_t> id = ParseInteger(source, 0, 6); id && source.size() == 1) {
        return palette.SetStandard(static_cast<int>(*id));
    }
    if (palette.LoadFile(source) == 1) return true;
    std::fprintf(stderr, "vexplot palette: cannot read %s: %s\n", ForTerminal(source).c_str(),
                 ForTerminal(palette.GetOpenFailure()).c_str());
    return false;
}

}  // namespace

int RunPaletteCommand(int argc, char** argv) {
    const std::optional<Options> options = ParseOptions(argc, argv);
    if (!options) return Usage();
    CGD_Palette palette;
    if (!LoadSource(palette, options->source)) return 1;
    if (palette.GetCount() == 0) {
        std::fprintf(stderr, "vexplot palette: %s holds no colours\n", ForTerminal(options->source).c_str());
        return 1;
    }
    int written = 0;
    if (options->rows) {
        palette.Stretch(0, 0, static_cast<int>(CGD_Palette::kStripWidth), static_cast<int>(*options->rows));
        written = palette.SaveStretchedFile(options->output);
    } else {
        written = palette.SaveFile(options->output);
    }
    if (written != 1) {
        std::fprintf(stderr, "vexplot palette: cannot write %s\n", ForTerminal(options->output).c_str());
        return 1;
    }
    const size_t count = options->rows ? palette.GetStretchedHeight() : palette.GetCount();
    std::printf("%zu colours written to %s\n", count, ForTerminal(options->output).c_str());
    return 0;
}

}  // namespace vexplot
