// A Qt host: the control as a widget in a window of its own, showing a grid
// the program computes. `qt_host [--screenshot OUT.png]`
#include <QApplication>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <vector>

#include "vexplot/Widget.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const char* screenshot = argc > 2 && std::strcmp(argv[1], "--screenshot") == 0 ? argv[2] : nullptr;

    // The user's own settings: what the user changes in this window (the
    // palette, the windows shown...) is kept for the next start. The engine
    // that came with the library is registered on the first run.
    const vexplot::EngineSetupResult engine = vexplot::RegisterShippedEngine();
    if (!engine.message.empty()) std::fprintf(stderr, "%s\n", engine.message.c_str());

    QWidget window;
    window.setWindowTitle(QString("Vexplot %1 in a Qt host").arg(vexplot::Version()));
    auto* layout = new QVBoxLayout(&window);
    auto* plot = new vexplot::VexplotWidget(&window);
    layout->addWidget(plot);
    window.resize(900, 650);

    // Two Gaussian hills, value (ix, iy) at ix * ny + iy.
    constexpr int nx = 80;
    constexpr int ny = 60;
    std::vector<double> xs(nx), ys(ny), z(nx * ny);
    for (int ix = 0; ix < nx; ++ix) xs[ix] = -4.0 + 8.0 * ix / (nx - 1);
    for (int iy = 0; iy < ny; ++iy) ys[iy] = -3.0 + 6.0 * iy / (ny - 1);
    for (int ix = 0; ix < nx; ++ix)
        for (int iy = 0; iy < ny; ++iy) {
            const double x = xs[ix], y = ys[iy];
            z[ix * ny + iy] = std::exp(-((x - 1) * (x - 1) + y * y)) - 0.6 * std::exp(-((x + 1.5) * (x + 1.5) + (y - 1) * (y - 1)) / 0.5);
        }
    plot->Control().SetData(vexplot::CreateGraphData(z, nx, ny, xs, ys, "X", "Y", "Height").Get());
    plot->Control().SetCaption("Two hills");
    window.show();

    if (screenshot) {
        // Give the view a moment to draw its first frame, then save the window.
        QTimer::singleShot(1500, &window, [&window, screenshot] {
            const bool saved = window.grab().save(QString::fromLocal8Bit(screenshot));
            std::printf("%s: %s\n", screenshot, saved ? "saved" : "not saved");
            QApplication::exit(saved ? 0 : 1);
        });
    }
    return app.exec();
}
