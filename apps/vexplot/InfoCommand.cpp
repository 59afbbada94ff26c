#include "InfoCommand.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <string>

#include "com/ComError.h"
#include "com/FileStream.h"
#include "com/Variant.h"
#include "control/ControlSerializer.h"
#include "control/ControlSettings.h"
#include "dataobject/GraphDataFactory.h"
#include "dataobject/GraphStreamFormat.h"
#include "model/CGD_GraphObject.h"
#include "model/DetachedViewHost.h"
#include "model/CArchive.h"
#include "model/RecordInspector.h"
#include "TerminalText.h"

namespace vexplot {

namespace {

// A text from the file in quotes, escaped for the terminal. (Built by
// appending: GCC 12 warns falsely on "\"" + string at -O3.)
std::string Quoted(const std::string& text) {
    std::string quoted(1, '"');
    quoted.append(ForTerminal(text));
    quoted.push_back('"');
    return quoted;
}

void PrintScale(const char* axis, const std::string& label, CGD_GraphObject::ScaleEnds ends) {
    std::printf("  %-8s %-14s %g .. %g\n", axis, Quoted(label).c_str(), ends.first, ends.last);
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
    std::printf("  name     %s\n", ForTerminal(graph.Name()).c_str());
    std::printf("  grid     %d x %d (X by Y), %lld values, %lld missing\n", g.xCount, g.yCount,
                static_cast<long long>(g.xCount) * g.yCount, static_cast<long long>(missing));
    PrintScale("X", host.XLabel(), graph.GetXRange());
    PrintScale("Y", host.YLabel(), graph.GetYRange());
    if (graph.HasZExtent())
        std::printf("  %-8s %-14s %g .. %g\n", "Z", Quoted(host.ZLabel()).c_str(),
                    graph.ZMinClamp(), graph.ZMaxClamp());
    else
        std::printf("  %-8s %-14s no finite value\n", "Z", Quoted(host.ZLabel()).c_str());
    PrintPreview(g);
}

bool DescribeDataFile(const char* path) {
    std::printf("%s\n", ForTerminal(path).c_str());
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
        const std::string why = e.Description().empty() ? HResultWords(e.Code()) : e.Description();
        std::fprintf(stderr, "vexplot: %s\n", ForTerminal(why).c_str());
    } catch (const std::exception& e) {
        std::fprintf(stderr, "vexplot: %s: %s\n", ForTerminal(path).c_str(), ForTerminal(e.what()).c_str());
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

// A plot file saved by the control: its header and settings block, then the
// records the inspector knows (palette, graph objects, axes); the window
// blocks and the camera after them are the control's own and not listed.
bool DescribePlotFile(const char* path, IStream* stream) {
    constexpr int kPlotRecords = 3;
    ControlSerializer::Header header;
    ControlSettings settings;
    CUI_VexplotCtrl::WindowVisibility windows;
    try {
        CArchive archive(stream, CArchive::Mode::Load);
        header = ControlSerializer::ReadHeader(archive);
        ControlSerializer::ReadSettings(archive, settings, windows);
        archive.Flush();
    } catch (const std::exception& e) {
        std::fprintf(stderr, "vexplot: %s: not a readable plot file: %s\n", ForTerminal(path).c_str(),
                     ForTerminal(e.what()).c_str());
        return false;
    }
    std::printf("%s: plot file, version %u.%u, %d x %d pixels, caption \"%s\"\n", ForTerminal(path).c_str(),
                header.version >> 16, header.version & 0xFFFF, header.width, header.height,
                ForTerminal(header.caption).c_str());
    for (size_t i = 0; i < settings.axes.size(); ++i) {
        const ControlSettings::Axis& a = settings.axes[i];
        std::printf("  %c axis   \"%s\", %d major and %d minor ticks, scale format %d%s\n", "XYZ"[i],
                    ForTerminal(a.label).c_str(), a.majorTicks, a.minorTicks, a.scaleFormat,
                    a.displayMode == 1 ? ", dB" : "");
    }
    const RecordInspector::Report report = RecordInspector::Inspect(stream, kPlotRecords);
    std::fputs(RecordInspector::Format(report, "  records").c_str(), stdout);
    if (report.error.empty()) return true;
    std::fprintf(stderr, "vexplot: %s: %s\n", ForTerminal(path).c_str(), ForTerminal(report.error).c_str());
    return false;
}

bool DescribeArchive(const char* path, IStream* stream) {
    uint64_t size = 0;
    if (SUCCEEDED(stream->Stat(&size)) && size == 0) {
        std::fprintf(stderr, "vexplot: %s: the file is empty\n", ForTerminal(path).c_str());
        return false;
    }
    const RecordInspector::Report report = RecordInspector::Inspect(stream);
    if (report.records.empty() && !report.error.empty()) {
        std::fprintf(stderr, "vexplot: %s: neither a data file nor an archive of records: %s\n",
                     ForTerminal(path).c_str(), ForTerminal(report.error).c_str());
        return false;
    }
    std::fputs(RecordInspector::Format(report, ForTerminal(path)).c_str(), stdout);
    if (report.error.empty()) return true;
    std::fprintf(stderr, "vexplot: %s: %s\n", ForTerminal(path).c_str(), ForTerminal(report.error).c_str());
    return false;
}

bool IsPlotFile(const char* path) {
    const char* dot = std::strrchr(path, '.');
    return dot && (std::strcmp(dot, ".vxg") == 0 || std::strcmp(dot, ".VXG") == 0);
}

bool DescribeFile(const char* path) {
    HRESULT hr = S_OK;
    ComPtr<FileStream> stream = FileStream::Open(path, FileStream::Mode::Read, &hr);
    // A file that cannot be opened is reported by the data loader, which names it.
    if (!stream || IsDataFile(path, stream.Get())) return DescribeDataFile(path);
    if (IsPlotFile(path)) return DescribePlotFile(path, stream.Get());
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
