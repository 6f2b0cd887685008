// SPDX-License-Identifier: MIT
#include "tests/prove/Promise.h"

#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <utility>

namespace veldron {

using namespace std::chrono_literals;

namespace {

/// A round of checks and the read-back that the last of them asks for.
constexpr std::chrono::milliseconds kShownWithin = 8s;

} // namespace

Promise::Promise(LiveProgram &live, QString recording)
    : m_live(live), m_recording(std::move(recording)), m_panels(live.panels()),
      m_before(live.footprint()), m_place(live.unit().now()) {}

void Promise::changePanels(const QMap<QString, QString> &changed) {
    for (auto item = changed.begin(); item != changed.end(); ++item) {
        m_panels[item.key()] = item.value();
    }
}

void Promise::expectKept(const char *name, int lost) {
    const std::optional<double> back = m_live.secondsToPolling(kBackWithin);
    EXPECT_TRUE(back) << "no poll";
    expectPanels();
    const QString status =
        m_goesOn ? QStringLiteral("Recording") : QStringLiteral("VELDRON connected on COM 3");
    EXPECT_TRUE(m_live.run().statusText().startsWith(status))
        << qPrintable(m_live.run().statusText());
    EXPECT_EQ(m_live.run().isEnabled(QStringLiteral("Span")), !m_goesOn);
    const int missing = m_goesOn ? m_live.lostSince(m_place, m_recording) : 0;
    EXPECT_LE(missing, lost);
    const LiveProgram::Footprint after = m_live.footprint();
    EXPECT_LE(after.residentKib, m_before.residentKib + kGrowthKib);
    // Fewer, when the watchers of a file dialog have gone meanwhile.
    EXPECT_LE(after.descriptors, m_before.descriptors - (m_goesOn ? 0 : 1));
    std::printf("| %s | %.2f s | %d | %+d KiB |\n", name, back.value_or(-1.0), missing,
                static_cast<int>(after.residentKib - m_before.residentKib));
    std::fflush(stdout);
}

void Promise::expectPanels() {
    EXPECT_TRUE(eventually(kShownWithin, [this] { return m_live.panels() == m_panels; }));
    const QMap<QString, QString> shown = m_live.panels();
    for (auto item = m_panels.begin(); item != m_panels.end(); ++item) {
        EXPECT_EQ(shown.value(item.key()), item.value()) << qPrintable(item.key());
    }
}

} // namespace veldron
