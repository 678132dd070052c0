#pragma once

#include <string>

namespace brimwick {

/// Where the program keeps its files, below the home folder of the user.
inline std::string supportFolder(const std::string& homeDirectory) {
    return homeDirectory + "/Library/Application Support/Brimwick";
}

/// What is noted there of moves and copies under way.
inline std::string fileJournalPath(const std::string& homeDirectory) {
    return supportFolder(homeDirectory) + "/BrimwickJournal";
}

} // namespace brimwick
