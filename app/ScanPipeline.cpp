// SPDX-License-Identifier: MIT
#include "app/ScanPipeline.h"

#include "app/StatusPanels.h"
#include "chart/ctlChartSpectrum.h"
#include "history/Recorder.h"
#include "link/frmVDR.h"
#include "settings/SessionState.h"

namespace veldron {

void ScanPipeline::TakeScan() {
    const LevelScan scan = m_parts.vdr.GetData();
    m_parts.chart.SetData(scan);
    m_parts.chart.Refresh();
    if (m_parts.session.Recording) {
        m_parts.recorder.writeScan(scan);
    } else {
        m_parts.statusBar.setStatusText(m_parts.vdr.Status());
    }
}

} // namespace veldron
