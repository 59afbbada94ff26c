// Many annotations on a big surface while the view moves.
//
//   annotation_bench N [--markers M] [--regions R] [--frames K]
//
// Hands the peaks grid (see PeaksGrid.h) at N x N to a control on the
// headless site at 1024 x 768, places M markers on the surface (default
// 200) and R regions (default 50) through the annotation collections'
// code path, then times K paints of the 3-D view while it turns (3 degrees
// a frame, the moving level of detail, every annotation drawn and tested
// against the surface's depth), K paints at rest, and K paints of the flat
// view while it is panned. Prints one line:
//   TIMES {"moving_3d_avg": s, "rest_3d_avg": s, "flat_pan_avg": s,
//          "moving_3d_no_annotations_avg": s}
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>

#include "PeaksGrid.h"
#include "annotations/AnnotationActions.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/HeadlessSite.h"
#include "dataobject/GraphDataClass.h"

using namespace vexplot;
using namespace vexplot::bench;

namespace {

double Seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Turning(CUI_VexplotCtrl& control, HeadlessSite& site, int frames, bool moving) {
    double total = 0.0;
    if (moving) control.BeginViewMotion();
    for (int k = 0; k < frames; ++k)
        total += Seconds([&] {
            control.SetCamAzim(control.GetCamAzim() + 3.0f);
            site.Flush();
        });
    if (moving) control.EndViewMotion();
    site.Flush();
    return total / frames;
}

}  // namespace

int main(int argc, char** argv) {
    int32_t n = 2048;
    int markers = 200, regions = 50, frames = 10;
    if (argc > 1) n = std::atoi(argv[1]);
    for (int i = 2; i + 1 < argc; i += 2) {
        if (!std::strcmp(argv[i], "--markers")) markers = std::atoi(argv[i + 1]);
        else if (!std::strcmp(argv[i], "--regions")) regions = std::atoi(argv[i + 1]);
        else if (!std::strcmp(argv[i], "--frames")) frames = std::atoi(argv[i + 1]);
    }
    if (n < 2 || frames < 1 || markers < 0 || regions < 0) {
        std::fprintf(stderr, "usage: annotation_bench N [--markers M] [--regions R] [--frames K]\n");
        return 2;
    }
    RegisterGraphDataClass();
    HeadlessSite site(stderr);
    ComPtr<CUI_VexplotCtrl> control = MakeComObject<CUI_VexplotCtrl>();
    if (!control->Create(site, {0, 0, 1024, 768})) {
        std::fprintf(stderr, "annotation_bench: no graph engine could be started; run `vexplot register` first\n");
        return 1;
    }
    control->ShowWindows(CUI_VexplotCtrl::wndAll, 0);
    if (control->SetData(MakePeaksData(n).Get()) != S_OK) return 1;
    site.Flush();
    const double withoutAnnotations = Turning(*control, site, frames, true);

    // Spread over [-3, 3]^2 on the surface, as a user places them.
    for (int i = 0; i < markers; ++i) {
        const double x = -2.9 + 5.8 * ((i * 37) % markers) / markers, y = -2.9 + 5.8 * i / markers;
        AnnotationActions::AddMarker(*control, x, y, Peaks(x, y));
    }
    for (int i = 0; i < regions; ++i) {
        const double x = -3 + 5.5 * ((i * 13) % regions) / regions, y = -3 + 5.5 * i / regions;
        AnnotationActions::AddRegion(*control, x, y, -2, x + 0.4, y + 0.3, 0);
    }
    site.Flush();
    const double moving = Turning(*control, site, frames, true);
    const double rest = Turning(*control, site, frames, false);

    control->SetViewMode(0);
    site.Flush();
    double flat = 0.0;
    for (int k = 0; k < frames; ++k)
        flat += Seconds([&] {
            control->PanBy(4, 0);
            site.Flush();
        });
    std::printf("grid %d x %d, %d markers, %d regions\n", n, n, markers, regions);
    std::printf("TIMES {\"moving_3d_avg\": %.4f, \"rest_3d_avg\": %.4f, \"flat_pan_avg\": %.4f, "
                "\"moving_3d_no_annotations_avg\": %.4f}\n",
                moving, rest, flat / frames, withoutAnnotations);
    control->Destroy();
    return 0;
}
