// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

/// Marks a panel as written to by code for as long as it lives. A plain flag, not a counter: the
/// end of a write within a write clears it too.
class UpdatingScope {
public:
    explicit UpdatingScope(bool &updating) : m_updating(updating) { m_updating = true; }
    UpdatingScope(const UpdatingScope &) = delete;
    UpdatingScope &operator=(const UpdatingScope &) = delete;
    ~UpdatingScope() { m_updating = false; }

private:
    bool &m_updating;
};

} // namespace veldron
