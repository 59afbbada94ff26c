// The tracer's read-out following the mouse over a big surface.
//
//   tracer_bench [N] [--moves K] [--view 2d|3d]
//
// Creates the control headless (1024 x 768), hands it the peaks grid at
// N x N (default 4096), shows the info window, chooses the Tracer tool and
// moves the mouse K times (default 60) across the middle of the view. Each
// move is timed from the mouse event to the tracer's line in the info
// window holding the point under the cursor: the pick on the full grid,
// the snap to the grid node and the text. The picture that follows is
// timed on its own.
//
// Prints: TIMES {"move_to_line_avg": s, "move_to_line_max": s,
// "picture_avg": s} and whether the target (16 ms a move) was met. The
// engine must be registered (`vexplot register`).
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "PeaksGrid.h"
#include "com/ComError.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "control/HeadlessSite.h"
#include "dataobject/GraphDataClass.h"

using namespace vexplot;
using namespace vexplot::bench;

namespace {

constexpr int32_t kWidth = 1024;
constexpr int32_t kHeight = 768;
constexpr double kTargetSeconds = 0.016;

struct Options {
    int32_t n = 4096;
    int moves = 60;
    bool flat = false;
};

bool Parse(int argc, char** argv, Options& o) {
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--moves") && i + 1 < argc)
            o.moves = std::atoi(argv[++i]);
        else if (!std::strcmp(argv[i], "--view") && i + 1 < argc)
            o.flat = !std::strcmp(argv[++i], "2d");
        else if (argv[i][0] != '-')
            o.n = std::atoi(argv[i]);
        else
            return false;
    }
    return o.n >= 2 && o.moves >= 1;
}

double Since(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The tracer's coordinate line (the line under "Tracer:"), or the position
// line when there is no tracer section.
std::string TracerLine(const CUI_VexplotCtrl& control) {
    const auto lines = control.InfoLines();
    for (size_t i = 0; i + 1 < lines.size(); ++i)
        if (lines[i] == "Tracer:") return lines[i + 1];
    for (const std::string& line : lines)
        if (line.rfind("Pos:", 0) == 0) return line;
    return {};
}

int Run(const Options& o) {
    RegisterGraphDataClass();
    HeadlessSite site(stderr);
    ComPtr<CUI_VexplotCtrl> control = MakeComObject<CUI_VexplotCtrl>();
    if (!control->Create(site, {0, 0, kWidth, kHeight})) {
        std::fprintf(stderr, "tracer_bench: no graph engine could be started; run `vexplot register` first\n");
        return 1;
    }
    ThrowIfFailed(control->SetData(MakePeaksData(o.n).Get()), IGraphData::kIid);
    control->ShowWindows(CUI_VexplotCtrl::wndInfo, 1);
    if (o.flat) control->DoCommand(cmd::k2DMode);
    control->DoCommand(cmd::kTracer);
    site.Flush();

    double total = 0.0, worst = 0.0, pictures = 0.0;
    int changed = 0;
    std::string before = TracerLine(*control);
    for (int k = 0; k < o.moves; ++k) {
        // Across the middle of the view, where the surface is.
        const int32_t x = kWidth / 3 + k * (kWidth / 3) / o.moves;
        const int32_t y = kHeight / 2 + (k % 7) * 3;
        auto start = std::chrono::steady_clock::now();
        control->MouseMove(x, y);
        const std::string line = TracerLine(*control);
        const double took = Since(start);
        total += took;
        worst = std::max(worst, took);
        changed += line != before;
        before = line;
        start = std::chrono::steady_clock::now();
        site.Flush();
        pictures += Since(start);
    }
    std::printf("grid %d x %d, %s view %d x %d, %d moves, %d read-outs changed; last: %s\n", o.n, o.n,
                o.flat ? "2-D" : "3-D", kWidth, kHeight, o.moves, changed, before.c_str());
    std::printf("TIMES {\"move_to_line_avg\": %.4f, \"move_to_line_max\": %.4f, \"picture_avg\": %.4f}\n",
                total / o.moves, worst, pictures / o.moves);
    std::printf("target: under %.0f ms a move: %s\n", kTargetSeconds * 1000,
                total / o.moves < kTargetSeconds ? "met" : "NOT met");
    control->Destroy();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!Parse(argc, argv, options)) {
        std::fprintf(stderr, "usage: tracer_bench [N] [--moves K] [--view 2d|3d]\n");
        return 2;
    }
    try {
        return Run(options);
    } catch (const ComError& e) {
        std::fprintf(stderr, "tracer_bench: %s\n", e.what());
        return 1;
    }
}
