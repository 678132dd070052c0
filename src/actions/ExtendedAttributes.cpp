#include "actions/ExtendedAttributes.h"

#include "actions/SystemError.h"
#include "platform/ports/FileDescriptor.h"

#include <sys/xattr.h>
#include <tl/expected.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace brimwick {

namespace {

using Names = std::vector<std::string>;

bool unsupported(const std::error_code& error) {
    return error == std::errc::operation_not_supported || error == std::errc::function_not_supported;
}

/// Calls a list or get function until its answer fits.
template<typename Call>
tl::expected<std::string, std::error_code> readGrowing(Call call) {
    for (;;) {
        const ssize_t needed = call(nullptr, 0);
        if (needed < 0) return tl::unexpected(lastSystemError());
        if (needed == 0) return std::string();
        std::string value(static_cast<std::size_t>(needed), '\0');
        const ssize_t got = call(value.data(), value.size());
        if (got >= 0) {
            value.resize(static_cast<std::size_t>(got));
            return value;
        }
        if (errno != ERANGE) return tl::unexpected(lastSystemError());
    }
}

tl::expected<Names, std::error_code> keptAttributes(int descriptor) {
    auto list = readGrowing([&](char* to, std::size_t size) { return flistxattr(descriptor, to, size); });
    if (!list) {
        if (unsupported(list.error())) return Names();
        return tl::unexpected(list.error());
    }
    Names names;
    for (std::size_t begin = 0; begin < list->size();) {
        const std::string name = list->c_str() + begin;
        begin += name.size() + 1;
        if (name.starts_with("user.") || name.starts_with("system.posix_acl_")) names.push_back(name);
    }
    return names;
}

bool fileSystemHasNone(int descriptor, const std::string& name) {
    return fgetxattr(descriptor, name.c_str(), nullptr, 0) < 0 && unsupported(lastSystemError());
}

} // namespace

std::error_code copyExtendedAttributes(int from, int to) {
    const auto wanted = keptAttributes(from);
    if (!wanted) return wanted.error();
    const auto inherited = keptAttributes(to);
    if (!inherited) return inherited.error();
    for (const std::string& name : *inherited) {
        if (std::ranges::find(*wanted, name) == wanted->end() && fremovexattr(to, name.c_str()) != 0)
            return lastSystemError();
    }
    for (const std::string& name : *wanted) {
        const auto value = readGrowing(
            [&](char* bytes, std::size_t size) { return fgetxattr(from, name.c_str(), bytes, size); });
        if (!value) return value.error();
        if (fsetxattr(to, name.c_str(), value->data(), value->size(), 0) == 0) continue;
        const std::error_code reason = lastSystemError();
        if (!unsupported(reason) || !fileSystemHasNone(to, name)) return reason;
    }
    return {};
}

} // namespace brimwick
