#pragma once
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "engine/IGraphSceneExport.h"

namespace vexplot {

// One picture as a list of primitives in drawing order, the form every
// vector writer (SVG, PDF, EMF), the clipboard and the printer consume.
// Coordinates are in the scene's pixels, y down.
struct ExportScene {
    struct Polygon {
        std::vector<ScenePoint> points;
        uint32_t fill;
        uint32_t stroke;
        float strokeWidth;  // 0: no outline
    };
    struct Polyline {
        std::vector<ScenePoint> points;
        uint32_t color;
        float width;
    };
    struct Text {
        std::string text;
        float x, y;
        SceneAnchor anchor;
        FontDescription font;
        uint32_t color;
    };
    struct Image {
        float left, top, width, height;
        int32_t pixelWidth = 0, pixelHeight = 0;
        std::vector<uint32_t> pixels;  // 0x00BBGGRR, rows top first
    };
    using Item = std::variant<Polygon, Polyline, Text, Image>;

    int32_t width = 0;
    int32_t height = 0;
    uint32_t background = 0xFFFFFF;
    std::vector<Item> items;
};

// Collects what an engine hands out into an ExportScene.
class SceneCollector final : public ISceneSink {
public:
    explicit SceneCollector(ExportScene& scene) : scene_(scene) {}

    void AddPolygon(uint32_t count, const ScenePoint* points, uint32_t fill, uint32_t stroke,
                    float strokeWidth) override {
        if (count < 3 || !points) return;
        scene_.items.emplace_back(ExportScene::Polygon{{points, points + count}, fill, stroke, strokeWidth});
    }
    void AddPolyline(uint32_t count, const ScenePoint* points, uint32_t color, float width) override {
        if (count < 2 || !points) return;
        scene_.items.emplace_back(ExportScene::Polyline{{points, points + count}, color, width});
    }
    void AddText(const char* text, float x, float y, SceneAnchor anchor, const FontDescription* font,
                 uint32_t color) override {
        if (!text || !*text || !font) return;
        FontDescription copy = *font;
        copy.face[sizeof(copy.face) - 1] = '\0';
        scene_.items.emplace_back(ExportScene::Text{text, x, y, anchor, copy, color});
    }
    void AddImage(float left, float top, float width, float height, const ImageBuffer* pixels) override {
        if (!pixels || !pixels->pixels || pixels->width <= 0 || pixels->height <= 0) return;
        ExportScene::Image image{left, top, width, height, pixels->width, pixels->height, {}};
        image.pixels.reserve(static_cast<size_t>(pixels->width) * static_cast<size_t>(pixels->height));
        for (int32_t y = 0; y < pixels->height; ++y) {
            const uint32_t* row = pixels->pixels + static_cast<size_t>(y) * static_cast<size_t>(pixels->stride);
            image.pixels.insert(image.pixels.end(), row, row + pixels->width);
        }
        scene_.items.emplace_back(std::move(image));
    }

private:
    ExportScene& scene_;
};

}  // namespace vexplot
