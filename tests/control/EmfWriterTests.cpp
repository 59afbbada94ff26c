// The Enhanced Metafile writer, read back record by record as a reader of
// the format does.
#include <gtest/gtest.h>

#include <cstring>
#include <map>

#include "control/EmfWriter.h"

using namespace vexplot;

namespace {

uint32_t U32(const std::vector<uint8_t>& b, size_t at) {
    uint32_t v = 0;
    std::memcpy(&v, b.data() + at, 4);
    return v;
}
int32_t I32(const std::vector<uint8_t>& b, size_t at) { return static_cast<int32_t>(U32(b, at)); }

struct Record {
    size_t offset;
    uint32_t type, size;
};

ExportScene Sample() {
    ExportScene scene;
    scene.width = 300;
    scene.height = 200;
    scene.background = 0x102030;
    scene.items.emplace_back(ExportScene::Polygon{{{10, 10}, {50.25f, 10}, {50, 40}}, 0x0000FF, 0x0000FF, 0});
    // Beyond the 16-bit coordinates of the short polygon record.
    scene.items.emplace_back(ExportScene::Polygon{{{0, 0}, {9000, 0}, {9000, 5}}, 0x00FF00, 0xFF0000, 2});
    scene.items.emplace_back(ExportScene::Polyline{{{1, 1}, {100, 150}, {200, 20}}, 0xFF0000, 1});
    FontDescription font{};
    std::strcpy(font.face, "Arial");
    font.height = -12;
    scene.items.emplace_back(ExportScene::Text{"2.5x10\\SUP-3", 100, 100, SceneAnchor::Center, font, 0});
    scene.items.emplace_back(ExportScene::Image{5, 6, 30, 20, 3, 2, {1, 2, 3, 4, 5, 6}});
    return scene;
}

TEST(EmfWriterTest, HeaderBoundsFrameAndEveryRecordAreWellFormed) {
    const std::vector<uint8_t> emf = EmfWriter::Write(Sample());
    ASSERT_GE(emf.size(), 108u);

    // The header: type, bounds in device units (4 per pixel), the frame in
    // hundredths of a millimetre at 96 dpi, signature, the file's size and
    // record count, and a reference device of the picture's size.
    EXPECT_EQ(U32(emf, 0), emr::kHeader);
    EXPECT_EQ(U32(emf, 4), 108u + 2 * 14);  // with its UTF-16 description
    EXPECT_EQ(I32(emf, 8), 0);
    EXPECT_EQ(I32(emf, 16), 300 * 4 - 1);
    EXPECT_EQ(I32(emf, 20), 200 * 4 - 1);
    EXPECT_EQ(I32(emf, 32), 7938 - 1);  // 300 px at 96 dpi = 79.375 mm
    EXPECT_EQ(I32(emf, 36), 5292 - 1);
    EXPECT_EQ(U32(emf, 40), emr::kSignature);
    EXPECT_EQ(U32(emf, 44), 0x10000u);
    EXPECT_EQ(U32(emf, 48), emf.size());
    EXPECT_EQ(I32(emf, 72), 1200);
    EXPECT_EQ(I32(emf, 76), 800);
    EXPECT_EQ(U32(emf, 64), 108u);  // description offset

    std::vector<Record> records;
    for (size_t at = 0; at < emf.size();) {
        const Record r{at, U32(emf, at), U32(emf, at + 4)};
        ASSERT_GE(r.size, 8u) << "record at " << at;
        ASSERT_EQ(r.size % 4, 0u) << "record at " << at;
        ASSERT_LE(at + r.size, emf.size());
        records.push_back(r);
        at += r.size;
    }
    EXPECT_EQ(U32(emf, 52), records.size());
    ASSERT_EQ(records.back().type, emr::kEof);
    EXPECT_EQ(records.back().size, 20u);
    EXPECT_EQ(U32(emf, records.back().offset + 16), 20u);

    std::map<uint32_t, std::vector<Record>> byType;
    for (const Record& r : records) byType[r.type].push_back(r);
    // The background page and the small triangle in 16-bit points, the
    // wide one in 32-bit points; each polygon's size is its points'.
    ASSERT_EQ(byType[emr::kPolygon16].size(), 2u);
    ASSERT_EQ(byType[emr::kPolygon].size(), 1u);
    const Record& small = byType[emr::kPolygon16][1];
    EXPECT_EQ(U32(emf, small.offset + 24), 3u);
    EXPECT_EQ(small.size, 28u + 3 * 4);
    EXPECT_EQ(static_cast<int16_t>(U32(emf, small.offset + 32)), 201);  // 50.25 px, rounded in quarter pixels
    const Record& wide = byType[emr::kPolygon][0];
    EXPECT_EQ(wide.size, 28u + 3 * 8);
    EXPECT_EQ(I32(emf, wide.offset + 36), 36000);
    EXPECT_GE(I32(emf, wide.offset + 16), 36000);  // bounds hold the points
    EXPECT_EQ(byType[emr::kPolyline16].size(), 1u);

    // Text: the normal run and the superscript, each with its string and
    // one advance per character inside the record.
    ASSERT_EQ(byType[emr::kExtTextOutW].size(), 2u);
    for (const Record& r : byType[emr::kExtTextOutW]) {
        const uint32_t chars = U32(emf, r.offset + 44), text = U32(emf, r.offset + 48), dx = U32(emf, r.offset + 72);
        EXPECT_LE(text + chars * 2, dx);
        EXPECT_EQ(dx + chars * 4, r.size);
    }
    EXPECT_EQ(U32(emf, byType[emr::kExtTextOutW][0].offset + 44), 6u);  // "2.5x10"
    EXPECT_EQ(byType[emr::kExtCreateFontIndirectW].size(), 2u);

    // The image: header and rows inside the record, 24-bit rows padded to 4 bytes.
    ASSERT_EQ(byType[emr::kStretchDiBits].size(), 1u);
    const Record& image = byType[emr::kStretchDiBits][0];
    const uint32_t bmi = U32(emf, image.offset + 48), bits = U32(emf, image.offset + 56);
    EXPECT_EQ(I32(emf, image.offset + bmi + 4), 3);
    EXPECT_EQ(U32(emf, image.offset + 60), 2u * 12u);
    EXPECT_EQ(bits + 2 * 12, image.size);
}

}  // namespace
