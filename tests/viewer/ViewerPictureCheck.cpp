// Checks a picture the viewer saved with --screenshot against the geometry
// it wrote beside it (PICTURE.json): the plot is drawn, and the control's
// windows are on it where they belong and show something.
//
//     viewer_picture_check PICTURE [ROLE...]
//
// Each ROLE must be a visible window ("view" stands for whichever view
// window is shown). Every visible window must lie inside the picture and,
// where it has content, must not be one flat colour.
#include <QColor>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QSet>
#include <QStringList>

#include <cstdio>

namespace {

// A surface drawn through a palette shows many colours; a blank view, a
// grey background or a wireframe in one colour shows few.
constexpr int kMinViewColours = 24;
// The legend's entry carries a preview of the data in palette colours.
constexpr int kMinLegendColours = 4;
// The top six bits of a channel: colours closer than that count as one,
// so that antialiasing does not make a flat area look varied.
constexpr uint32_t kQuantize = 0xFCFCFC;

int failures = 0;

void Fail(const QString& role, const QString& what) {
    std::fprintf(stderr, "FAIL %s: %s\n", qPrintable(role), qPrintable(what));
    ++failures;
}

QRect RectOf(const QJsonObject& window) {
    return QRect(window["x"].toInt(), window["y"].toInt(), window["width"].toInt(), window["height"].toInt());
}

// Distinct colours in `rect`; with `saturatedOnly`, only those clearly not
// grey (palette colours, not text, frames or background).
int DistinctColours(const QImage& image, const QRect& rect, bool saturatedOnly) {
    QSet<uint32_t> colours;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (saturatedOnly && c.hsvSaturation() < 80) continue;
            colours.insert(static_cast<uint32_t>(c.rgb()) & kQuantize);
        }
    }
    return static_cast<int>(colours.size());
}

// The middle half of `rect` in both directions: where a plot is drawn,
// away from axis labels and the colour bar.
QRect Middle(const QRect& rect) {
    return QRect(rect.x() + rect.width() / 4, rect.y() + rect.height() / 4, rect.width() / 2, rect.height() / 2);
}

bool HasContent(const QJsonObject& window) {
    // Labels (title, status bar) have content only when they show text.
    return !window.contains("text") || !window["text"].toString().isEmpty();
}

void CheckWindow(const QImage& image, const QString& role, const QJsonObject& window) {
    const QRect rect = RectOf(window);
    if (rect.isEmpty()) return Fail(role, "has no area");
    if (!image.rect().contains(rect))
        return Fail(role, QString("lies outside the picture at %1,%2 %3x%4")
                              .arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height()));
    if (HasContent(window) && DistinctColours(image, rect, false) < 2) Fail(role, "is one flat colour");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: viewer_picture_check PICTURE [ROLE...]\n");
        return 2;
    }
    const QString picturePath = QString::fromLocal8Bit(argv[1]);
    const QImage image = QImage(picturePath).convertToFormat(QImage::Format_RGB32);
    if (image.isNull()) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 1;
    }
    QFile geometryFile(picturePath + ".json");
    if (!geometryFile.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s.json\n", argv[1]);
        return 1;
    }
    const QJsonObject geometry = QJsonDocument::fromJson(geometryFile.readAll()).object();
    if (geometry["width"].toInt() != image.width() || geometry["height"].toInt() != image.height())
        Fail("picture", "its size differs from the geometry's");

    QMap<QString, QJsonObject> shown;
    for (const QJsonValue& value : geometry["windows"].toArray()) {
        const QJsonObject window = value.toObject();
        if (window["visible"].toBool()) shown.insert(window["role"].toString(), window);
    }
    if (shown.contains("view3d") && shown.contains("view2d")) Fail("view", "both views are shown");
    const QString view = shown.contains("view3d") ? "view3d" : "view2d";

    for (int i = 2; i < argc; ++i) {
        QString role = QString::fromLocal8Bit(argv[i]);
        if (role == "view") role = view;
        if (!shown.contains(role)) Fail(role, "is not shown");
    }
    for (auto it = shown.cbegin(); it != shown.cend(); ++it) {
        if (it.key() != "control") CheckWindow(image, it.key(), it.value());
    }

    if (shown.contains(view)) {
        const int colours = DistinctColours(image, Middle(RectOf(shown[view])), true);
        std::printf("%s: %d palette colours in the middle\n", qPrintable(view), colours);
        if (colours < kMinViewColours)
            Fail(view, QString("shows %1 palette colours in its middle, fewer than %2").arg(colours).arg(kMinViewColours));
    }
    if (shown.contains("legendWindow")) {
        const int colours = DistinctColours(image, RectOf(shown["legendWindow"]), true);
        if (colours < kMinLegendColours)
            Fail("legendWindow", QString("shows %1 palette colours, no preview of the data").arg(colours));
    }

    std::printf("picture: %s (%d windows shown, %d failures)\n", argv[1], static_cast<int>(shown.size()), failures);
    return failures == 0 ? 0 : 1;
}
