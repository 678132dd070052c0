#include "platform/linux/dbus/FolderOpener.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QProcess>

#include <array>
#include <iostream>

namespace brimwick {

namespace {

constexpr const char* fileManager = "org.freedesktop.FileManager1";
constexpr const char* fileManagerPath = "/org/freedesktop/FileManager1";

bool start(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

void openByDefaultHandler(const QString& url) {
    if (start("xdg-open", {url}) || start("gio", {"open", url})) return;
    std::cerr << "Brimwick: no program was found to show " << url.toStdString() << std::endl;
}

} // namespace

FolderOpener::FolderOpener(const QDBusConnection& bus) : bus_(bus) {}

void FolderOpener::openFolder(const std::string& fileUrl, const std::optional<FileManagerProgram>& inUse) {
    const QString url = QString::fromStdString(fileUrl);
    if (!inUse) return openInAny(url);
    // The common name of file managers belongs to whichever of them started first, so the one in use is
    // called by its own. A pcmanfm-qt that came second answers there with an error, but its command still
    // opens a window in the running instance; it installs nothing by which the bus could start it.
    showFolders(QString::fromStdString(inUse->busName), Start::never, url,
                [this, url, program = QString::fromStdString(inUse->program)] {
                    if (!start(program, {url})) openInAny(url);
                });
}

void FolderOpener::openInAny(const QString& url) {
    showFolders(fileManager, Start::ifNeeded, url, [url] { openByDefaultHandler(url); });
}

void FolderOpener::showFolders(const QString& busName, Start start, const QString& url,
                               std::function<void()> otherwise) {
    // Without a connection a call would never finish.
    if (!bus_.isConnected()) return otherwise();
    auto message = QDBusMessage::createMethodCall(busName, fileManagerPath, fileManager, "ShowFolders");
    message.setAutoStartService(start == Start::ifNeeded);
    message << QStringList(url) << QString();
    const QDBusPendingCall call = bus_.asyncCall(message);
    if (call.isFinished() && call.isError()) return otherwise();
    auto* reply = new QDBusPendingCallWatcher(call, &replies_);
    QObject::connect(reply, &QDBusPendingCallWatcher::finished, &replies_,
                     [reply, otherwise = std::move(otherwise)] {
                         reply->deleteLater();
                         if (reply->isError()) otherwise();
                     });
}

} // namespace brimwick
