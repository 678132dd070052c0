#include "picker/EntryIcons.h"

#include <QApplication>
#include <QFile>
#include <QMimeDatabase>
#include <QStyle>

#include <sys/stat.h>

namespace brimwick {

QIcon EntryIcons::image(const std::optional<Icon>& icon) const {
    if (!icon) return {};
    if (icon->source == Icon::Source::Folder) return folderImage();
    if (icon->source == Icon::Source::File) return fileImage(icon->name);
    for (const char* type : {"svg", "png"})
        if (const auto path = resources_.pathForResource(icon->name, type))
            return QIcon(QFile::decodeName(QByteArray::fromStdString(*path)));
    return {};
}

QIcon EntryIcons::folderImage() const {
    return themeIcon("folder", "folder", QStyle::SP_DirIcon);
}

QIcon EntryIcons::fileImage(const std::string& path) const {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) return folderImage();
    // By name alone: an icon is no reason to open a file.
    const QMimeType type =
        QMimeDatabase().mimeTypeForFile(QString::fromUtf8(path.c_str()), QMimeDatabase::MatchExtension);
    return themeIcon(type.iconName(), type.genericIconName(), QStyle::SP_FileIcon);
}

QIcon EntryIcons::themeIcon(const QString& name, const QString& genericName,
                            QStyle::StandardPixmap last) const {
    if (theme_ != QIcon::themeName()) {
        theme_ = QIcon::themeName();
        themeIcons_.clear();
    }
    const auto known = themeIcons_.constFind(name);
    if (known != themeIcons_.cend()) return *known;
    QIcon icon = QIcon::fromTheme(name);
    if (icon.isNull()) icon = QIcon::fromTheme(genericName);
    if (icon.isNull()) icon = QApplication::style()->standardIcon(last);
    return *themeIcons_.insert(name, icon);
}

} // namespace brimwick
