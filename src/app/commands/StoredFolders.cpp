#include "app/commands/StoredFolders.h"

#include "model/PreferencesStore.h"
#include "model/SupportFolder.h"

namespace brimwick {

tl::expected<std::vector<std::string>, std::string> storedFolders(const std::string& homeDirectory,
                                                                  const std::string& resourceDirectory) {
    const std::vector<BWSelectedFileOrFolder> none;
    PreferencesStore store(supportFolder(homeDirectory), Resources(resourceDirectory), none);
    auto stored = store.readStoredPreferences();
    if (!stored) return tl::unexpected("the preferences cannot be read: " + stored.error());
    store.setPreferences(*std::move(stored));
    return store.indexedFolderPaths();
}

} // namespace brimwick
