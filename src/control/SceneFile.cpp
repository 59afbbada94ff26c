#include "control/SceneFile.h"

#include <algorithm>
#include <cctype>

#include "com/AtomicFile.h"
#include "com/ComError.h"
#include "control/EmfWriter.h"
#include "control/PdfWriter.h"
#include "control/SvgWriter.h"

namespace vexplot {

ExportFormat SceneFile::FormatOf(const std::string& path) {
    const size_t dot = path.find_last_of('.');
    const size_t slash = path.find_last_of('/');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return ExportFormat::Unknown;
    std::string extension = path.substr(dot + 1);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (extension == "png") return ExportFormat::Png;
    if (extension == "bmp") return ExportFormat::Bmp;
    if (extension == "svg") return ExportFormat::Svg;
    if (extension == "pdf") return ExportFormat::Pdf;
    if (extension == "emf") return ExportFormat::Emf;
    return ExportFormat::Unknown;
}

std::string SceneFile::Save(const std::string& path, ExportFormat format, const ExportScene& scene) {
    if (!IsVector(format)) return "cannot write " + path + ": not a drawing format";
    try {
        WriteFileAtomically(path, [&](IStream& stream) {
            auto put = [&stream](const void* data, size_t size) {
                uint32_t written = 0;
                ThrowIfFailed(stream.Write(data, static_cast<uint32_t>(size), &written), IStream::kIid);
            };
            if (format == ExportFormat::Svg) {
                const std::string svg = SvgWriter::Write(scene);
                put(svg.data(), svg.size());
            } else {
                const std::vector<uint8_t> bytes =
                    format == ExportFormat::Pdf ? PdfWriter::Write(scene) : EmfWriter::Write(scene);
                put(bytes.data(), bytes.size());
            }
        });
        return {};
    } catch (const ComError& e) {
        return "cannot write " + path + ": " + (e.Description().empty() ? std::string(e.what()) : e.Description());
    } catch (const std::bad_alloc&) {
        return "cannot write " + path + ": out of memory";
    } catch (const std::exception& e) {
        return "cannot write " + path + ": " + e.what();
    }
}

}  // namespace vexplot
