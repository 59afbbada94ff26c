// Exporting a big surface to every picture format, as a host does.
//
//   export_bench [N] [--keep DIR]
//
// Hands the N x N peaks grid (default 2048) to a control on the headless
// site with a 1024 x 768 view and exports the 3-D view to PNG, SVG, PDF
// and EMF at 1024 x 768 through ExportView, timing each export and
// measuring the file. Prints one line per format and one line
//   EXPORT {"png_s": s, "png_bytes": n, "svg_s": ..., "emf_bytes": n}
// With --keep the files stay in DIR (to open them in a viewer); otherwise
// they are written to the temporary directory and removed.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "PeaksGrid.h"
#include "com/ComError.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/HeadlessSite.h"
#include "dataobject/GraphDataClass.h"

using namespace vexplot;
using namespace vexplot::bench;

namespace {

constexpr int32_t kWidth = 1024;
constexpr int32_t kHeight = 768;

int Run(int32_t n, const std::string& keep) {
    RegisterGraphDataClass();
    HeadlessSite site(stderr);
    ComPtr<CUI_VexplotCtrl> control = MakeComObject<CUI_VexplotCtrl>();
    if (!control->Create(site, {0, 0, kWidth, kHeight})) {
        std::fprintf(stderr, "export_bench: no graph engine could be started; run `vexplot register` first\n");
        return 1;
    }
    control->ShowWindows(CUI_VexplotCtrl::wndAll, 0);
    ThrowIfFailed(control->SetData(MakePeaksData(n).Get()), IGraphData::kIid);
    control->SetGraphMode(0);
    site.Flush();

    const std::filesystem::path folder =
        keep.empty() ? std::filesystem::temp_directory_path() : std::filesystem::path(keep);
    std::string json;
    for (const char* format : {"png", "svg", "pdf", "emf"}) {
        const std::filesystem::path file = folder / ("export_bench_" + std::to_string(n) + "." + format);
        const auto start = std::chrono::steady_clock::now();
        const std::string error = control->ExportView(file.string(), kWidth, kHeight);
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (!error.empty()) {
            std::fprintf(stderr, "export_bench: %s\n", error.c_str());
            return 1;
        }
        const auto bytes = static_cast<unsigned long long>(std::filesystem::file_size(file));
        std::printf("%-4s %8.3f s %12llu bytes (%.2f MiB)  %s\n", format, seconds, bytes, bytes / 1048576.0,
                    file.c_str());
        char entry[128];
        std::snprintf(entry, sizeof(entry), "%s\"%s_s\": %.4f, \"%s_bytes\": %llu", json.empty() ? "" : ", ", format,
                      seconds, format, bytes);
        json += entry;
        if (keep.empty()) std::filesystem::remove(file);
    }
    control->Destroy();
    std::printf("grid %d x %d, picture %d x %d\nEXPORT {%s}\n", n, n, kWidth, kHeight, json.c_str());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    int32_t n = 2048;
    std::string keep;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--keep") && i + 1 < argc) keep = argv[++i];
        else if (std::atoi(argv[i]) >= 2) n = std::atoi(argv[i]);
        else {
            std::fprintf(stderr, "usage: export_bench [N] [--keep DIR]\n");
            return 2;
        }
    }
    try {
        return Run(n, keep);
    } catch (const ComError& e) {
        std::fprintf(stderr, "export_bench: %s\n", e.what());
        return 1;
    }
}
