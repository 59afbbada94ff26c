// Turning a big surface with the mouse in the Qt widget, as a user does.
//
//   drag_bench N [--moves K] [--size WxH]
//
// Puts a VexplotWidget of W x H (default 1024 x 768) on the screen (Qt's
// offscreen platform when there is no display), hands it the peaks grid at
// N x N and drags the left button across the 3-D view in K steps of 6
// pixels. Every step is delivered as a mouse move and painted at once, as
// the window system would, so a step's time is what the user waits between
// two pictures while dragging: the camera turn, the engine's picture at the
// level of detail for motion, and the copy to the screen. After the release
// the first picture at rest (the full grid) is timed as well.
//
// Prints: TIMES {"drag_frame_avg": s, "drag_frame_max": s, "drag_fps": f,
// "rest_frame": s, "peak_rss_mib": m}. The engine must be registered
// (`vexplot register`).
#include <QApplication>
#include <QMouseEvent>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "PeaksGrid.h"
#include "com/ComError.h"
#include "control/CUI_VexplotCtrl.h"
#include "site/IControlSite.h"
#include "dataobject/GraphDataClass.h"
#include "qt/VexplotWidget.h"

using namespace vexplot;
using namespace vexplot::bench;

namespace {

struct Options {
    int32_t n = 2048;
    int moves = 40;
    int width = 1024;
    int height = 768;
};

bool Parse(int argc, char** argv, Options& o) {
    if (argc < 2) return false;
    o.n = std::atoi(argv[1]);
    for (int i = 2; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--moves") && i + 1 < argc)
            o.moves = std::atoi(argv[++i]);
        else if (!std::strcmp(argv[i], "--size") && i + 1 < argc)
            std::sscanf(argv[++i], "%dx%d", &o.width, &o.height);
        else
            return false;
    }
    return o.n >= 2 && o.moves >= 1 && o.width >= 200 && o.height >= 200;
}

void Send(QWidget* view, QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) {
    QMouseEvent event(type, QPointF(at), view->mapToGlobal(QPointF(at)), button, held, Qt::NoModifier);
    QApplication::sendEvent(view, &event);
}

// Seconds taken by one event and the picture it causes.
template <typename Work>
double Frame(QWidget* view, Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    view->repaint();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

int Run(const Options& o) {
    VexplotWidget widget;
    widget.resize(o.width, o.height);
    widget.show();
    QApplication::processEvents();
    if (!widget.IsReady()) {
        std::fprintf(stderr, "drag_bench: no graph engine could be started; run `vexplot register` first\n");
        return 1;
    }
    ThrowIfFailed(widget.Control().SetData(MakePeaksData(o.n).Get()), IGraphData::kIid);
    QApplication::processEvents();
    QWidget* view = widget.WindowWidget(static_cast<int>(WindowRole::View3D));
    view->repaint();

    // A sweep to the right and back, with a little vertical wobble, so the
    // surface turns both ways and tilts.
    QPoint at(view->width() / 3, view->height() / 2);
    Send(view, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    std::vector<double> frames;
    for (int k = 0; k < o.moves; ++k) {
        at += QPoint(k < o.moves / 2 ? 6 : -6, (k % 4 < 2) ? 2 : -2);
        frames.push_back(Frame(view, [&] { Send(view, QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton); }));
    }
    const double rest = Frame(view, [&] { Send(view, QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton); });

    double total = 0.0;
    for (double f : frames) total += f;
    const double average = total / static_cast<double>(frames.size());
    const double worst = *std::max_element(frames.begin(), frames.end());
    std::printf("grid %d x %d, widget %d x %d on \"%s\", %d mouse moves\n", o.n, o.n, o.width, o.height,
                qPrintable(QGuiApplication::platformName()), o.moves);
    std::printf("TIMES {\"drag_frame_avg\": %.4f, \"drag_frame_max\": %.4f, \"drag_fps\": %.1f, "
                "\"rest_frame\": %.4f, \"peak_rss_mib\": %.1f}\n",
                average, worst, 1.0 / average, rest, PeakRssMiB());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!Parse(argc, argv, options)) {
        std::fprintf(stderr, "usage: drag_bench N [--moves K] [--size WxH]\n");
        return 2;
    }
    // Without a display the widget draws on Qt's offscreen platform; the
    // engine renders through EGL either way.
    if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY") && !std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication app(argc, argv);
    RegisterGraphDataClass();
    try {
        return Run(options);
    } catch (const ComError& e) {
        std::fprintf(stderr, "drag_bench: %s\n", e.what());
        return 1;
    }
}
