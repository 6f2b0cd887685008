// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

class Recorder;
class StatusPanels;
class ctlChartSpectrum;
class frmVDR;
struct SessionState;

/// The way of one scan: from the unit to the chart, and from there into the recording.
class ScanPipeline {
public:
    /// All of it outlives the pipeline.
    struct Dependencies {
        frmVDR &vdr;
        ctlChartSpectrum &chart;
        const SessionState &session;
        Recorder &recorder;
        StatusPanels &statusBar;
    };
    explicit ScanPipeline(const Dependencies &dependencies) : m_dependencies(dependencies) {}

    /// Takes one scan and shows it; blocks for about 0.4 s with a full scan, for up to a second
    /// with a silent unit. A scan that failed goes the same way. The status bar's text is then that
    /// of the recording, or the state of the link while nothing is recorded.
    void TakeScan();

private:
    Dependencies m_dependencies;
};

} // namespace veldron
