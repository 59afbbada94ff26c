// The view leaving the widget: the drawing painted through Qt (printing and
// preview use the same painter) against the rendered picture, and the
// clipboard command.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QMimeData>
#include <QPainter>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "ShownWidgetTest.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "control/HeadlessSite.h"
#include "ui/ExportSizeChooser.h"
#include "qt/ScenePainter.h"
#include "qt/VexplotWidget.h"

namespace vexplot {
namespace {

class ExportCommandTest : public ShownWidgetTest {
protected:
    void SetUp() override {
        ShownWidgetTest::SetUp();
        if (IsSkipped()) return;
        QString error;
        ASSERT_TRUE(widget->LoadDataFile(VEXPLOT_EXAMPLES_DIR "/peaks.3do", &error)) << error.toStdString();
        QApplication::processEvents();
    }
};

TEST_F(ExportCommandTest, TheDrawingPaintedByQtLooksLikeTheRenderedView) {
    constexpr int32_t kW = 400, kH = 300;
    std::vector<uint32_t> rendered;
    std::string error;
    ASSERT_TRUE(widget->Control().RenderView(kW, kH, rendered, &error)) << error;
    ExportScene scene;
    ASSERT_TRUE(widget->Control().BuildExportScene(kW, kH, scene, &error)) << error;

    QImage painted(kW, kH, QImage::Format_RGBX8888);
    painted.fill(Qt::magenta);
    {
        QPainter painter(&painted);
        PaintScene(painter, scene, QRectF(0, 0, kW, kH));
    }
    // Flat cells against smooth shading and two text rasterisers differ in
    // detail; the surface, the axes and the background must coincide.
    int32_t different = 0;
    for (int32_t y = 0; y < kH; ++y) {
        const auto* row = reinterpret_cast<const uint32_t*>(painted.constScanLine(y));
        for (int32_t x = 0; x < kW; ++x) {
            const uint32_t a = row[x], b = rendered[size_t(y) * kW + size_t(x)];
            int32_t worst = 0;
            for (int shift : {0, 8, 16})
                worst = std::max(worst, std::abs(int32_t((a >> shift) & 0xFF) - int32_t((b >> shift) & 0xFF)));
            different += worst > 80 ? 1 : 0;
        }
    }
    EXPECT_LT(different, kW * kH / 25);
}

TEST_F(ExportCommandTest, CopyPutsTheImageAndItsSvgOnTheClipboard) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    ASSERT_NE(clipboard, nullptr);
    clipboard->clear();
    ASSERT_TRUE(widget->Control().DoCommand(cmd::kCopyToClipboard));
    const QMimeData* data = clipboard->mimeData();
    ASSERT_NE(data, nullptr);
    EXPECT_TRUE(data->hasImage());
    const QImage image = qvariant_cast<QImage>(data->imageData());
    const PixelRect plot = widget->Control().GetPlotRect();
    EXPECT_EQ(image.width(), plot.right - plot.left);
    EXPECT_TRUE(data->data("image/svg+xml").startsWith("<?xml"));
}

// The commands on the headless site, with the engine: the size chooser
// played by a script, the clipboard and printer that are not there.
class HeadlessExportTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { RegisterBuildTreeEngine(); }

    void SetUp() override {
        if (!control->Create(site, {0, 0, 320, 240})) GTEST_SKIP() << "no graph engine on this machine";
        std::string error;
        ASSERT_EQ(control->LoadDataFile(VEXPLOT_EXAMPLES_DIR "/peaks.3do", &error), S_OK) << error;
        std::filesystem::create_directories(folder);
    }
    void TearDown() override {
        control->Destroy();
        std::filesystem::remove_all(folder);
        std::fclose(log);
    }
    // What the site's message boxes said so far.
    std::string Messages() {
        std::fflush(log);
        std::rewind(log);
        std::string text;
        for (int c; (c = std::fgetc(log)) != EOF;) text += static_cast<char>(c);
        return text;
    }
    // The next export dialog confirms `name` with a custom size.
    void Answer(const std::string& name, const char* width, const char* height) {
        site.AnswerDialog(std::string(ExportSizeChooser::kName), [=](IDialogLogic& d) {
            auto& chooser = static_cast<ExportSizeChooser&>(d);
            chooser.Select(ExportSizeChooser::kCustom);
            chooser.SetWidthText(width);
            chooser.SetHeightText(height);
            return chooser.Confirm(name) ? kAnswerOk : kAnswerCancel;
        });
    }

    std::FILE* log = std::tmpfile();
    HeadlessSite site{log};
    ComPtr<CUI_VexplotCtrl> control = MakeComObject<CUI_VexplotCtrl>();
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("vexplot_export_" + std::to_string(::getpid()));
};

TEST_F(HeadlessExportTest, BitmapAtTheChosenSizeAndBadSizesRefusedKeepingTheFile) {
    const std::string bmp = (folder / "view.bmp").string();
    Answer(bmp, "1500", "90");
    ASSERT_TRUE(control->DoCommand(cmd::kExportBmp));
    std::ifstream in(bmp, std::ios::binary);
    std::vector<char> header(26);
    ASSERT_TRUE(in.read(header.data(), 26));
    int32_t width = 0, height = 0;
    std::memcpy(&width, header.data() + 18, 4);
    std::memcpy(&height, header.data() + 22, 4);
    EXPECT_EQ(width, 1500);
    EXPECT_EQ(std::abs(height), 90);
    const auto size = std::filesystem::file_size(bmp);

    for (auto [w, h] : {std::pair{"0", "100"}, {"-3", "100"}, {"100", "16385"}}) {
        Answer(bmp, w, h);
        ASSERT_TRUE(control->DoCommand(cmd::kExportBmp));
        EXPECT_NE(Messages().find(std::string(" cannot be exported")), std::string::npos) << w << " x " << h;
        EXPECT_EQ(std::filesystem::file_size(bmp), size);
    }
    // The metafile export takes its size from the chooser too.
    Answer((folder / "view").string(), "640", "480");
    ASSERT_TRUE(control->DoCommand(cmd::kExportEmf));
    EXPECT_TRUE(std::filesystem::exists(folder / "view.EMF"));
}

TEST_F(HeadlessExportTest, ClipboardAndPrinterSayTheyAreMissingAndMetafileNameExports) {
    ASSERT_TRUE(control->DoCommand(cmd::kCopyToClipboard));
    ASSERT_TRUE(control->DoCommand(cmd::kPrint));
    EXPECT_NE(Messages().find("There is no clipboard"), std::string::npos);
    EXPECT_NE(Messages().find("There is no printer"), std::string::npos);

    const std::string metafile = (folder / "named.wmf").string();  // not a known extension: a metafile
    control->SetMetaFileName(metafile);
    std::ifstream in(metafile, std::ios::binary);
    char magic[4] = {};
    ASSERT_TRUE(in.read(magic, 4));
    EXPECT_EQ(magic[0], 1);  // the header record
}

}  // namespace
}  // namespace vexplot
