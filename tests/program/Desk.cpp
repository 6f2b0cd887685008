// SPDX-License-Identifier: MIT
#include "tests/program/Desk.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QProcess>
#include <QScreen>

#include "tests/program/Eventually.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <xcb/xcb.h>

namespace veldron::Desk {

namespace {

void xdotool(const QStringList &arguments) {
    QProcess::execute(QStringLiteral("xdotool"), arguments);
}

QStringList moveTo(QPoint place) {
    return {QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())};
}

xcb_connection_t *connection() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

struct FreeReply {
    void operator()(void *reply) const { std::free(reply); }
};

template <typename Reply>
std::unique_ptr<Reply, FreeReply> owned(Reply *reply) {
    return std::unique_ptr<Reply, FreeReply>(reply);
}

xcb_atom_t atom(const char *name) {
    const auto reply = owned(xcb_intern_atom_reply(
        connection(),
        xcb_intern_atom(connection(), 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_window_t root() {
    return xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
}

bool isMapped(xcb_window_t window) {
    const auto reply = owned(xcb_get_window_attributes_reply(
        connection(), xcb_get_window_attributes(connection(), window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

QString titleOf(xcb_window_t window) {
    constexpr std::uint32_t kLongest = 256;
    static const xcb_atom_t name = atom("_NET_WM_NAME");
    const auto reply = owned(xcb_get_property_reply(
        connection(), xcb_get_property(connection(), 0, window, name, XCB_ATOM_ANY, 0, kLongest),
        nullptr));
    if (!reply) {
        return {};
    }
    return QString::fromUtf8(static_cast<const char *>(xcb_get_property_value(reply.get())),
                             xcb_get_property_value_length(reply.get()));
}

struct Window {
    xcb_window_t id;
    QString title;
};

/// The windows with a title that are on the screen, the topmost first.
QList<Window> shownWindows() {
    QList<Window> shown;
    const auto tree =
        owned(xcb_query_tree_reply(connection(), xcb_query_tree(connection(), root()), nullptr));
    if (!tree) {
        return shown;
    }
    const xcb_window_t *children = xcb_query_tree_children(tree.get());
    for (int i = xcb_query_tree_children_length(tree.get()) - 1; i >= 0; --i) {
        const QString title = titleOf(children[i]);
        if (!title.isEmpty() && isMapped(children[i])) {
            shown.append({children[i], title});
        }
    }
    return shown;
}

xcb_window_t find(const QString &title) {
    for (const Window &window : shownWindows()) {
        if (window.title == title) {
            return window.id;
        }
    }
    return XCB_WINDOW_NONE;
}

} // namespace

void move(QPoint place) {
    xdotool(moveTo(place));
}

void click(QPoint place) {
    xdotool(moveTo(place) << QStringLiteral("click") << QStringLiteral("1"));
}

void doubleClick(QPoint place) {
    xdotool(moveTo(place) << QStringLiteral("click") << QStringLiteral("--repeat")
                          << QStringLiteral("2") << QStringLiteral("--delay")
                          << QStringLiteral("40") << QStringLiteral("1"));
}

void press(QPoint place) {
    xdotool(moveTo(place) << QStringLiteral("mousedown") << QStringLiteral("1"));
}

void release() {
    xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
}

void perform(const QStringList &words) {
    if (!words.isEmpty()) {
        xdotool(words);
    }
}

void key(const QString &name) {
    keys({name});
}

void keys(const QStringList &names) {
    xdotool(QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("8")} +
            names);
}

void type(const QString &text) {
    xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("5"),
             QStringLiteral("--"), text});
}

bool awaitWindow(const QString &title, std::chrono::milliseconds limit) {
    return eventually(limit, [&title] { return hasWindow(title); });
}

bool hasWindow(const QString &title) {
    return find(title) != XCB_WINDOW_NONE;
}

QStringList windows() {
    QStringList titles;
    for (const Window &window : shownWindows()) {
        titles << window.title;
    }
    return titles;
}

QSize sizeOf(const QString &title) {
    const auto reply = owned(
        xcb_get_geometry_reply(connection(), xcb_get_geometry(connection(), find(title)), nullptr));
    return reply ? QSize(reply->width, reply->height) : QSize();
}

void resize(const QString &title, QSize size) {
    const std::array<std::uint32_t, 2> values{static_cast<std::uint32_t>(size.width()),
                                              static_cast<std::uint32_t>(size.height())};
    xcb_configure_window(connection(), find(title),
                         XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
    // A round trip: afterwards the program has the news in its queue.
    owned(xcb_get_input_focus_reply(connection(), xcb_get_input_focus(connection()), nullptr));
}

void focus(const QString &title) {
    const xcb_window_t window = find(title);
    if (window == XCB_WINDOW_NONE) {
        return;
    }
    xcb_set_input_focus(connection(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    owned(xcb_get_input_focus_reply(connection(), xcb_get_input_focus(connection()), nullptr));
}

void pressCloseBox(const QString &title) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = find(title);
    event.type = atom("WM_PROTOCOLS");
    event.data.data32[0] = atom("WM_DELETE_WINDOW");
    event.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(connection(), 0, event.window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(connection());
}

QImage screenshot() {
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage().convertToFormat(
        QImage::Format_RGB32);
}

} // namespace veldron::Desk
