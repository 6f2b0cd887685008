// SPDX-License-Identifier: MIT
#pragma once

#include "app/UserDialogs.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace veldron {

/// Answers all boxes and file dialogs at once, as it was told to, and keeps a record.
class FakeDialogs : public UserDialogs {
public:
    /// The file that the user picks; nothing for Cancel.
    void pickFile(const QString &path) { m_file = path; }
    void cancelFile() { m_file.reset(); }
    /// The user's answer to a question.
    void answerOk(bool ok) { m_ok = ok; }
    /// \a act runs while a box or a file dialog is up.
    void setWhileUp(std::function<void()> act) { m_whileUp = std::move(act); }

    /// Everything that was shown, in order: "message", "question", "error", "open" and "save".
    [[nodiscard]] const QStringList &log() const { return m_log; }
    [[nodiscard]] QStringList titles() const { return m_titles; }
    [[nodiscard]] QStringList texts() const { return m_texts; }

    void forget() {
        m_log.clear();
        m_titles.clear();
        m_texts.clear();
    }

    std::optional<QString> openFile(const FileRequest &request) override {
        show("open", request.title, request.filter);
        return m_file;
    }
    std::optional<QString> saveFile(const FileRequest &request) override {
        show("save", request.title, request.filter);
        return m_file;
    }
    void showMessage(const QString &title, const QString &text) override {
        show("message", title, text);
    }
    bool askOkOrCancel(const QString &title, const QString &text) override {
        show("question", title, text);
        return m_ok;
    }
    void showError(const QString &text) override { show("error", {}, text); }

private:
    void show(const char *kind, const QString &title, const QString &text) {
        m_log.append(QLatin1String(kind));
        m_titles.append(title);
        m_texts.append(text);
        if (m_whileUp) {
            m_whileUp();
        }
    }

    std::optional<QString> m_file;
    bool m_ok = false;
    std::function<void()> m_whileUp;
    QStringList m_log;
    QStringList m_titles;
    QStringList m_texts;
};

} // namespace veldron
