#pragma once

#include <string>

namespace brimwick {

/// Whether the directory entry is a folder itself, a link to one not being one. `type` is the entry's d_type;
/// the disk is asked only where the file system does not tell.
bool isFolder(int directory, const char* name, unsigned char type);

/// Appends the names of the subfolders that the index takes up, each closed by a NUL, in the order of the
/// listing: every folder that is neither dot-named nor a file package. What cannot be read is left out.
void appendSubfolderNames(int directory, std::string& names);

} // namespace brimwick
