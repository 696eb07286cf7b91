#include "desktop/main/picture_output.h"

#include <QBuffer>
#include <QFileDialog>
#include <QFileInfo>
#include <QPageLayout>
#include <QPainter>
#include <QPrintDialog>
#include <QStandardPaths>
#include <cmath>

#include "desktop/main/bindings.h"
#include "orbit/files.h"
#include "orbit/satellite_table.h"
#include "state/version.h"

namespace glintara::desktop {

namespace {

constexpr auto kPictureFolder = "Picture/folder";
constexpr auto kPrinterError = "Printer Error";

std::string TwoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

/// The picture as the bytes of a PNG file; empty when it cannot be made into one.
QByteArray PngOf(QImage picture) {
    picture.setText("Software", ToQt(ProgramTitle()));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return picture.save(&buffer, "PNG") ? bytes : QByteArray();
}

/// Whether the printer has taken the whole picture.
bool PaintOn(QPrinter& printer, const QImage& picture) {
    QPainter painter;
    if (!painter.begin(&printer)) return false;
    const QSize page = printer.pageLayout().paintRectPixels(printer.resolution()).size();
    const QSize fitted = picture.size().scaled(page, Qt::KeepAspectRatio);
    const QPoint corner((page.width() - fitted.width()) / 2, (page.height() - fitted.height()) / 2);
    // Otherwise a page that is kept as a file has the picture as a photograph, with smeared letters.
    painter.setRenderHints(QPainter::SmoothPixmapTransform | QPainter::LosslessImageRendering);
    painter.drawImage(QRect(corner, fitted), picture);
    return painter.end() && printer.printerState() != QPrinter::Error;
}

}  // namespace

std::optional<QString> QtPictureDialogs::AskForFile(const QString& suggested) {
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    const QString folder = places_.value(kPictureFolder, pictures).toString();
    QFileDialog dialog(&window_, "Save Picture", QFileInfo::exists(folder) ? folder : QString("."),
                       "PNG Images (*.png);;All Files (*)");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // With it the dialog asks about the file that will be replaced.
    dialog.setDefaultSuffix("png");
    dialog.selectFile(suggested);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    const QString file = dialog.selectedFiles().first();
    places_.setValue(kPictureFolder, QFileInfo(file).absolutePath());
    return file;
}

bool QtPictureDialogs::AskForPrinter(QPrinter& printer) {
    QPrintDialog dialog(&printer, &window_);
    dialog.setWindowTitle("Print Picture");
    return dialog.exec() == QDialog::Accepted;
}

std::string PictureName(const CommonData& data) {
    return "Glintara " + std::to_string(data.SimYear) + "-" + TwoDigits(data.SimMonth) + "-" + TwoDigits(data.SimDay) +
           " " + TwoDigits(data.SimHour) + "-" + TwoDigits(data.SimMinute) + "-" +
           TwoDigits(static_cast<int>(data.SimSecond)) + " UTC.png";
}

void PictureOutput::Save() {
    // What is on show now, and not what will be when a file has been chosen.
    const QByteArray bytes = PngOf(picture_());
    const std::optional<QString> file = dialogs_.AskForFile(ToQt(PictureName(app_.Data)));
    if (!file) return;
    const std::string name = FromQt(*file);
    std::string why = "the picture is too large";
    if (!bytes.isEmpty() && ReplaceFile(name, {bytes.constData(), static_cast<std::size_t>(bytes.size())}, &why)) {
        app_.Main.LCommandOutput.Caption = "Picture saved: " + ShownName(FromQt(QFileInfo(*file).fileName()));
        return;
    }
    app_.Boxes.Tell("Cannot write " + ShownName(name) + ": " + why, MessageIcon::Critical);
}

void PictureOutput::Print() {
    const QImage picture = picture_();
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(ToQt(PictureName(app_.Data)).chopped(4));
    printer.setCreator(ToQt(ProgramTitle()));
    printer.setPageOrientation(picture.width() > picture.height() ? QPageLayout::Landscape : QPageLayout::Portrait);
    if (!dialogs_.AskForPrinter(printer)) return;
    if (PaintOn(printer, picture))
        app_.Main.LCommandOutput.Caption = "Picture printed";
    else
        app_.Boxes.Tell(kPrinterError, MessageIcon::Critical);
}

}  // namespace glintara::desktop
