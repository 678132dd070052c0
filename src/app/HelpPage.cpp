#include "app/HelpPage.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

namespace brimwick {

void openHelpPage(const Resources& resources) {
    const auto page = resources.pathForResource("help", "html");
    if (!page) return;
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFile::decodeName(QByteArray::fromStdString(*page))));
}

} // namespace brimwick
