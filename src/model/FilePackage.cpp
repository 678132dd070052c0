#include "model/FilePackage.h"

#include "model/AsciiCase.h"

#include <array>

namespace brimwick {

namespace {

constexpr std::array<std::string_view, 10> packageExtensions = {
    "app", "AppDir", "bundle", "framework", "plugin", "kext", "rtfd", "pkg", "photoslibrary", "xcodeproj"};

} // namespace

bool isFilePackageName(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos) return false;
    const std::string_view extension = name.substr(dot + 1);
    return std::ranges::any_of(packageExtensions, [extension](std::string_view packageExtension) {
        return isSameIgnoringAsciiCase(extension, packageExtension);
    });
}

} // namespace brimwick
