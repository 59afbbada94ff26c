// Loading and binding a big grid, against the cost of just reading its file.
//
//   load_bind_bench [SIZE] [ROUNDS]      (default 4096 x 4096, 5 rounds)
//
// Prints, for a SIZE x SIZE grid saved as .3do:
//  - time: reading the file's bytes into new memory in one pass, and loading it
//    into a data object plus binding it to a graph object (sizes, preview,
//    shown range); best of ROUNDS each, warm page cache for both, and the
//    ratio (target: at most 2);
//  - peak memory: the rise of the peak resident set above the process's
//    baseline while loading and binding, in a child process of its own, as a
//    multiple of the grid's bytes (target: at most 1.3);
//  - copies: whether putting a grid array into a data object shares its
//    storage (no copy) and how often the one-call factory copies.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "com/ClassRegistry.h"
#include "com/ComError.h"
#include "com/IPersist.h"
#include "dataobject/GraphDataClass.h"
#include "dataobject/GraphDataFactory.h"
#include "model/CGD_GraphObject.h"
#include "model/DetachedViewHost.h"

using namespace vexplot;
namespace fs = std::filesystem;

namespace {

double Seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Best(int rounds, const std::function<void()>& work) {
    double best = 1e300;
    for (int i = 0; i < rounds; ++i) best = std::min(best, Seconds(work));
    return best;
}

// A smooth field with some detail, so that the file is not trivially regular.
std::vector<double> MakeGrid(int32_t n) {
    std::vector<double> z(static_cast<size_t>(n) * n);
    for (int32_t ix = 0; ix < n; ++ix)
        for (int32_t iy = 0; iy < n; ++iy) {
            const double x = 6.0 * ix / n - 3.0, y = 6.0 * iy / n - 3.0;
            z[static_cast<size_t>(ix) * n + iy] = std::sin(3 * x) * std::cos(2 * y) + 0.1 * x * y;
        }
    return z;
}

void SaveGrid(const std::string& path, int32_t n) {
    const std::vector<double> z = MakeGrid(n);
    ComPtr<IGraphData> data = CreateGraphData(z, n, n);
    ThrowIfFailed(data.As<IPersistFile>()->Save(path.c_str(), false), IPersistFile::kIid, "saving the grid");
}

// Reads the whole file into new, uninitialised memory: the least any loader must do.
void ReadWholeFile(const std::string& path, size_t size) {
    auto buffer = std::make_unique_for_overwrite<char[]>(size);
    const int fd = open(path.c_str(), O_RDONLY);
    if (fd < 0) throw std::runtime_error("cannot open " + path);
    size_t done = 0;
    for (ssize_t got; (got = read(fd, buffer.get() + done, size - done)) > 0;) done += static_cast<size_t>(got);
    close(fd);
    if (done != size) throw std::runtime_error("short read of " + path);
}

// Loads and binds; returns the graph object's preview size so the work cannot be skipped.
int32_t LoadAndBind(const std::string& path) {
    ComPtr<IGraphData> data = LoadGraphData(path);
    ComPtr<DetachedViewHost> host = MakeComObject<DetachedViewHost>();
    CGD_GraphObject& graph = host->GetGraphObjects()->AddDataObject(data.Get(), host.Get(), false, false);
    const int32_t preview = graph.GetGeometry().previewXCount;
    host->GetGraphObjects()->Clear();
    return preview;
}

long StatusKilobytes(const char* field) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind(field, 0) == 0) return std::strtol(line.c_str() + std::strlen(field), nullptr, 10);
    return -1;
}

// Peak resident growth of `work`, in bytes, measured in a child process
// whose peak is reset first (clear_refs 5), so earlier work does not count.
long PeakGrowth(const std::function<void()>& work) {
    int pipeFds[2];
    if (pipe(pipeFds) != 0) return -1;
    const pid_t child = fork();
    if (child == 0) {
        close(pipeFds[0]);
        std::ofstream("/proc/self/clear_refs") << "5";
        const long baseline = StatusKilobytes("VmRSS:");
        work();
        const long growth = (StatusKilobytes("VmHWM:") - baseline) * 1024;
        (void)!write(pipeFds[1], &growth, sizeof growth);
        _exit(0);
    }
    close(pipeFds[1]);
    long growth = -1;
    if (read(pipeFds[0], &growth, sizeof growth) != sizeof growth) growth = -1;
    close(pipeFds[0]);
    waitpid(child, nullptr, 0);
    return growth;
}

void ReportCopies(int32_t n) {
    const std::vector<double> z = MakeGrid(n);
    ComPtr<IGraphData> data = CreateGraphData(z, n, n);  // copies the caller's span once
    SafeArray grid;
    data->GetData(&grid);
    RegisterGraphDataClass();
    ComPtr<IGraphData> other = CreateInstance<IGraphData>(CLSID_GraphData, CLSCTX_INPROC);
    other->PutData(grid);
    SafeArray back;
    other->GetData(&back);
    std::printf("copies:   CreateGraphData from a span copies once; PutData of an array %s\n",
                back.SharesStorageWith(grid) ? "shares its storage (0 copies)" : "COPIED it");
}

}  // namespace

int main(int argc, char** argv) {
    const int32_t n = argc > 1 ? std::atoi(argv[1]) : 4096;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
    const fs::path dir = fs::temp_directory_path() / ("vexplot-bench-" + std::to_string(getpid()));
    fs::create_directories(dir);
    const std::string path = (dir / "grid.3do").string();
    try {
        SaveGrid(path, n);
        const size_t fileBytes = fs::file_size(path);
        const double gridBytes = static_cast<double>(n) * n * sizeof(double);
        // Each round reads into fresh memory, as loading does: both pay for
        // the same page faults.
        const double read = Best(rounds, [&] { ReadWholeFile(path, fileBytes); });
        const double bind = Best(rounds, [&] { LoadAndBind(path); });
        std::printf("grid:     %d x %d, file %.1f MiB\n", n, n, fileBytes / 1048576.0);
        std::printf("time:     read bytes %.1f ms, load + bind %.1f ms, ratio %.2f (target <= 2)\n", read * 1e3,
                    bind * 1e3, bind / read);

        const long peak = PeakGrowth([&] { LoadAndBind(path); });
        const long peakRead = PeakGrowth([&] { ReadWholeFile(path, fileBytes); });
        std::printf("memory:   peak rise load + bind %.1f MiB = %.2f x grid bytes (target <= 1.3); "
                    "read bytes %.1f MiB\n", peak / 1048576.0, peak / gridBytes, peakRead / 1048576.0);
        ReportCopies(n);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "load_bind_bench: %s\n", e.what());
        fs::remove_all(dir);
        return 1;
    }
    fs::remove_all(dir);
    return 0;
}
