#include "InfoCommand.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <string>

#include "com/ComError.h"
#include "com/FileStream.h"
#include "com/Variant.h"
#include "dataobject/GraphDataFactory.h"
#include "dataobject/GraphStreamFormat.h"
#include "model/CGD_GraphObject.h"
#include "model/DetachedViewHost.h"
#include "model/RecordInspector.h"

namespace vexplot {

namespace {

void PrintScale(const char* axis, const std::string& label, CGD_GraphObject::ScaleEnds ends) {
    std::printf("  %-8s %-14s %g .. %g\n", axis, ("\"" + label + "\"").c_str(), ends.first, ends.last);
}

void PrintPreview(const CGD_GraphObject::Geometry& g) {
    if (g.previewXCount == 0) {
        std::printf("  preview  none (the grid is drawn whole)\n");
        return;
    }
    std::printf("  preview  %d x %d, every %d x %d cells\n", g.previewXCount, g.previewYCount, g.previewXStep,
                g.previewYStep);
}

void PrintGraph(const CGD_GraphObject& graph, const DetachedViewHost& host) {
    const CGD_GraphObject::Geometry& g = graph.GetGeometry();
    int64_t missing = 0;
    if (graph.Access()) graph.Access()->GetMissingCount(&missing);
    std::printf("  name     %s\n", graph.Name().c_str());
    std::printf("  grid     %d x %d (X by Y), %lld values, %lld missing\n", g.xCount, g.yCount,
                static_cast<long long>(g.xCount) * g.yCount, static_cast<long long>(missing));
    PrintScale("X", host.XLabel(), graph.GetXRange());
    PrintScale("Y", host.YLabel(), graph.GetYRange());
    std::printf("  %-8s %-14s %g .. %g\n", "Z", ("\"" + host.ZLabel() + "\"").c_str(), graph.ZMinClamp(),
                graph.ZMaxClamp());
    PrintPreview(g);
}

bool DescribeDataFile(const char* path) {
    std::printf("%s\n", path);
    try {
        ComPtr<IGraphData> data = LoadGraphData(path);
        ComPtr<DetachedViewHost> host = MakeComObject<DetachedViewHost>();
        CGD_GraphObject& graph =
            host->GetGraphObjects()->AddDataObject(data.Get(), host.Get(), false, /*keepFullRange=*/true);
        graph.UpdateEngine();  // hands the labels to the host, as the control would see them
        PrintGraph(graph, *host);
        host->GetGraphObjects()->Clear();
        return true;
    } catch (const ComError& e) {
        // The loader's own description names the file and the fault; the
        // result code only matters when there is none.
        std::fprintf(stderr, "vexplot: %s\n", e.Description().empty() ? e.what() : e.Description().c_str());
    } catch (const std::exception& e) {
        std::fprintf(stderr, "vexplot: %s: %s\n", path, e.what());
    }
    return false;
}

// A data file begins with the data object's magic or is named as one of the
// text and NumPy forms; anything else is taken for an archive of records.
bool IsDataFile(const char* path, IStream* stream) {
    uint8_t magic[sizeof GraphStreamFormat::kMagic] = {};
    uint32_t got = 0;
    stream->Read(magic, sizeof magic, &got);
    stream->Seek(0, STREAM_SEEK_SET, nullptr);
    if (got == sizeof magic && std::memcmp(magic, GraphStreamFormat::kMagic, sizeof magic) == 0) return true;
    std::string extension = std::strrchr(path, '.') ? std::strrchr(path, '.') : "";
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension == ".csv" || extension == ".txt" || extension == ".dat" || extension == ".npy";
}

bool DescribeArchive(const char* path, IStream* stream) {
    const RecordInspector::Report report = RecordInspector::Inspect(stream);
    if (report.records.empty() && !report.error.empty()) {
        std::fprintf(stderr, "vexplot: %s: neither a data file nor an archive of records: %s\n", path,
                     report.error.c_str());
        return false;
    }
    std::fputs(RecordInspector::Format(report, path).c_str(), stdout);
    if (report.error.empty()) return true;
    std::fprintf(stderr, "vexplot: %s: %s\n", path, report.error.c_str());
    return false;
}

bool DescribeFile(const char* path) {
    HRESULT hr = S_OK;
    ComPtr<FileStream> stream = FileStream::Open(path, FileStream::Mode::Read, &hr);
    // A file that cannot be opened is reported by the data loader, which names it.
    if (!stream || IsDataFile(path, stream.Get())) return DescribeDataFile(path);
    return DescribeArchive(path, stream.Get());
}

}  // namespace

int RunInfoCommand(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: vexplot info FILE...\n");
        return 2;
    }
    bool allLoaded = true;
    for (int i = 1; i < argc; ++i) allLoaded = DescribeFile(argv[i]) && allLoaded;
    return allLoaded ? 0 : 1;
}

}  // namespace vexplot
