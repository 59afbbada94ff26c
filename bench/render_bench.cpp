// Rendering a big surface through the control, as a host drives it.
//
//   render_bench N [--frames K] [--mode load]
//
// Builds the peaks grid
//   z = 3(1-x)^2 e^(-x^2-(y+1)^2) - 10(x/5 - x^3 - y^5) e^(-x^2-y^2) - (1/3) e^(-(x+1)^2-y^2)
// on x, y in [-3, 3] at N x N, hands it to a control on the headless site at
// 1024 x 768, and times:
//  - load: handing the grid to the control (graph object, preview, the
//    engine's copy of the heights). The grid is computed beforehand, straight
//    into the array the data object keeps, as a careful host does. With
//    --mode load the time includes reading it from an .npy file into a data
//    object, as `vexplot render` does;
//  - first_frame: the first paint of the 3-D view at full detail;
//  - rerender_avg: K paints at rest, each after a 3-degree azimuth step: all
//    the detail the pixels show (every cell up to one cell per pixel, beyond
//    that a level of one cell per pixel that keeps each block's extremes);
//  - every_cell_avg: the same with every grid cell drawn, however small on
//    screen (IGraphView3D::SetEveryCell);
//  - motion_avg: K paints while the view moves (the level of detail);
//  - peak_rss_mib: the process's peak resident set before the every-cell
//    frames, and every_cell_peak_rss_mib after them.
// and prints one line: TIMES {"load": s, "first_frame": s, "rerender_avg": s,
// "motion_avg": s, "every_cell_avg": s, "peak_rss_mib": m,
// "every_cell_peak_rss_mib": m}, plus the grid's size for reference.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>

#include "PeaksGrid.h"
#include "com/ClassRegistry.h"
#include "com/ComError.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/HeadlessSite.h"
#include "dataobject/GraphDataClass.h"
#include "dataobject/GraphDataFactory.h"

using namespace vexplot;
using namespace vexplot::bench;

namespace {

constexpr int32_t kWidth = 1024;
constexpr int32_t kHeight = 768;

double Seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct Options {
    int32_t n = 1024;
    int frames = 5;
    bool fromFile = false;
};

bool Parse(int argc, char** argv, Options& o) {
    if (argc < 2) return false;
    o.n = std::atoi(argv[1]);
    for (int i = 2; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--frames") && i + 1 < argc) o.frames = std::atoi(argv[++i]);
        else if (!std::strcmp(argv[i], "--mode") && i + 1 < argc && !std::strcmp(argv[i + 1], "load")) {
            o.fromFile = true;
            ++i;
        } else return false;
    }
    return o.n >= 2 && o.frames >= 1;
}

// K paints of the 3-D view, each after a 3-degree azimuth step; the mean.
double StepFrames(CUI_VexplotCtrl& control, HeadlessSite& site, int frames) {
    double total = 0.0;
    for (int k = 0; k < frames; ++k) {
        total += Seconds([&] {
            control.SetCamAzim(control.GetCamAzim() + 3.0f);
            site.Flush();
        });
    }
    return total / frames;
}

int Run(const Options& o) {
    RegisterGraphDataClass();
    HeadlessSite site(stderr);
    ComPtr<CUI_VexplotCtrl> control = MakeComObject<CUI_VexplotCtrl>();
    if (!control->Create(site, {0, 0, kWidth, kHeight})) {
        std::fprintf(stderr, "render_bench: no graph engine could be started; run `vexplot register` first\n");
        return 1;
    }
    control->ShowWindows(CUI_VexplotCtrl::wndAll, 0);
    site.Flush();

    const std::string npy = o.fromFile ? WritePeaksNpy(o.n, "render_bench") : std::string();
    // The host's own work (computing the grid) is not the control's: in
    // memory mode only the hand-over is timed.
    ComPtr<IGraphData> data = o.fromFile ? nullptr : MakePeaksData(o.n);
    const double load = Seconds([&] {
        if (o.fromFile) data = LoadGraphData(npy);
        ThrowIfFailed(control->SetData(data.Get()), IGraphData::kIid);
    });
    if (!npy.empty()) std::filesystem::remove(npy);
    const double first = Seconds([&] {
        control->SetGraphMode(0);
        site.Flush();
    });
    const double rerender = StepFrames(*control, site, o.frames);
    control->BeginViewMotion();
    const double motion = StepFrames(*control, site, o.frames);
    control->EndViewMotion();
    site.Flush();
    const double peak = PeakRssMiB();
    control->GetView3D()->SetEveryCell(true);
    const double everyCell = StepFrames(*control, site, o.frames);
    control->Destroy();

    const double gridMiB = static_cast<double>(o.n) * o.n * sizeof(double) / (1024.0 * 1024.0);
    std::printf("grid %d x %d (%.1f MiB of doubles), view %d x %d, %d frames each\n", o.n, o.n, gridMiB, kWidth,
                kHeight, o.frames);
    std::printf("TIMES {\"load\": %.4f, \"first_frame\": %.4f, \"rerender_avg\": %.4f, \"motion_avg\": %.4f, "
                "\"every_cell_avg\": %.4f, \"peak_rss_mib\": %.1f, \"every_cell_peak_rss_mib\": %.1f}\n",
                load, first, rerender, motion, everyCell, peak, PeakRssMiB());
    std::printf("memory target: %.1f MiB (2 x grid + 150)\n", 2 * gridMiB + 150.0);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!Parse(argc, argv, options)) {
        std::fprintf(stderr, "usage: render_bench N [--frames K] [--mode load]\n");
        return 2;
    }
    try {
        return Run(options);
    } catch (const ComError& e) {
        std::fprintf(stderr, "render_bench: %s\n", e.what());
        return 1;
    }
}
