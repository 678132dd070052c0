#include "platform/linux/x11/QtClipboardSnapshot.h"

#include "platform/linux/x11/XcbConnection.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

namespace brimwick {

namespace {

/// The clipboard's own opinion may be out of date by the events that wait.
bool isOwnerForTheServer() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr) return false;
    xcb_connection_t* connection = x11->connection();
    constexpr std::string_view name = "CLIPBOARD";
    const XcbOwned<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, name.size(), name.data()), nullptr));
    if (!atom) return false;
    const XcbOwned<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr));
    if (!owner || owner->owner == XCB_NONE) return false;
    const xcb_setup_t* setup = xcb_get_setup(connection);
    return (owner->owner & ~setup->resource_id_mask) == setup->resource_id_base;
}

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
    if (!clipboard->ownsClipboard() || !isOwnerForTheServer()) return std::nullopt;
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
