// SPDX-License-Identifier: MIT
#pragma once

#include "app/UserDialogs.h"

#include <QString>

#include <optional>
#include <utility>

namespace veldron {

/// Picks one file, agrees to every question and keeps the last error.
class BenchDialogs : public UserDialogs {
public:
    explicit BenchDialogs(QString file = {}) : m_file(std::move(file)) {}

    std::optional<QString> openFile(const FileRequest & /*request*/) override { return m_file; }
    std::optional<QString> saveFile(const FileRequest & /*request*/) override { return m_file; }
    void showMessage(const QString & /*title*/, const QString & /*text*/) override {}
    bool askOkOrCancel(const QString & /*title*/, const QString & /*text*/) override {
        return true;
    }
    void showError(const QString &text) override { m_error = text; }
    [[nodiscard]] QString error() const { return m_error; }

private:
    QString m_file;
    QString m_error;
};

} // namespace veldron
