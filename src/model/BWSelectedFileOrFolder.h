#pragma once

#include "model/Icon.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace brimwick {

/// A file or folder that is shown or acted on. A value, used by one thread at a time; paths and names are
/// bytes.
///
/// The entry whose raw name is ".Trash" is the user's Trash: it is displayed as "Trash", with an icon that
/// tells whether it is empty at the moment of asking.
class BWSelectedFileOrFolder {
  public:
    /// An entry with an empty path and name, no URL and no icon.
    BWSelectedFileOrFolder();
    /// The entry of a file URL; the name is looked up on disk, and there is none when nothing lies there. A
    /// URL that names no file of this machine gives an entry with an empty path.
    static BWSelectedFileOrFolder fileOrFolderWithURL(const std::string& url);
    /// The same for a path; the URL is marked as a folder's, whatever the item is. A path that is not
    /// absolute is kept as it stands, without a URL and a name.
    static BWSelectedFileOrFolder fileOrFolderWithPath(const std::string& path);

    /// The same for an absolute path at which something was just put; its name is not looked up.
    static BWSelectedFileOrFolder fileOrFolderJustPutAtPath(const std::string& path);

    /// A fresh entry of the same path, its name looked up again.
    BWSelectedFileOrFolder clone() const;
    BWSelectedFileOrFolder parentFolder() const;
    /// The path without its last component.
    std::string directoryPath() const;

    const std::string& path() const { return path_; }
    /// The URL and the icon stay.
    void setPath(std::string path);

    std::optional<std::string> url() const;
    void setUrl(std::optional<std::string> url);

    /// The display name; "Trash" for ".Trash". Nothing when the look-up on disk failed.
    std::optional<std::string> name() const;
    /// Ignored when equal to the current display name.
    void setName(std::optional<std::string> name);
    /// Whether the name may be set: not when there is none, and then `error`, if given, receives the text.
    static bool validateNameError(const std::optional<std::string>& name, std::string* error);

    /// For the Trash looks into the folder at every call.
    std::optional<Icon> icon() const;
    /// For the Trash the value is ignored and the icon chosen anew.
    void setIcon(std::optional<Icon> icon);
    /// Makes the icon that of an empty or of a full Trash, by what the folder holds; one that cannot be read
    /// counts as empty.
    void setTrashIcon();
    const std::optional<Icon>& trashIcon() const { return trashIcons_->ofEmpty; }
    void setTrashIcon(std::optional<Icon> icon);
    const std::optional<Icon>& fullTrashIcon() const { return trashIcons_->ofFull; }
    void setFullTrashIcon(std::optional<Icon> icon);

    bool isTrashFolder() const;

  private:
    struct TrashIcons {
        std::optional<Icon> ofEmpty;
        std::optional<Icon> ofFull;
    };
    static const std::shared_ptr<const TrashIcons>& usualTrashIcons();
    static BWSelectedFileOrFolder entry(std::string path, std::optional<std::string> url,
                                        std::optional<std::string> name);
    static BWSelectedFileOrFolder folderEntry(std::string path, std::optional<std::string> name);
    const std::optional<Icon>& currentTrashIcon() const;

    std::optional<std::string> name_;
    mutable std::optional<Icon> icon_;
    std::string path_;
    std::optional<std::string> url_;
    /// Those of the path, made when they are asked for: most entries of thousands are asked for neither.
    bool hasUrlOfFolder_ = false;
    mutable bool hasIconOfFile_ = false;
    /// Shared, since thousands of entries have the same.
    std::shared_ptr<const TrashIcons> trashIcons_;
};

} // namespace brimwick
