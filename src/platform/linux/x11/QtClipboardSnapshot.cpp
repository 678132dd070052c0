#include "platform/linux/x11/QtClipboardSnapshot.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

namespace brimwick {

namespace {

void addText(ClipboardContents& contents, const QString& text) {
    const std::string utf8 = text.toStdString();
    for (const char* target : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain"})
        contents.push_back({target, target, 8, utf8});
    contents.push_back({"STRING", "STRING", 8, text.toLatin1().toStdString()});
}

void addImage(ClipboardContents& contents, const QImage& image) {
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (image.save(&buffer, "PNG")) contents.push_back({"image/png", "image/png", 8, png.toStdString()});
}

} // namespace

std::optional<ClipboardContents> qtClipboardSnapshot() {
    const QClipboard* clipboard = QGuiApplication::clipboard();
    if (!clipboard->ownsClipboard()) return std::nullopt;
    const QMimeData* data = clipboard->mimeData();
    ClipboardContents contents;
    if (data == nullptr) return contents;
    if (data->hasText()) addText(contents, data->text());
    for (const QString& format : data->formats()) {
        const std::string name = format.toStdString();
        if (format == QLatin1String("text/plain") || format == QLatin1String("application/x-qt-image"))
            continue;
        contents.push_back({name, name, 8, data->data(format).toStdString()});
    }
    if (data->hasImage() && !data->hasFormat(QStringLiteral("image/png")))
        addImage(contents, qvariant_cast<QImage>(data->imageData()));
    return contents;
}

} // namespace brimwick
