// `vexplot-viewer [--view 2d|3d] [--together] [FILES...]`: the control in a
// window of its own, each data file given, dropped on it or chosen from its
// File menu as a plot of its own (all in one plot with --together).
//
// `vexplot-viewer --screenshot PATH [--size WxH] [FILES...]` saves a picture
// of the window once the plot has drawn, and exits; without a display it
// draws on Qt's offscreen platform.
#include <QApplication>
#include <QCommandLineParser>
#include <QRegularExpression>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

#include "ScreenshotRun.h"
#include "ViewerWindow.h"
#include "vexplot/EngineSetup.h"
#include "vexplot/Version.h"

namespace {

constexpr QSize kDefaultSize(1024, 768);

struct Options {
    QCommandLineOption screenshot{"screenshot", "Save a picture of the window to PATH and exit.", "PATH"};
    QCommandLineOption size{"size", "Window size, e.g. 1100x800.", "WxH"};
    QCommandLineOption view{"view", "Start in the 2d or the 3d view (default 3d).", "2d|3d", "3d"};
    QCommandLineOption together{"together", "Show all FILES in one plot instead of one plot each."};
};

void Describe(QCommandLineParser& parser, const Options& o) {
    parser.setApplicationDescription(
        "Shows data files (.3do, .csv, .npy) in the Vexplot control, each in a plot of its own.\n"
        "Without a display: --screenshot PATH saves a picture, or run it under xvfb-run.");
    parser.addHelpOption();
    parser.addVersionOption();
    for (const QCommandLineOption* option : {&o.screenshot, &o.size, &o.view, &o.together}) parser.addOption(*option);
    parser.addPositionalArgument("files", "Data files to show.", "[FILES...]");
}

bool Asks(int argc, char** argv, std::initializer_list<const char*> names) {
    for (int i = 1; i < argc; ++i)
        for (const char* name : names)
            if (std::strcmp(argv[i], name) == 0) return true;
    return false;
}

bool HasDisplay() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (const char* value = std::getenv(name); value && *value) return true;
    return false;
}

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
    QCoreApplication::setApplicationName("vexplot-viewer");
    QCoreApplication::setApplicationVersion(vexplot::Version());
    const Options o;
    // Help and version need no window system.
    if (Asks(argc, argv, {"-h", "--help", "-?", "--help-all", "-v", "--version"})) {
        QCoreApplication app(argc, argv);
        QCommandLineParser parser;
        Describe(parser, o);
        parser.process(app);
        return 0;
    }
    if (!HasDisplay()) {
        if (!Asks(argc, argv, {"--screenshot"})) {
            std::fprintf(stderr,
                         "vexplot-viewer: no display to open a window on (DISPLAY is not set).\n"
                         "  A picture instead:   vexplot-viewer --screenshot out.png FILES...\n"
                         "  A virtual display:   xvfb-run -a vexplot-viewer FILES...\n");
            return 2;
        }
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }

    QApplication app(argc, argv);
    QCommandLineParser parser;
    Describe(parser, o);
    parser.process(app);

    QSize size = kDefaultSize;
    if (parser.isSet(o.size)) {
        const std::optional<QSize> parsed = ParseSize(parser.value(o.size));
        if (!parsed) {
            std::fprintf(stderr, "vexplot-viewer: --size wants WxH, e.g. 1100x800\n");
            return 2;
        }
        size = *parsed;
    }
    const QString view = parser.value(o.view);
    if (view != "2d" && view != "3d") {
        std::fprintf(stderr, "vexplot-viewer: --view wants 2d or 3d\n");
        return 2;
    }
    const bool flatView = view == "2d";
    const QStringList files = parser.positionalArguments();

    // The first run registers the engine installed with the viewer.
    const vexplot::EngineSetupResult engine = vexplot::RegisterShippedEngine();
    if (!engine.message.empty()) std::fprintf(stderr, "%s\n", engine.message.c_str());

    if (parser.isSet(o.screenshot)) {
        const vexplot::ModalDismisser dismisser;
        vexplot::ViewerWindow window(false);
        window.SetTogether(parser.isSet(o.together));
        return vexplot::RunScreenshot(window, dismisser, parser.value(o.screenshot), size, files, flatView);
    }

    vexplot::ViewerWindow window(true);
    window.SetTogether(parser.isSet(o.together));
    if (engine.registered) window.Tell(QString::fromStdString(engine.message));
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
