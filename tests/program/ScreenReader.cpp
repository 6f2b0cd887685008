// SPDX-License-Identifier: MIT
#include "tests/program/ScreenReader.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>

#include <algorithm>

namespace veldron {

namespace {

const QString kConnection = QStringLiteral("screen-reader");
const QString kNothing = QStringLiteral("none");
const QString kRoot = QStringLiteral("/org/a11y/atspi/accessible/root");
constexpr int kLimit = 20000;

// Bits of a control's state.
constexpr int kChecked = 4;
constexpr int kEnabled = 8;
constexpr int kFocused = 12;
constexpr int kShowing = 25;

QDBusMessage callOf(const QString &service, const QString &path, const QString &interface,
                    const QString &member) {
    return QDBusMessage::createMethodCall(service, path,
                                          QStringLiteral("org.a11y.atspi.") + interface, member);
}

QDBusMessage propertyOf(const QString &service, const QString &path, const QString &name) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << QStringLiteral("org.a11y.atspi.Accessible") << name;
    return call;
}

QVariant firstOf(QDBusPendingCall &pending) {
    pending.waitForFinished();
    return pending.isError() ? QVariant() : pending.reply().arguments().value(0);
}

QString textFrom(QDBusPendingCall &pending) {
    const QVariant value = firstOf(pending);
    return value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant().toString()
                                            : value.toString();
}

QRect rectFrom(QDBusPendingCall &pending) {
    const QVariant value = firstOf(pending);
    if (!value.canConvert<QDBusArgument>()) {
        return {};
    }
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const auto argument = value.value<QDBusArgument>();
    argument.beginStructure();
    argument >> x >> y >> width >> height;
    argument.endStructure();
    return {x, y, width, height};
}

quint32 stateFrom(QDBusPendingCall &pending) {
    const QVariant value = firstOf(pending);
    if (!value.canConvert<QDBusArgument>()) {
        return 0;
    }
    return qdbus_cast<QList<uint>>(value.value<QDBusArgument>()).value(0);
}

bool hasBit(quint32 state, int bit) {
    return ((state >> bit) & 1U) != 0;
}

} // namespace

ScreenReader::ScreenReader() : m_bus(kNothing) {
    qDBusRegisterMetaType<QList<uint>>();
}

ScreenReader::~ScreenReader() {
    QDBusConnection::disconnectFromBus(kConnection);
}

bool ScreenReader::connectToBus() {
    if (m_bus.isConnected()) {
        return true;
    }
    const QDBusMessage reply = QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")));
    const QString address = reply.arguments().value(0).toString();
    if (reply.type() != QDBusMessage::ReplyMessage || address.isEmpty()) {
        return false;
    }
    m_bus = QDBusConnection::connectToBus(address, kConnection);
    return m_bus.isConnected();
}

bool ScreenReader::attach(qint64 process) {
    if (!connectToBus()) {
        return false;
    }
    m_service.clear();
    const QStringList names = m_bus.interface()->registeredServiceNames().value();
    for (const QString &name : names) {
        if (name.startsWith(QLatin1Char(':')) &&
            m_bus.interface()->servicePid(name).value() == process) {
            m_service = name;
        }
    }
    return !m_service.isEmpty() && !childrenOf(kRoot).isEmpty();
}

QList<ScreenItem> ScreenReader::read() const {
    QList<ScreenItem> items;
    for (const QString &window : childrenOf(kRoot)) {
        readInto(items, window, -1);
    }
    return items;
}

bool ScreenReader::answers() const {
    const QStringList windows = childrenOf(kRoot);
    return std::any_of(windows.begin(), windows.end(),
                       [this](const QString &window) { return !childrenOf(window).isEmpty(); });
}

void ScreenReader::readInto(QList<ScreenItem> &items, const QString &path, int parent) const {
    ScreenItem item = readItem(path);
    if (!item.isShowing) {
        return;
    }
    item.parent = parent;
    const auto own = static_cast<int>(items.size());
    items.append(item);
    for (const QString &child : childrenOf(path)) {
        readInto(items, child, own);
    }
}

ScreenItem ScreenReader::readItem(const QString &path) const {
    QDBusMessage extents =
        callOf(m_service, path, QStringLiteral("Component"), QStringLiteral("GetExtents"));
    extents << 0U; // relative to the screen
    const auto ask = [this](const QDBusMessage &call) {
        return m_bus.asyncCall(call, kLimit);
    };
    QDBusPendingCall role =
        ask(callOf(m_service, path, QStringLiteral("Accessible"), QStringLiteral("GetRoleName")));
    QDBusPendingCall state =
        ask(callOf(m_service, path, QStringLiteral("Accessible"), QStringLiteral("GetState")));
    QDBusPendingCall name = ask(propertyOf(m_service, path, QStringLiteral("Name")));
    QDBusPendingCall description = ask(propertyOf(m_service, path, QStringLiteral("Description")));
    QDBusPendingCall place = ask(extents);
    ScreenItem item;
    item.path = path;
    item.role = textFrom(role);
    item.name = textFrom(name);
    item.description = textFrom(description);
    item.place = rectFrom(place);
    const quint32 bits = stateFrom(state);
    item.isShowing = hasBit(bits, kShowing);
    item.isEnabled = hasBit(bits, kEnabled);
    item.isChecked = hasBit(bits, kChecked);
    item.isFocused = hasBit(bits, kFocused);
    return item;
}

QStringList ScreenReader::childrenOf(const QString &path) const {
    QDBusPendingCall pending = m_bus.asyncCall(
        callOf(m_service, path, QStringLiteral("Accessible"), QStringLiteral("GetChildren")),
        kLimit);
    const QVariant value = firstOf(pending);
    QStringList children;
    if (!value.canConvert<QDBusArgument>()) {
        return children;
    }
    const auto list = value.value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString service;
        QDBusObjectPath child;
        list.beginStructure();
        list >> service >> child;
        list.endStructure();
        children << child.path();
    }
    list.endArray();
    return children;
}

QString ScreenReader::textOf(const ScreenItem &item) const {
    if (item.role != QLatin1String("text")) {
        QDBusPendingCall name =
            m_bus.asyncCall(propertyOf(m_service, item.path, QStringLiteral("Name")), kLimit);
        return textFrom(name);
    }
    QDBusMessage call =
        callOf(m_service, item.path, QStringLiteral("Text"), QStringLiteral("GetText"));
    call << 0 << -1;
    QDBusPendingCall text = m_bus.asyncCall(call, kLimit);
    return textFrom(text);
}

/// A program only tells of what somebody has said to listen for.
bool ScreenReader::listen() {
    bool heard = true;
    for (const char *event : {"object:text-changed", "object:property-change:accessible-value"}) {
        QDBusMessage announcement = QDBusMessage::createMethodCall(
            QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/registry"),
            QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("RegisterEvent"));
        announcement << QString::fromLatin1(event);
        heard = heard && m_bus.call(announcement).type() == QDBusMessage::ReplyMessage;
    }
    const auto hear = [this](const QString &signal) {
        return m_bus.connect(m_service, {}, QStringLiteral("org.a11y.atspi.Event.Object"), signal,
                             this, SLOT(noteValue(QDBusMessage)));
    };
    return heard && hear(QStringLiteral("TextChanged")) && hear(QStringLiteral("PropertyChange"));
}

/// A text tells what is inserted into it, a list gives its value as its name.
void ScreenReader::noteValue(const QDBusMessage &message) {
    const QString what = message.arguments().value(0).toString();
    if (what == QLatin1String("insert") || what == QLatin1String("accessible-name")) {
        m_told << message.path();
    }
}

ScreenItem ScreenReader::renew(const ScreenItem &item) const {
    ScreenItem now = readItem(item.path);
    now.parent = item.parent;
    return now;
}

} // namespace veldron
