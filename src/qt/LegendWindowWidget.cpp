#include "qt/LegendWindowWidget.h"

#include <QEvent>
#include <QKeyEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <qdrawutil.h>

#include "model/RgbaRaster.h"
#include "ui/CUIW_LegendWindow.h"
#include "ui/LegendPreview.h"
#include "ui/WindowSizing.h"
#include "qt/SizingFrame.h"

namespace vexplot {

LegendWindowWidget::LegendWindowWidget(QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    // The margin is the sizing frame.
    layout->setContentsMargins(WindowSizing::kBorder, WindowSizing::kBorder, WindowSizing::kBorder,
                               WindowSizing::kBorder);
    layout->setSpacing(0);

    caption_ = new QLabel(QStringLiteral("Legend"), this);
    caption_->setAutoFillBackground(true);
    caption_->setBackgroundRole(QPalette::Highlight);
    caption_->setForegroundRole(QPalette::HighlightedText);
    caption_->setContentsMargins(4, 2, 4, 2);
    caption_->setCursor(Qt::SizeAllCursor);
    caption_->installEventFilter(this);
    // The caption's close button hides the legend as the "Legend Window"
    // command does; the control reads the window's visibility back.
    closeButton_ = new QToolButton(caption_);
    closeButton_->setText(QStringLiteral("\u00D7"));
    closeButton_->setToolTip(QStringLiteral("Close"));
    closeButton_->setAutoRaise(true);
    closeButton_->setCursor(Qt::ArrowCursor);
    connect(closeButton_, &QToolButton::clicked, this, [this] {
        if (logic_) logic_->SetShown(false);
    });
    auto* captionLayout = new QHBoxLayout(caption_);
    captionLayout->setContentsMargins(0, 0, 0, 0);
    captionLayout->addStretch(1);
    captionLayout->addWidget(closeButton_);
    layout->addWidget(caption_);

    // A report list of one column: rows select whole, names longer than
    // the column end in an ellipsis, and the list fills the window however
    // it is sized.
    list_ = new QTreeWidget(this);
    list_->setColumnCount(1);
    list_->setHeaderHidden(true);
    list_->setRootIsDecorated(false);
    list_->setIndentation(0);
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(0, QHeaderView::Fixed);
    // Logical pixels: Qt scales them by the screen's pixel ratio.
    list_->setColumnWidth(0, CUIW_LegendWindow::kColumnWidth);
    list_->setTextElideMode(Qt::ElideRight);
    list_->setIconSize(QSize(LegendPreview::kSize, LegendPreview::kSize));
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->setSelectionBehavior(QAbstractItemView::SelectRows);
    list_->setContextMenuPolicy(Qt::CustomContextMenu);
    list_->setUniformRowHeights(true);
    list_->installEventFilter(this);
    layout->addWidget(list_, 1);

    connect(list_, &QTreeWidget::itemChanged, this, &LegendWindowWidget::OnItemChanged);
    connect(list_, &QTreeWidget::currentItemChanged, this, &LegendWindowWidget::OnCurrentItemChanged);
    connect(list_, &QTreeWidget::itemDoubleClicked, this, &LegendWindowWidget::OnItemDoubleClicked);
    connect(list_, &QTreeWidget::customContextMenuRequested, this, &LegendWindowWidget::OnContextMenu);
    setAutoFillBackground(true);
    new SizingFrame(this, QSize(CUIW_LegendWindow::kMinWidth, CUIW_LegendWindow::kMinHeight), [this] { return logic_ != nullptr; },
                    [this](const PixelRect& rect) {
                        if (logic_) logic_->OnMovedByUser(rect);
                    });
}

void LegendWindowWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    qDrawWinPanel(&painter, rect(), palette(), false);
}

LegendWindowWidget::~LegendWindowWidget() { Bind(nullptr); }

void LegendWindowWidget::Bind(CUIW_LegendWindow* logic) {
    if (logic_ != nullptr) logic_->SetChangedHook({});
    logic_ = logic;
    if (logic_ == nullptr) {
        syncing_ = true;
        list_->clear();
        syncing_ = false;
        return;
    }
    // The hook may outlive this widget when the logic is kept for another
    // window; the guard makes a late call harmless.
    QPointer<LegendWindowWidget> self(this);
    logic_->SetChangedHook([self] {
        if (self) self->Sync();
    });
    Sync();
}

QImage LegendWindowWidget::ToImage(const RgbaRaster& raster) {
    QImage image(static_cast<int>(raster.Width()), static_cast<int>(raster.Height()), QImage::Format_ARGB32);
    for (uint32_t y = 0; y < raster.Height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(static_cast<int>(y)));
        const auto row = raster.Row(y);
        for (uint32_t x = 0; x < raster.Width(); ++x) {
            const uint32_t c = row[x];  // 0x00BBGGRR
            line[x] = c == LegendPreview::kMaskColor ? qRgba(0, 0, 0, 0)
                                                     : qRgb(static_cast<int>(c & 0xFF), static_cast<int>((c >> 8) & 0xFF),
                                                            static_cast<int>((c >> 16) & 0xFF));
        }
    }
    return image;
}

// Sets the rows from the logic. Items are reused where they exist, so the
// list keeps its scroll position while names or check marks change.
void LegendWindowWidget::Sync() {
    if (logic_ == nullptr) return;
    syncing_ = true;
    const auto& rows = logic_->Rows();
    const auto& images = logic_->Images();
    const int count = static_cast<int>(rows.size());
    while (list_->topLevelItemCount() > count) delete list_->takeTopLevelItem(list_->topLevelItemCount() - 1);
    while (list_->topLevelItemCount() < count) {
        auto* item = new QTreeWidgetItem(list_);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    }
    for (int i = 0; i < count; ++i) {
        QTreeWidgetItem* item = list_->topLevelItem(i);
        const CUIW_LegendWindow::Row& row = rows[static_cast<size_t>(i)];
        item->setText(0, QString::fromStdString(row.name));
        item->setToolTip(0, QString::fromStdString(row.name));
        item->setCheckState(0, row.checked ? Qt::Checked : Qt::Unchecked);
        const auto image = static_cast<size_t>(row.image);
        if (row.image >= 0 && image < images.size())
            item->setIcon(0, QIcon(QPixmap::fromImage(ToImage(images[image]))));
    }
    const int selection = logic_->Selection();
    if (selection >= 0 && selection < count) {
        list_->setCurrentItem(list_->topLevelItem(selection));
    } else {
        list_->clearSelection();
        list_->setCurrentItem(nullptr);
    }
    syncing_ = false;
}

void LegendWindowWidget::OnItemChanged(QTreeWidgetItem* item) {
    if (syncing_ || logic_ == nullptr) return;
    logic_->OnRowChecked(list_->indexOfTopLevelItem(item), item->checkState(0) == Qt::Checked);
}

void LegendWindowWidget::OnCurrentItemChanged(QTreeWidgetItem* item) {
    if (syncing_ || logic_ == nullptr) return;
    logic_->OnRowSelected(item ? list_->indexOfTopLevelItem(item) : -1);
}

void LegendWindowWidget::OnItemDoubleClicked(QTreeWidgetItem* item) {
    if (logic_ != nullptr) logic_->OnRowDoubleClicked(list_->indexOfTopLevelItem(item));
}

void LegendWindowWidget::OnContextMenu(const QPoint& pos) {
    if (logic_ == nullptr) return;
    const int row = list_->indexAt(pos).row();
    const QPoint at = list_->viewport()->mapTo(this, pos);
    logic_->OnRowContextMenu(row, PixelPoint{at.x(), at.y()});
}

bool LegendWindowWidget::eventFilter(QObject* watched, QEvent* event) {
    if (watched == caption_) return DragCaption(event);
    if (watched == list_ && event->type() == QEvent::KeyPress && logic_ != nullptr &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        logic_->OnKey(logic_->Window(), KeyEvent{vk::kDelete, 0});
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

// Dragging the caption moves the window; the logic places it through the
// site and remembers the place.
bool LegendWindowWidget::DragCaption(QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove && type != QEvent::MouseButtonRelease)
        return false;
    auto* mouse = static_cast<QMouseEvent*>(event);
    switch (type) {
        case QEvent::MouseButtonPress:
            if (mouse->button() != Qt::LeftButton) return false;
            dragging_ = true;
            dragStart_ = mouse->globalPosition().toPoint();
            dragOrigin_ = pos();
            return true;
        case QEvent::MouseMove: {
            if (!dragging_ || logic_ == nullptr) return false;
            const QPoint topLeft = dragOrigin_ + (mouse->globalPosition().toPoint() - dragStart_);
            logic_->OnMovedByUser(PixelRect{topLeft.x(), topLeft.y(), topLeft.x() + width(), topLeft.y() + height()});
            return true;
        }
        case QEvent::MouseButtonRelease:
            dragging_ = false;
            return false;
        default: return false;
    }
}

}  // namespace vexplot
