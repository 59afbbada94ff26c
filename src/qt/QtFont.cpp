#include "qt/QtFont.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace vexplot {

QFont ToQFont(const LogicalFont& logical) {
    QFont font(QString::fromStdString(logical.face));
    font.setStyleHint((logical.pitchAndFamily & 0xF0) == 0x10 ? QFont::Serif : QFont::SansSerif);
    // Weight 0 means "don't care" in a logical font record: the face's
    // normal weight, not the thinnest one.
    const int32_t weight = logical.weight == 0 ? QFont::Normal : std::clamp(logical.weight, 1, 1000);
    font.setWeight(static_cast<QFont::Weight>(weight));
    font.setItalic(logical.italic);
    font.setUnderline(logical.underline);
    font.setStrikeOut(logical.strikeOut);
    if (logical.height < 0) {
        font.setPixelSize(-logical.height);
    } else if (logical.height > 0) {
        // A cell height: scale the em so that ascent + descent come to it.
        font.setPixelSize(logical.height);
        const qreal cell = QFontMetricsF(font).height();
        if (cell > 0) font.setPixelSize(std::max(1, static_cast<int>(std::lround(logical.height * logical.height / cell))));
    } else {
        font.setPixelSize(11);
    }
    return font;
}

}  // namespace vexplot
