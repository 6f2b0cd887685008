// SPDX-License-Identifier: MIT
// Connections whose slots may throw: no exception ever runs through the toolkit's frames. The tree
// check refuses a bare connect() in any other file.
#pragma once

#include <QObject>

#include "common/UntrappedError.h"

#include <cstddef>
#include <functional>
#include <tuple>
#include <type_traits>
#include <utility>

namespace veldron {

/// Stands around the body of a slot or an event handler: what it throws goes to the report.
/// A copy reports to the same place. Each class with slots takes one in its constructor and keeps
/// it by value; there is no default, so that none can be forgotten.
class ErrorGuard {
public:
    using Report = std::function<void(const UntrappedError &)>;

    /// \a report ends the program (or, in a test, notes the error). It throws nothing itself.
    explicit ErrorGuard(Report report) : m_report(std::move(report)) {}

    /// Runs \a body. An UntrappedError out of it goes to the report; so does any other exception,
    /// as an UntrappedError of the kind Unexpected. Nothing leaves this function.
    template <typename Body>
    void run(Body &&body) const {
        try {
            std::forward<Body>(body)();
        } catch (const UntrappedError &error) {
            m_report(error);
        } catch (const std::exception &error) {
            m_report(unexpected(QString::fromUtf8(error.what())));
        } catch (...) {
            m_report(unexpected(QStringLiteral("unknown")));
        }
    }

private:
    [[nodiscard]] static UntrappedError unexpected(const QString &what) {
        return {UntrappedError::Kind::Unexpected,
                QStringLiteral("An internal error happened (%1).").arg(what)};
    }

    Report m_report;
};

namespace Detail {

/// Calls \a slot with the first \a Count of the signal's arguments.
template <typename Slot, typename Arguments, std::size_t... Index>
void callWithFirst(Slot &slot, const Arguments &arguments,
                   std::index_sequence<Index...> /*count*/) {
    std::invoke(slot, std::get<Index>(arguments)...);
}

/// Whether \a Slot can be called with as many of the signal's arguments as \a Index counts.
template <typename Slot, typename Arguments, std::size_t... Index>
constexpr bool takesFirst(std::index_sequence<Index...> /*count*/) {
    return std::is_invocable_v<Slot &, std::tuple_element_t<Index, Arguments>...>;
}

/// Calls \a slot with as many of the signal's arguments as it takes, as the toolkit does.
template <std::size_t Count, typename Slot, typename Arguments>
void callWithAtMost(Slot &slot, const Arguments &arguments) {
    if constexpr (takesFirst<Slot, Arguments>(std::make_index_sequence<Count>())) {
        callWithFirst(slot, arguments, std::make_index_sequence<Count>());
    } else {
        static_assert(Count > 0, "the slot takes none of the signal's argument lists");
        callWithAtMost<Count - 1>(slot, arguments);
    }
}

} // namespace Detail

/// Connects \a signal of \a sender to \a slot, run under \a guard, for as long as \a context lives.
/// The slot is anything that can be called with the signal's first arguments, or with none; a
/// member function is called on \a context.
///
/// The connection keeps copies of guard and slot. The slot sees the arguments as const references,
/// and its result is dropped. Where several argument lists fit, the longest is taken.
template <typename Sender, typename Emitter, typename... Arguments, typename Context, typename Slot>
QMetaObject::Connection connectGuarded(const ErrorGuard &guard, const Sender *sender,
                                       void (Emitter::*signal)(Arguments...), Context *context,
                                       Slot slot) {
    if constexpr (std::is_member_function_pointer_v<Slot>) {
        // The return type makes the lambda refuse each argument list that the member function
        // refuses, so that callWithAtMost() finds the one that fits.
        return connectGuarded(
            guard, sender, signal, context,
            [context, slot](auto &&...arguments)
                -> decltype(std::invoke(slot, context,
                                        std::forward<decltype(arguments)>(arguments)...)) {
                return std::invoke(slot, context, std::forward<decltype(arguments)>(arguments)...);
            });
    } else {
        return QObject::connect(sender, signal, context,
                                [guard, slot](Arguments... arguments) mutable {
                                    guard.run([&] {
                                        Detail::callWithAtMost<sizeof...(Arguments)>(
                                            slot, std::tuple<const Arguments &...>(arguments...));
                                    });
                                });
    }
}

} // namespace veldron
