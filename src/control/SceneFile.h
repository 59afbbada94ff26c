#pragma once
#include <string>

#include "engine/ExportScene.h"

namespace vexplot {

// The picture formats an export writes, chosen by the file's extension.
enum class ExportFormat { Unknown, Png, Bmp, Svg, Pdf, Emf };

class SceneFile {
public:
    // By the extension of `path`, either case.
    static ExportFormat FormatOf(const std::string& path);
    static bool IsVector(ExportFormat format) {
        return format == ExportFormat::Svg || format == ExportFormat::Pdf || format == ExportFormat::Emf;
    }
    // Writes `scene` as SVG, PDF or EMF. The bytes go to a temporary file
    // beside `path` that replaces it only when complete, so a failure
    // leaves an existing file as it was. Returns an empty string on
    // success, else what went wrong, naming the file.
    static std::string Save(const std::string& path, ExportFormat format, const ExportScene& scene);
};

}  // namespace vexplot
