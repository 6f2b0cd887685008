// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QtGlobal>

#include <functional>
#include <optional>
#include <string>

namespace veldron {

/// What a command says on standard error: messages, and a progress bar with the remaining time for
/// whatever takes longer than a second. The bar is only drawn on a terminal.
class Console {
public:
    /// Milliseconds of a steady clock.
    using Milliseconds = std::function<qint64()>;

    /// Standard error, with the bar if that is a terminal.
    Console();
    /// Writes to \a descriptor, and draws the bar if it \a isTerminal.
    Console(int descriptor, bool isTerminal, Milliseconds clock);
    Console(const Console &) = delete;
    Console &operator=(const Console &) = delete;
    ~Console() { endProgress(); }

    /// "FILE:LINE: what".
    void complain(const std::string &file, qint64 line, const QString &what);
    /// \a text and a line end.
    void say(const QString &text);

    /// A job of \a total bytes, or of an unknown number, begins.
    void beginProgress(std::optional<qint64> total);
    /// So many of them are done. Cheap enough for every chunk: it draws ten times a second at most,
    /// and nothing in the first second.
    void progress(qint64 done);
    /// Removes the bar; harmless without one.
    void endProgress();

private:
    /// The bar, or the megabytes done where the total is not known.
    void draw(qint64 done, qint64 now);
    /// Takes the bar away before a line is written; the next progress() draws it again.
    void wipe();
    void write(const QString &text);

    int m_descriptor;
    bool m_isTerminal;
    Milliseconds m_clock;
    std::optional<qint64> m_total;
    qint64 m_begun = 0;
    qint64 m_nextDrawing = 0;
    bool m_isDrawn = false;
};

/// How a file is named in messages: its path, or "standard input" for "-".
[[nodiscard]] QString nameForMessages(const std::string &path);

} // namespace veldron
