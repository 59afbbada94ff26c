#include "RenderCommand.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "control/CUI_VexplotCtrl.h"
#include "control/HeadlessSite.h"
#include "control/ImageFile.h"
#include "settings/NumberText.h"
#include "vexplot/EngineSetup.h"
#include "TerminalText.h"

namespace vexplot {

namespace {

struct Options {
    std::string data;
    std::string output;
    std::string style = "surface";
    int32_t width = 800;
    int32_t height = 600;
    std::optional<int> palette;
    std::optional<float> azimuth, elevation, distance;
    std::optional<std::string> xlabel, ylabel, zlabel, title;
    std::optional<std::string> savePlot;
};

// A whole plot saved by SaveSerialize: it brings its data, settings,
// windows, camera and size.
bool IsPlotFile(const std::string& path) {
    return path.size() > 4 && path.compare(path.size() - 4, 4, ".vxg") == 0;
}

int Usage() {
    std::fprintf(stderr,
                 "usage: vexplot render DATA -o OUT.png|OUT.bmp|OUT.svg|OUT.pdf|OUT.emf\n"
                 "       [--style surface|wireframe|bars|lines|points|image|"
                 "section]\n"
                 "           [--size WxH] [--palette 0-6] [--azimuth A] [--elevation E] [--distance D]\n"
                 "           [--xlabel T] [--ylabel T] [--zlabel T] [--title T] [--save-plot FILE.vxg]\n"
                 "       DATA may be a plot file (.vxg), which brings its own size and style\n");
    return 2;
}

// Numbers on the command line are read in no locale, so a script works the
// same under every LC_NUMERIC.
bool ParseNumber(const char* text, float* out) {
    const std::optional<double> v = ParseDouble(text);
    if (!v || !std::isfinite(*v) || std::fabs(*v) > std::numeric_limits<float>::max()) return false;
    *out = static_cast<float>(*v);
    return true;
}

// "WxH", each side 16 to 16384; a side beyond any integer is refused, never
// wrapped round to a small one.
bool ParseSize(const char* text, int32_t* w, int32_t* h) {
    const std::string_view s(text);
    const size_t x = s.find_first_of("xX");
    if (x == std::string_view::npos) return false;
    const auto a = ParseInteger(s.substr(0, x), 16, 16384);
    const auto b = ParseInteger(s.substr(x + 1), 16, 16384);
    if (!a || !b) return false;
    *w = static_cast<int32_t>(*a);
    *h = static_cast<int32_t>(*b);
    return true;
}

bool IsStyle(const std::string& s) {
    for (const char* known : {"surface", "wireframe", "bars", "lines", "points", "image", "section"})
        if (s == known) return true;
    return false;
}

// Whether two names reach one file (through links, "./" and the like).
bool SameFile(const std::string& a, const std::string& b) {
    std::error_code ec;
    if (std::filesystem::equivalent(a, b, ec)) return true;
    return std::filesystem::weakly_canonical(a, ec) == std::filesystem::weakly_canonical(b, ec) && !ec;
}

// A plot file is written over whatever has its name: a name that is not a
// .vxg, or that is the data or the picture, would destroy the user's input.
bool CheckTargets(const Options& o) {
    if (SameFile(o.output, o.data))
        return std::fprintf(stderr, "vexplot render: the picture %s would overwrite the data file\n", o.output.c_str()),
               false;
    if (!o.savePlot) return true;
    if (!IsPlotFile(*o.savePlot))
        return std::fprintf(stderr, "vexplot render: --save-plot needs a .vxg file name, not %s\n",
                            o.savePlot->c_str()),
               false;
    if (SameFile(*o.savePlot, o.data) || SameFile(*o.savePlot, o.output))
        return std::fprintf(stderr, "vexplot render: --save-plot %s would overwrite an input or the picture\n",
                            o.savePlot->c_str()),
               false;
    return true;
}

// Fills `o` from the arguments; false (after a message) when they are wrong.
bool Parse(int argc, char** argv, Options& o) {
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
        auto take = [&]() -> const char* {
            if (!value) std::fprintf(stderr, "vexplot render: %s needs a value\n", arg.c_str());
            ++i;
            return value;
        };
        float number = 0.0f;
        if (arg == "-o" || arg == "--output") {
            if (!take()) return false;
            o.output = value;
        } else if (arg == "--style") {
            if (!take()) return false;
            o.style = value;
            if (!IsStyle(o.style)) return std::fprintf(stderr, "vexplot render: unknown style %s\n", value), false;
        } else if (arg == "--size") {
            if (!take()) return false;
            if (!ParseSize(value, &o.width, &o.height))
                return std::fprintf(stderr, "vexplot render: size must be WxH, 16 to 16384 each\n"), false;
        } else if (arg == "--palette") {
            if (!take()) return false;
            if (!ParseNumber(value, &number) || number < 0 || number > 6 || number != static_cast<int>(number))
                return std::fprintf(stderr, "vexplot render: palette must be 0 to 6\n"), false;
            o.palette = static_cast<int>(number);
        } else if (arg == "--azimuth" || arg == "--elevation" || arg == "--distance") {
            if (!take()) return false;
            if (!ParseNumber(value, &number))
                return std::fprintf(stderr, "vexplot render: %s needs a number\n", arg.c_str()), false;
            (arg == "--azimuth" ? o.azimuth : arg == "--elevation" ? o.elevation : o.distance) = number;
        } else if (arg == "--xlabel" || arg == "--ylabel" || arg == "--zlabel" || arg == "--title") {
            if (!take()) return false;
            (arg == "--xlabel" ? o.xlabel : arg == "--ylabel" ? o.ylabel : arg == "--zlabel" ? o.zlabel : o.title) =
                std::string(value);
        } else if (arg == "--save-plot") {
            if (!take()) return false;
            o.savePlot = std::string(value);
        } else if (!arg.empty() && arg[0] == '-') {
            return std::fprintf(stderr, "vexplot render: unknown option %s\n", arg.c_str()), false;
        } else if (o.data.empty()) {
            o.data = arg;
        } else {
            return std::fprintf(stderr, "vexplot render: one data file only\n"), false;
        }
    }
    if (o.data.empty() || o.output.empty()) return false;
    return CheckTargets(o);
}

// The drawing style, through the methods a host calls.
void ApplyStyle(CUI_VexplotCtrl& control, const std::string& style) {
    if (style == "surface") control.SetGraphMode(0);
    else if (style == "bars") control.SetGraphMode(1);
    else if (style == "points") control.SetGraphMode(2);
    else if (style == "image") control.SetGraphMode(3);
    else if (style == "wireframe" || style == "lines") {
        control.SetGraphMode(0);
        control.SetDrawingStyle(style == "wireframe" ? GraphStyle::Wireframe : GraphStyle::Lines);
    } else if (style == "section") {
        control.Enable1DView(1, 2);
        control.SetSecantPlane1DView(50.0);
    }
}

// Loads the data file and shows it, as a viewer opens one; 0, or the
// command's exit status.
int ShowData(CUI_VexplotCtrl& control, const Options& o) {
    std::string error;
    if (SUCCEEDED(control.LoadDataFile(o.data, &error))) return 0;
    std::fprintf(stderr, "vexplot render: %s\n", ForTerminal(error).c_str());
    return 1;
}

int Render(const Options& o, HeadlessSite& site) {
    // The first run registers the engine installed with the command.
    if (const EngineSetupResult engine = RegisterShippedEngine(); !engine.message.empty())
        std::fprintf(stderr, "%s\n", engine.message.c_str());
    ComPtr<CUI_VexplotCtrl> control = MakeComObject<CUI_VexplotCtrl>();
    control->OnError([](HRESULT code, const std::string& text) {
        // The text says what went wrong; the code is for a bug report.
        std::fprintf(stderr, "vexplot render: %s (code 0x%08X)\n", ForTerminal(text).c_str(),
                     static_cast<unsigned>(code));
    });
    if (!control->Create(site, {0, 0, o.width, o.height})) {
        std::fprintf(stderr, "vexplot render: no graph engine could be started; run `vexplot register` first\n");
        return 1;
    }
    // The picture is the view alone: the bars around it go, so the view
    // fills the requested size.
    control->ShowWindows(CUI_VexplotCtrl::wndAll, 0);

    if (IsPlotFile(o.data)) {
        // OnError above has said why.
        if (!control->OpenPlotFile(o.data)) return 1;
    } else if (int status = ShowData(*control, o); status != 0) {
        return status;
    }
    if (o.palette) {
        control->Palette().SetStandard(*o.palette);
        control->ApplyPalette();
    }
    // The style first: switching views re-sends the data set's own labels,
    // which the labels given here then replace.
    if (!IsPlotFile(o.data)) ApplyStyle(*control, o.style);
    if (o.xlabel) control->SetAxisLabelText(AxisId::X, *o.xlabel);
    if (o.ylabel) control->SetAxisLabelText(AxisId::Y, *o.ylabel);
    if (o.zlabel) control->SetAxisLabelText(AxisId::Z, *o.zlabel);
    if (o.title) control->SetCaption(*o.title);
    if (o.azimuth) control->SetCamAzim(*o.azimuth);
    if (o.elevation) control->SetCamElev(*o.elevation);
    if (o.distance) control->SetCamDist(*o.distance);
    if (o.savePlot && !control->SaveSerialize(*o.savePlot)) {
        std::fprintf(stderr, "vexplot render: cannot write %s\n", o.savePlot->c_str());
        return 1;
    }

    // The format follows the output's extension: a raster at the view's
    // size, or a drawing of the same picture.
    const PixelRect plot = control->GetPlotRect();
    const int32_t width = plot.right - plot.left, height = plot.bottom - plot.top;
    const std::string error = control->ExportView(o.output, width, height);
    control->Destroy();
    if (!error.empty()) {
        std::fprintf(stderr, "vexplot render: %s\n", error.c_str());
        return 1;
    }
    std::printf("%s: %d x %d\n", o.output.c_str(), width, height);
    return 0;
}

}  // namespace

int RunRenderCommand(int argc, char** argv) {
    Options options;
    if (!Parse(argc, argv, options)) return Usage();
    HeadlessSite site(stderr);
    return Render(options, site);
}

}  // namespace vexplot
