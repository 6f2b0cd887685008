// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

/// Around the making of the application object, which aborts the process when there is no display
/// to be reached: as long as a report lives, such an error ends the process with a line of our own
/// on standard error and exit code 1, without a core dump. All other messages of the toolkit go
/// where they always go.
///
/// One at a time. Not kept for longer, because later on an abort of the toolkit is a defect, whose
/// core dump is wanted.
class StartReport {
public:
    StartReport();
    StartReport(const StartReport &) = delete;
    StartReport &operator=(const StartReport &) = delete;
    ~StartReport();
};

} // namespace veldron
