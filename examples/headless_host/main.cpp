// A batch host: computes a grid, draws it through the control without a
// window or a display, and saves the picture. `headless_host [OUT.png]`
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "vexplot/HeadlessSite.h"

int main(int argc, char** argv) {
    const std::string output = argc > 1 ? argv[1] : "headless_host.png";
    std::printf("Vexplot %s\n", vexplot::Version());

    // A settings store of its own, in memory: what this job sets does not
    // become the defaults of the user's next plot. The engine that came with
    // the library is registered on the first run.
    auto store = vexplot::SettingsStore::OpenUnshared(":memory:");
    const vexplot::EngineSetupResult engine = vexplot::RegisterShippedEngine(store);
    if (!engine.message.empty()) std::fprintf(stderr, "%s\n", engine.message.c_str());

    vexplot::HeadlessSite site;
    auto control = vexplot::MakeComObject<vexplot::CUI_VexplotCtrl>(nullptr, store);
    if (!control->Create(site, {0, 0, 800, 600})) return 1;
    control->ShowWindows(vexplot::CUI_VexplotCtrl::wndAll, 0);  // the view alone

    // A ripple, z(x, y) = cos(r) / (1 + r / 4), value (ix, iy) at ix * ny + iy.
    constexpr int nx = 120;
    constexpr int ny = 90;
    std::vector<double> xs(nx), ys(ny), z(nx * ny);
    for (int ix = 0; ix < nx; ++ix) xs[ix] = -12.0 + 24.0 * ix / (nx - 1);
    for (int iy = 0; iy < ny; ++iy) ys[iy] = -9.0 + 18.0 * iy / (ny - 1);
    for (int ix = 0; ix < nx; ++ix)
        for (int iy = 0; iy < ny; ++iy) {
            const double r = std::hypot(xs[ix], ys[iy]);
            z[ix * ny + iy] = std::cos(r) / (1.0 + r / 4.0);
        }
    auto data = vexplot::CreateGraphData(z, nx, ny, xs, ys, "X", "Y", "Amplitude");
    control->SetData(data.Get());

    const auto bitmap = static_cast<uint32_t>(control->RetrieveBitmap());
    std::vector<uint32_t> pixels;
    int32_t width = 0;
    int32_t height = 0;
    const bool drawn = bitmap != 0 && site.ReadBitmap(bitmap, &pixels, &width, &height);
    if (bitmap) site.DeleteBitmap(bitmap);
    control->Destroy();
    if (!drawn) {
        std::fprintf(stderr, "headless_host: the view could not be drawn\n");
        return 1;
    }
    const std::string error = vexplot::ImageFile::Save(output, {pixels, width, height});
    if (!error.empty()) {
        std::fprintf(stderr, "headless_host: %s\n", error.c_str());
        return 1;
    }
    std::printf("%s: %d x %d\n", output.c_str(), width, height);
    return 0;
}
