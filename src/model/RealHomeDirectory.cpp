#include "model/RealHomeDirectory.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <iostream>
#include <vector>

namespace brimwick {

std::string homeDirectoryOfUser(uid_t user) {
    passwd entry = {};
    passwd* found = nullptr;
    std::vector<char> buffer(1024);
    for (;;) {
        const int error = getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found);
        if (error == ERANGE)
            buffer.resize(buffer.size() * 2);
        else if (error != EINTR)
            break;
    }
    if (found == nullptr) {
        std::cerr << "brimwick: the user database has no entry for the user " << user << std::endl;
        std::abort();
    }
    return entry.pw_dir;
}

std::string realHomeDirectory() {
    return homeDirectoryOfUser(getuid());
}

} // namespace brimwick
