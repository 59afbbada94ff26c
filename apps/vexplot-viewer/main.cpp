// `vexplot-viewer [--view 2d|3d] [FILES...]`: the control in a window of its
// own, showing the data files given, dropped on it or chosen from its File
// menu.
//
// `vexplot-viewer --screenshot PATH [--size WxH] [FILES...]` saves a picture
// of the window once the plot has drawn, and exits.
#include <QApplication>
#include <QCommandLineParser>
#include <QRegularExpression>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <optional>

#include "ScreenshotRun.h"
#include "ViewerWindow.h"

namespace {

constexpr QSize kDefaultSize(1024, 768);

// "WxH" with both parts positive; nothing otherwise.
std::optional<QSize> ParseSize(const QString& text) {
    static const QRegularExpression pattern("^(\\d{1,5})x(\\d{1,5})$");
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch()) return std::nullopt;
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (size.width() <= 0 || size.height() <= 0) return std::nullopt;
    return size;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("vexplot-viewer");

    QCommandLineParser parser;
    parser.setApplicationDescription("Shows data files (.3do, .csv, .npy) in the Vexplot control.");
    parser.addHelpOption();
    const QCommandLineOption screenshot("screenshot", "Save a picture of the window to PATH and exit.", "PATH");
    const QCommandLineOption sizeOption("size", "Window size, e.g. 1100x800.", "WxH");
    const QCommandLineOption viewOption("view", "Start in the 2d or the 3d view (default 3d).", "2d|3d", "3d");
    parser.addOption(screenshot);
    parser.addOption(sizeOption);
    parser.addOption(viewOption);
    parser.addPositionalArgument("files", "Data files to show.", "[FILES...]");
    parser.process(app);

    QSize size = kDefaultSize;
    if (parser.isSet(sizeOption)) {
        const std::optional<QSize> parsed = ParseSize(parser.value(sizeOption));
        if (!parsed) {
            std::fprintf(stderr, "vexplot-viewer: --size wants WxH, e.g. 1100x800\n");
            return 2;
        }
        size = *parsed;
    }
    const QString view = parser.value(viewOption);
    if (view != "2d" && view != "3d") {
        std::fprintf(stderr, "vexplot-viewer: --view wants 2d or 3d\n");
        return 2;
    }
    const bool flatView = view == "2d";
    const QStringList files = parser.positionalArguments();

    if (parser.isSet(screenshot)) {
        const vexplot::ModalDismisser dismisser;
        vexplot::ViewerWindow window(false);
        return vexplot::RunScreenshot(window, dismisser, parser.value(screenshot), size, files, flatView);
    }

    vexplot::ViewerWindow window(true);
    window.resize(size);
    window.show();
    // After the window is up, so that a failing file's message box has it
    // as its parent on screen.
    QTimer::singleShot(0, &window, [&window, files, flatView] {
        window.OpenFiles(files);
        if (flatView) window.ShowFlatView(true);
    });
    return app.exec();
}
