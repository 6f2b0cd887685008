// SPDX-License-Identifier: MIT
// The offscreen display reads its screens from a file, and has one of density 1 without it. It
// does so when the application starts, hence before main.
#include <QByteArray>

namespace veldron {
namespace {

bool useTwoScreens() {
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    return (platform.isEmpty() || platform == "offscreen") &&
           qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" VELDRON_TWO_SCREENS);
}

[[maybe_unused]] const bool used = useTwoScreens();

} // namespace
} // namespace veldron
