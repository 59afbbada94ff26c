// The view leaving the control: picture files (raster at a chosen size, or
// drawings), the clipboard and the printer, from the menu, from automation
// (SetMetaFileName, Print) and from C++ and Python hosts (ExportView).
#include <algorithm>
#include <new>

#include "com/ComError.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "control/ImageFile.h"
#include "control/SceneFile.h"
#include "control/SvgWriter.h"
#include "ui/ExportSizeChooser.h"

namespace vexplot {

namespace {

constexpr const char* kCaption = "Vexplot";
// File errors of automation: "Path/File access error".
constexpr HRESULT kErrorFileAccess = MakeHResult(0x800A004B);
// Pixels a side of one raster tile when a picture is rendered in parts.
constexpr int32_t kTileSide = 2048;

// Why a picture of width x height cannot be exported; empty when it can.
std::string SizeError(int32_t width, int32_t height) {
    if (width > 0 && height > 0 && width <= CUI_VexplotCtrl::kMaxExportSide &&
        height <= CUI_VexplotCtrl::kMaxExportSide)
        return {};
    return "The picture size " + std::to_string(width) + " x " + std::to_string(height) +
           " cannot be exported: each side must be 1 to " + std::to_string(CUI_VexplotCtrl::kMaxExportSide) +
           " pixels.";
}

// Renders width x height into `pixels` in tiles of at most `side` pixels a
// side, each the pixels the whole would have there.
HRESULT RenderTiles(IGraphSceneExport& source, int32_t width, int32_t height, int32_t side,
                    std::vector<uint32_t>& pixels) {
    for (int32_t top = 0; top < height; top += side) {
        for (int32_t left = 0; left < width; left += side) {
            const int32_t w = std::min(side, width - left), h = std::min(side, height - top);
            const ImageBuffer part{pixels.data() + static_cast<size_t>(top) * size_t(width) + size_t(left), w, h,
                                   width, 0};
            if (const HRESULT hr = source.RenderTile(&part, width, height, left, top); FAILED(hr)) return hr;
        }
    }
    return S_OK;
}

}  // namespace

ComPtr<IGraphSceneExport> CUI_VexplotCtrl::SceneExport() {
    if (!currentView_) return {};
    if (Is3DViewCurrent()) return GetView3D() ? ComPtr<IGraphView3D>(GetView3D()).As<IGraphSceneExport>() : nullptr;
    return GetDevice2D() ? ComPtr<IGraphDevice2D>(GetDevice2D()).As<IGraphSceneExport>() : nullptr;
}

bool CUI_VexplotCtrl::BuildExportScene(int32_t width, int32_t height, ExportScene& scene, std::string* error) {
    const ComPtr<IGraphSceneExport> source = SceneExport();
    if (!source) {
        if (error) *error = "There is no view to export.";
        return false;
    }
    scene = ExportScene{};
    scene.width = width;
    scene.height = height;
    scene.background = settings_.backgroundColor & 0xFFFFFF;
    SceneCollector collector(scene);
    HRESULT hr = E_FAIL;
    AtPictureSize(width, height, [&] { hr = source->BuildScene(width, height, &collector); });
    if (FAILED(hr)) {
        if (error) *error = "The view could not be drawn (" + HResultText(hr) + ").";
        return false;
    }
    return true;
}

bool CUI_VexplotCtrl::RenderView(int32_t width, int32_t height, std::vector<uint32_t>& pixels, std::string* error) {
    const ComPtr<IGraphSceneExport> source = SceneExport();
    if (!source) {
        if (error) *error = "There is no view to export.";
        return false;
    }
    try {
        pixels.assign(static_cast<size_t>(width) * static_cast<size_t>(height), 0);
    } catch (const std::bad_alloc&) {
        if (error) *error = "There is not enough memory for a picture of this size.";
        return false;
    }
    int32_t limit = 0;
    if (FAILED(source->GetMaxRenderSize(&limit)) || limit < 1) limit = kTileSide;
    // A picture beyond the device's limit, or merely large, is rendered in
    // tiles: each is the same pixels the whole would have there, and the
    // device's framebuffer stays small.
    const int32_t side = std::min(limit, kTileSide);
    HRESULT hr = S_OK;
    AtPictureSize(width, height, [&] { hr = RenderTiles(*source, width, height, side, pixels); });
    if (FAILED(hr)) {
        if (error) *error = "The view could not be rendered (" + HResultText(hr) + ").";
        return false;
    }
    return true;
}

void CUI_VexplotCtrl::AtPictureSize(int32_t width, int32_t height, const std::function<void()>& draw) {
    IGraphDevice2D* device = Is3DViewCurrent() ? nullptr : GetDevice2D();
    const PixelRect plot = GetPlotRect();
    const int32_t windowWidth = plot.right - plot.left, windowHeight = plot.bottom - plot.top;
    if (!device || (width == windowWidth && height == windowHeight)) {
        draw();
        return;
    }
    device->Resize(width, height);
    DrawAnnotations();
    draw();
    device->Resize(windowWidth, windowHeight);
    DrawAnnotations();
}

std::string CUI_VexplotCtrl::ExportView(const std::string& path, int32_t width, int32_t height,
                                        const std::string& fallback) {
    if (path.empty()) return "No file name was given.";
    ExportFormat format = SceneFile::FormatOf(path);
    if (format == ExportFormat::Unknown && !fallback.empty()) format = SceneFile::FormatOf(fallback);
    if (format == ExportFormat::Unknown)
        return "Cannot export to " + path + ": the extension names no picture format (.png, .bmp, .svg, .pdf, .emf).";
    if (width == 0 && height == 0) {
        const PixelRect plot = GetPlotRect();
        width = plot.right - plot.left;
        height = plot.bottom - plot.top;
    }
    if (std::string error = SizeError(width, height); !error.empty()) return error;
    std::string error;
    if (SceneFile::IsVector(format)) {
        ExportScene scene;
        if (!BuildExportScene(width, height, scene, &error)) return error;
        return SceneFile::Save(path, format, scene);
    }
    std::vector<uint32_t> pixels;
    if (!RenderView(width, height, pixels, &error)) return error;
    const ImageFile::Image image{pixels, width, height};
    return format == ExportFormat::Png ? ImageFile::SavePng(path, image) : ImageFile::SaveBmp(path, image);
}

// -- automation --

void CUI_VexplotCtrl::SetMetaFileName(const std::string& file) {
    metaFileName_ = file;
    if (file.empty()) return;
    const std::string error = ExportView(file, 0, 0, ".emf");
    if (!error.empty()) FireError(kErrorFileAccess, error.c_str());
}

void CUI_VexplotCtrl::Print() {
    std::string error;
    PrintView(false, &error);
    if (!error.empty()) FireError(kErrorFileAccess, error.c_str());
}

// -- commands --

void CUI_VexplotCtrl::AddExportCommands() {
    auto hasView = [this] { return CommandTable::EntryState{currentView_ != 0 && SceneExport(), false}; };
    commands_.Add(cmd::kExportBmp, hasView, [this] { ExportThroughChooser(false); });
    commands_.Add(cmd::kExportEmf, hasView, [this] { ExportThroughChooser(true); });
    commands_.Add(cmd::kCopyToClipboard, hasView, [this] { CopyViewToClipboard(); });
    commands_.Add(cmd::kPrintSetup, [this] { return CommandTable::EntryState{site_ != nullptr, false}; },
                  [this] { site_->SetUpPrinter(); });
    commands_.Add(cmd::kPrint, hasView, [this] {
        std::string error;
        PrintView(true, &error);
        if (!error.empty()) site_->MessageBox(error, kCaption, MessageButtons::Ok);
    });
}

void CUI_VexplotCtrl::ExportThroughChooser(bool metafile) {
    ExportSizeChooser chooser = metafile ? ExportSizeChooser::ForMetafile() : ExportSizeChooser::ForBitmap();
    if (site_->RunDialog(chooser) != kAnswerOk || !chooser.Chosen()) return;
    const ExportSizeChooser::Result& chosen = *chooser.Chosen();
    // The size is the user's: 0 here is refused, not the view's size.
    std::string error = SizeError(chosen.width, chosen.height);
    if (error.empty()) error = ExportView(chosen.fileName, chosen.width, chosen.height, metafile ? ".emf" : ".bmp");
    if (!error.empty()) site_->MessageBox(error, kCaption, MessageButtons::Ok);
}

void CUI_VexplotCtrl::CopyViewToClipboard() {
    const PixelRect plot = GetPlotRect();
    const int32_t width = plot.right - plot.left, height = plot.bottom - plot.top;
    std::string error;
    std::vector<uint32_t> pixels;
    ExportScene scene;
    if (width <= 0 || height <= 0) error = "There is no view to copy.";
    else if (RenderView(width, height, pixels, &error) && BuildExportScene(width, height, scene, &error)) {
        const ImageBuffer image{pixels.data(), width, height, width, 0};
        site_->CopyToClipboard(image, SvgWriter::Write(scene), &error);
    }
    if (!error.empty()) site_->MessageBox(error, kCaption, MessageButtons::Ok);
}

void CUI_VexplotCtrl::PrintView(bool askUser, std::string* error) {
    if (!site_ || !SceneExport()) {
        if (error) *error = "There is no view to print.";
        return;
    }
    // The page is drawn from the scene built for its own size, so that the
    // axes and texts are laid out for the paper rather than stretched from
    // the window's proportions.
    auto draw = [this](int32_t width, int32_t height, ExportScene& scene) {
        return BuildExportScene(std::clamp(width, 1, kMaxExportSide), std::clamp(height, 1, kMaxExportSide), scene,
                                nullptr);
    };
    site_->PrintScene(draw, askUser, error);
}

}  // namespace vexplot
