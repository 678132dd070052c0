#pragma once

#include "platform/ports/FileDescriptor.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace brimwick {

/// Opens a folder to list it; none when it cannot be. Throws std::system_error when that is for want of room
/// for another open file, which says nothing about the folder.
FileDescriptor openForListing(int parent, const char* path, int moreFlags = 0);

/// Whether the directory entry is a folder itself, a link to one not being one. `type` is the entry's d_type;
/// the disk is asked only where the file system does not tell.
bool isFolder(int directory, const char* name, unsigned char type);

/// Whether the index takes up a subfolder of this name: no dot-named one and no file package.
bool isIndexedName(std::string_view name);

/// Appends the names of the subfolders that the index takes up, each closed by a NUL, in the order of the
/// listing: every folder of an indexed name. What cannot be read is left out.
void appendSubfolderNames(int directory, std::string& names);
/// The same; the listing ends early once `mostSubfolders` folders of any name were seen.
void appendSubfolderNames(int directory, std::string& names, std::size_t mostSubfolders);

} // namespace brimwick
