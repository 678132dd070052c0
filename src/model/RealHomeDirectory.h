#pragma once

#include <sys/types.h>

#include <string>

namespace brimwick {

/// The home folder of the user who really runs the process, from the user database; the environment is not
/// asked. Without an entry there the process stops. Any thread.
std::string realHomeDirectory();

/// The same for the user with this number.
std::string homeDirectoryOfUser(uid_t user);

} // namespace brimwick
