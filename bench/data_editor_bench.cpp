// Opening the data editor on a big grid and scrolling through it.
//
//   data_editor_bench [N] [--steps K] [--size WxH]
//
// Hands a graph object the peaks grid at N x N (default 4096), opens its
// data editor window of W x H (default 900 x 600) and times, each up to the
// first finished picture:
//   open    from the request to the first full paint of the window (the
//           editor's contents, the window, its table and headers);
//   page    K page-down steps through the rows, each painted at once;
//   side    K page-right steps through the columns;
//   jump    K jumps to random places anywhere in the grid.
// Scrolling is delivered as the scroll bars would deliver it, then painted
// synchronously, so a step's time is what the user waits for the next
// picture. Runs on Qt's offscreen platform when there is no display.
//
// Prints: TIMES {"open": s, "page_avg": s, "page_max": s, "side_avg": s,
// "side_max": s, "jump_avg": s, "jump_max": s, "peak_rss_mib": m}.
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include "PeaksGrid.h"
#include "control/HeadlessSite.h"
#include "dataobject/GraphDataClass.h"
#include "model/CGD_GraphObject.h"
#include "model/DetachedViewHost.h"
#include "qt/dialogs/DataEditorDialog.h"
#include "ui/CUIW_DataEditor.h"

using namespace vexplot;
using namespace vexplot::bench;

namespace {

struct Options {
    int32_t n = 4096;
    int steps = 100;
    int width = 900;
    int height = 600;
};

bool Parse(int argc, char** argv, Options& o) {
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--steps") && i + 1 < argc)
            o.steps = std::atoi(argv[++i]);
        else if (!std::strcmp(argv[i], "--size") && i + 1 < argc)
            std::sscanf(argv[++i], "%dx%d", &o.width, &o.height);
        else if (argv[i][0] != '-')
            o.n = std::atoi(argv[i]);
        else
            return false;
    }
    return o.n >= 2 && o.steps >= 1 && o.width >= 200 && o.height >= 200;
}

double Seconds(std::chrono::steady_clock::time_point since) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

struct Series {
    double average = 0.0;
    double worst = 0.0;
};

// Times `steps` scroll steps, each painted before the next.
template <typename Step>
Series Scroll(QTableView* grid, int steps, Step step) {
    std::vector<double> frames;
    for (int k = 0; k < steps; ++k) {
        const auto start = std::chrono::steady_clock::now();
        step(k);
        grid->viewport()->repaint();
        grid->horizontalHeader()->viewport()->repaint();
        grid->verticalHeader()->viewport()->repaint();
        frames.push_back(Seconds(start));
    }
    Series s;
    for (double f : frames) s.average += f;
    s.average /= static_cast<double>(frames.size());
    s.worst = *std::max_element(frames.begin(), frames.end());
    return s;
}

int Run(const Options& o) {
    RegisterGraphDataClass();
    auto data = MakePeaksData(o.n);
    auto host = MakeComObject<DetachedViewHost>();
    CGD_GraphObject graph;
    graph.Attach(data.Get(), host.Get(), true);
    HeadlessSite site(stderr);

    const auto start = std::chrono::steady_clock::now();
    CUIW_DataEditor* logic = nullptr;
    graph.OpenDataEditor([&](const CGD_GraphObject::DataEditorContents& contents) {
        auto editor = std::make_unique<CUIW_DataEditor>(graph, contents, site, nullptr);
        logic = editor.get();
        return editor;
    });
    auto* dialog = new DataEditorDialog(*logic, nullptr);
    dialog->resize(o.width, o.height);
    dialog->show();
    QApplication::processEvents();  // the window system exposes the window
    dialog->repaint();
    const double open = Seconds(start);

    QTableView* grid = dialog->Grid();
    QScrollBar* down = grid->verticalScrollBar();
    QScrollBar* across = grid->horizontalScrollBar();
    const Series page = Scroll(grid, o.steps, [&](int) { down->setValue(down->value() + down->pageStep()); });
    const Series side = Scroll(grid, o.steps, [&](int) { across->setValue(across->value() + across->pageStep()); });
    std::mt19937 random(7);
    const Series jump = Scroll(grid, o.steps, [&](int) {
        down->setValue(std::uniform_int_distribution<int>(0, down->maximum())(random));
        across->setValue(std::uniform_int_distribution<int>(0, across->maximum())(random));
    });

    std::printf("grid %d x %d, editor %d x %d on \"%s\", %d steps each\n", o.n, o.n, o.width, o.height,
                qPrintable(QGuiApplication::platformName()), o.steps);
    std::printf("TIMES {\"open\": %.4f, \"page_avg\": %.4f, \"page_max\": %.4f, \"side_avg\": %.4f, "
                "\"side_max\": %.4f, \"jump_avg\": %.4f, \"jump_max\": %.4f, \"peak_rss_mib\": %.1f}\n",
                open, page.average, page.worst, side.average, side.worst, jump.average, jump.worst, PeakRssMiB());
    delete dialog;
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!Parse(argc, argv, options)) {
        std::fprintf(stderr, "usage: data_editor_bench [N] [--steps K] [--size WxH]\n");
        return 2;
    }
    if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY") && !std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication app(argc, argv);
    return Run(options);
}
