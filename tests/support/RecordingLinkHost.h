// SPDX-License-Identifier: MIT
#pragma once

#include "link/LinkHost.h"

#include <QString>

#include <functional>
#include <utility>
#include <vector>

namespace veldron {

/// Records what the link shows to the user, and returns at once.
class RecordingLinkHost : public LinkHost {
public:
    struct Message {
        QString title;
        QString text;
        friend bool operator==(const Message &a, const Message &b) = default;
    };

    void setHourglass(bool on) override { m_hourglass.push_back(on); }
    void showMessage(const QString &title, const QString &text) override {
        m_messages.push_back({title, text});
        if (m_onMessage) {
            m_onMessage();
        }
    }

    [[nodiscard]] const std::vector<bool> &hourglass() const { return m_hourglass; }
    [[nodiscard]] const std::vector<Message> &messages() const { return m_messages; }
    /// \a act runs while a message is shown.
    void setOnMessage(std::function<void()> act) { m_onMessage = std::move(act); }

private:
    std::vector<bool> m_hourglass;
    std::vector<Message> m_messages;
    std::function<void()> m_onMessage;
};

} // namespace veldron
