// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QRect>
#include <QString>
#include <QStringList>

#include <optional>

namespace veldron {

/// One item on the screen, as a screen reader finds it.
struct ScreenItem {
    QString path;
    QString role; ///< such as "label", "combo box", "text", "check box", "push button"
    QString name; ///< of a label or button its text, of a list the row that it shows
    QString description;
    QRect place;     ///< on the screen
    int parent = -1; ///< index in the list that it came in
    bool isShowing = false;
    bool isEnabled = false;
    bool isChecked = false;
    bool isFocused = false;
};

/// Reads the texts and positions of a program's controls over the desktop's accessibility bus.
class ScreenReader : public QObject {
    Q_OBJECT

public:
    ScreenReader();
    ScreenReader(const ScreenReader &) = delete;
    ScreenReader &operator=(const ScreenReader &) = delete;
    ~ScreenReader() override;

    /// True once the program with this process number answers.
    [[nodiscard]] bool attach(qint64 process);
    /// Everything in the program's windows, the outer before the inner; rows of closed lists and
    /// entries of closed menus are left out.
    [[nodiscard]] QList<ScreenItem> read() const;
    /// True once the program has told its windows and what they hold: it works off its events.
    [[nodiscard]] bool answers() const;
    /// The present text of a label, an entry or a list.
    [[nodiscard]] QString textOf(const ScreenItem &item) const;
    /// The item as it is now.
    [[nodiscard]] ScreenItem renew(const ScreenItem &item) const;
    /// From now on it is told of new values that the program gives its controls.
    [[nodiscard]] bool listen();
    /// True if it was told of one for \a item.
    [[nodiscard]] bool wasTold(const ScreenItem &item) const { return m_told.contains(item.path); }

private Q_SLOTS:
    void noteValue(const QDBusMessage &message);

private:
    [[nodiscard]] bool connectToBus();
    [[nodiscard]] ScreenItem readItem(const QString &path) const;
    [[nodiscard]] QStringList childrenOf(const QString &path) const;
    void readInto(QList<ScreenItem> &items, const QString &path, int parent) const;

    QDBusConnection m_bus;
    QString m_service;
    QStringList m_told; ///< paths of the controls
};

} // namespace veldron
