#include "picker/EntryIcons.h"

#include <QApplication>
#include <QFile>
#include <QMimeDatabase>
#include <QStyle>

#include <sys/stat.h>

namespace brimwick {

QIcon EntryIcons::image(const std::optional<Icon>& icon) const {
    if (!icon) return {};
    if (icon->source == Icon::Source::File) return fileImage(icon->name);
    for (const char* type : {"svg", "png"})
        if (const auto path = resources_.pathForResource(icon->name, type))
            return QIcon(QFile::decodeName(QByteArray::fromStdString(*path)));
    return {};
}

QIcon EntryIcons::fileImage(const std::string& path) const {
    const QStyle* style = QApplication::style();
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode))
        return QIcon::fromTheme("folder", style->standardIcon(QStyle::SP_DirIcon));
    // By name alone: an icon is no reason to open a file.
    const QMimeType type =
        QMimeDatabase().mimeTypeForFile(QString::fromUtf8(path.c_str()), QMimeDatabase::MatchExtension);
    const QIcon generic = QIcon::fromTheme(type.genericIconName(), style->standardIcon(QStyle::SP_FileIcon));
    return QIcon::fromTheme(type.iconName(), generic);
}

} // namespace brimwick
