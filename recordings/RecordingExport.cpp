// SPDX-License-Identifier: MIT
#include "recordings/RecordingExport.h"

namespace veldron {

void RecordingExport::block(const RecordedBlock &block) {
    m_settings.take(block);
    m_axis = m_settings.axis();
    settingsChanged();
}

void RecordingExport::scan(const RecordedScan &scan) {
    // Scans without a date count even where the window leaves them out, so that it is told why.
    m_withoutDate += scan.date ? 0 : 1;
    if (!m_window.has(scan)) {
        return;
    }
    ++m_taken;
    m_withoutAxis += m_axis ? 0 : 1;
    take(scan);
}

void RecordingExport::finish() {
    writeRest();
    sayOf(m_withoutDate, QStringLiteral("without a date above them"));
    sayOf(m_withoutAxis, QStringLiteral("without frequencies in the settings above them"));
    if (m_taken == 0) {
        m_console.say(nameForMessages(m_file) + QStringLiteral(": no scan to export"));
    }
}

void RecordingExport::sayOf(qint64 count, const QString &what) const {
    if (count > 0) {
        m_console.say(
            QStringLiteral("%1: %2 %3 %4")
                .arg(nameForMessages(m_file))
                .arg(count)
                .arg(count == 1 ? QStringLiteral("scan") : QStringLiteral("scans"), what));
    }
}

} // namespace veldron
