// SPDX-License-Identifier: MIT
#include "app/ScanPipeline.h"

#include "app/StatusPanels.h"
#include "chart/ctlChartSpectrum.h"
#include "history/Recorder.h"
#include "link/frmVDR.h"
#include "settings/SessionState.h"

namespace veldron {

void ScanPipeline::TakeScan() {
    const LevelScan scan = m_dependencies.vdr.GetData();
    m_dependencies.chart.SetData(scan);
    m_dependencies.chart.Refresh();
    // Behind the picture, because the recording waits until the line is on the disk.
    if (m_dependencies.session.Recording) {
        m_dependencies.recorder.writeScan(scan);
    } else {
        m_dependencies.statusBar.setStatusText(m_dependencies.vdr.Status());
    }
}

} // namespace veldron
