#pragma once

#include "model/Icon.h"

#include <optional>
#include <string>

namespace brimwick {

/// A file or folder that is shown or acted on. A value; paths and names are bytes.
///
/// The entry whose raw name is ".Trash" is the user's Trash: it is displayed as "Trash", with an icon that tells
/// whether it is empty at the moment of asking.
class BWSelectedFileOrFolder {
  public:
    /// An entry with an empty path and name, no URL and no icon.
    BWSelectedFileOrFolder();
    /// The entry of a file URL; the name is looked up on disk and stays empty (nil) when nothing lies there.
    static BWSelectedFileOrFolder fileOrFolderWithURL(const std::string& url);
    /// The same for a path; the URL is marked as a folder's, whatever the item is.
    static BWSelectedFileOrFolder fileOrFolderWithPath(const std::string& path);

    /// A fresh entry of the same path, its name looked up again.
    BWSelectedFileOrFolder clone() const;
    BWSelectedFileOrFolder parentFolder() const;
    /// The path without its last component.
    std::string directoryPath() const;

    const std::string& path() const { return path_; }
    void setPath(std::string path) { path_ = std::move(path); }

    const std::optional<std::string>& url() const { return url_; }
    void setUrl(std::optional<std::string> url) { url_ = std::move(url); }

    /// The display name; "Trash" for ".Trash". Nothing when the look-up on disk failed.
    std::optional<std::string> name() const;
    /// Ignored when equal to the current display name.
    void setName(std::optional<std::string> name);
    /// Whether the name may be set. For nothing it may not; `error`, when given, then receives the text.
    static bool validateNameError(const std::optional<std::string>& name, std::string* error);

    /// Reads the folder when the entry is the Trash.
    std::optional<Icon> icon() const;
    /// Ignored for the Trash.
    void setIcon(std::optional<Icon> icon);
    const std::optional<Icon>& trashIcon() const { return trashIcon_; }
    void setTrashIcon(std::optional<Icon> icon) { trashIcon_ = std::move(icon); }
    const std::optional<Icon>& fullTrashIcon() const { return fullTrashIcon_; }
    void setFullTrashIcon(std::optional<Icon> icon) { fullTrashIcon_ = std::move(icon); }

    bool isTrashFolder() const;

  private:
    std::optional<Icon> currentTrashIcon() const;

    std::optional<std::string> name_;
    std::optional<Icon> icon_;
    std::string path_;
    std::optional<std::string> url_;
    std::optional<Icon> trashIcon_;
    std::optional<Icon> fullTrashIcon_;
};

} // namespace brimwick
