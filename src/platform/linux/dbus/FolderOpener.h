#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>
#include <optional>
#include <string>

namespace brimwick {

/// How one file manager is reached.
struct FileManagerProgram {
    /// The bus name of its running instance.
    std::string busName;
    /// The command that opens a folder given as a URL, in the running instance where there is one.
    std::string program;
};

/// Shows folders in a file manager. Main thread only; never waits for the file manager.
class FolderOpener {
  public:
    explicit FolderOpener(const QDBusConnection& bus);

    /// Shows the folder in the file manager in use, else in the desktop's, else in whatever opens folders.
    /// When nothing does, one line goes to stderr. A file URL is percent-encoded ASCII.
    void openFolder(const std::string& fileUrl,
                    const std::optional<FileManagerProgram>& inUse = std::nullopt);

  private:
    enum class Start { never, ifNeeded };
    void openInAny(const QString& url);
    void showFolders(const QString& busName, Start start, const QString& url,
                     std::function<void()> otherwise);

    QDBusConnection bus_;
    /// The parent of the replies that are still awaited.
    QObject replies_;
};

} // namespace brimwick
