// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

/// Marks a panel as being written to by code, so that it raises no event, for as long as this
/// lives. The flag is no counter: the inner of two nested scopes clears it for the outer one too.
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
