// The Qt site's clipboard and printer: the view goes to the clipboard as an
// image with its SVG beside it, and to a printer (or a PDF file where no
// printer is installed) as a drawing laid out for the page.
#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QMimeData>
#include <QPageSetupDialog>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include "qt/QtControlSite.h"
#include "qt/ScenePainter.h"

namespace vexplot {

namespace {

// Draws the page: the scene is built for the page's size at 96 dpi (so
// texts and lines keep their sizes on paper) and painted at the printer's
// resolution. False when the view could not be drawn.
bool PaintPage(QPrinter& printer, const IControlSite::SceneBuilder& draw) {
    const QRectF page = printer.pageRect(QPrinter::DevicePixel);
    const double toScene = 96.0 / std::max(printer.resolution(), 1);
    ExportScene scene;
    if (!draw(std::max(1, static_cast<int>(page.width() * toScene)),
              std::max(1, static_cast<int>(page.height() * toScene)), scene))
        return false;
    QPainter painter;
    if (!painter.begin(&printer)) return false;
    PaintScene(painter, scene, QRectF(0, 0, page.width(), page.height()));
    return painter.end();
}

}  // namespace

QPrinter& QtControlSite::Printer() {
    if (!printer_) {
        printer_ = std::make_shared<QPrinter>(QPrinter::HighResolution);
        printer_->setPageOrientation(QPageLayout::Landscape);
        printer_->setDocName("Vexplot");
    }
    return *printer_;
}

bool QtControlSite::CopyToClipboard(const ImageBuffer& image, const std::string& svg, std::string* error) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (!clipboard) {
        if (error) *error = "There is no clipboard to copy to.";
        return false;
    }
    auto* data = new QMimeData;
    const QImage pixels(reinterpret_cast<const uchar*>(image.pixels), image.width, image.height, image.stride * 4,
                        QImage::Format_RGBX8888);
    data->setImageData(pixels.convertToFormat(QImage::Format_RGB32));
    if (!svg.empty()) data->setData("image/svg+xml", QByteArray(svg.data(), static_cast<qsizetype>(svg.size())));
    clipboard->setMimeData(data);  // the clipboard owns it now
    return true;
}

void QtControlSite::SetUpPrinter() {
    QPageSetupDialog dialog(&Printer(), host_);
    dialog.exec();
}

bool QtControlSite::PrintScene(const SceneBuilder& draw, bool askUser, std::string* error) {
    QPrinter& printer = Printer();
    if (!askUser) {
        // Automation prints without asking: to the default printer, which
        // must exist.
        const QPrinterInfo target = QPrinterInfo::defaultPrinter();
        if (target.isNull()) {
            if (error) *error = "No printer is installed: there is no default printer to print to.";
            return false;
        }
        printer.setOutputFormat(QPrinter::NativeFormat);
        printer.setPrinterName(target.printerName());
        if (!PaintPage(printer, draw)) {
            if (error) *error = "The view could not be printed on " + target.printerName().toStdString() + ".";
            return false;
        }
        return true;
    }
    // The preview shows the page as it will print; its print button asks
    // for the printer, or for a PDF file where none is installed.
    if (QPrinterInfo::availablePrinters().isEmpty()) printer.setOutputFormat(QPrinter::PdfFormat);
    QPrintPreviewDialog preview(&printer, host_);
    preview.setWindowTitle("Print Preview - Vexplot");
    bool drawn = true;
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested,
                     [&](QPrinter* target) { drawn = PaintPage(*target, draw) && drawn; });
    const bool accepted = preview.exec() == QDialog::Accepted;
    if (!drawn && error) *error = "The view could not be drawn for the printer.";
    return accepted && drawn;
}

}  // namespace vexplot
