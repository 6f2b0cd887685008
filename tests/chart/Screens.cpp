// SPDX-License-Identifier: MIT
// The offscreen display reads its screens from a file, and the toolkit their scale factors from the
// environment. Both do so when the application starts, hence before main.
#include <QByteArray>

namespace veldron {
namespace {

bool useScreens() {
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    return (platform.isEmpty() || platform == "offscreen") &&
           qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" VELDRON_SCREENS) &&
           qputenv("QT_SCREEN_SCALE_FACTORS", "first=1;second=1.25;third=1.5;fourth=1.75;fifth=2");
}

[[maybe_unused]] const bool used = useScreens();

} // namespace
} // namespace veldron
