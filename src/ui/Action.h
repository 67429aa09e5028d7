#pragma once

#include <QMetaObject>
#include <QObject>
#include <QString>

#include <functional>
#include <tuple>
#include <utility>
#include <type_traits>

namespace tarvex {

/// Runs the work of a user's action, catching any fault it ends in before it can reach Qt's
/// event dispatch, which is not built to pass faults on: the work's transaction has rolled
/// back, one box says what was being done and why, and the program goes on.
void runAction(const QString &action, const std::function<void()> &work);

/// What the user did with a control, as the box names it: a button's or a menu entry's
/// caption without its "&"; empty when the control has none.
QString actionName(const QObject *control);

namespace detail {
// Calls work with as many of the signal's leading arguments as it takes, as Qt does.
template <std::size_t N, typename Work, typename Tuple> void invokeLeading(Work &work, Tuple &args)
{
    constexpr auto taking = [](auto... i) {
        return std::is_invocable_v<Work &, std::tuple_element_t<decltype(i)::value, Tuple>...>;
    };
    constexpr bool fits = [&]<std::size_t... I>(std::index_sequence<I...>) {
        return taking(std::integral_constant<std::size_t, I>{}...);
    }(std::make_index_sequence<N>{});
    if constexpr (fits) {
        [&]<std::size_t... I>(std::index_sequence<I...>) { std::invoke(work, std::get<I>(args)...); }(
            std::make_index_sequence<N>{});
    } else {
        static_assert(N > 0, "the work takes none of the signal's arguments");
        invokeLeading<N - 1>(work, args);
    }
}

template <typename> struct MemberOf;
template <typename R, typename C, typename... A> struct MemberOf<R (C::*)(A...)>
{
    using Class = C;
};
template <typename R, typename C, typename... A> struct MemberOf<R (C::*)(A...) const>
{
    using Class = C;
};
} // namespace detail

/// Connects a control's signal to the work of a user's action: every slot of the screens
/// goes through here, so no fault of the work reaches Qt. The work is a function of the
/// context object (the signal's arguments passed when it takes them) or any callable.
template <typename Sender, typename Signal, typename Context, typename Work>
QMetaObject::Connection onAction(Sender *sender, Signal signal, Context *context, Work work)
{
    return QObject::connect(sender, signal, context, [sender, context, work](auto... args) mutable {
        runAction(actionName(sender), [&] {
            auto given = std::make_tuple(args...);
            if constexpr (std::is_member_function_pointer_v<Work>) {
                auto *object = static_cast<typename detail::MemberOf<Work>::Class *>(context);
                auto call = [&](auto &&...a) -> decltype(std::invoke(work, object, a...)) {
                    return std::invoke(work, object, a...);
                };
                detail::invokeLeading<sizeof...(args)>(call, given);
            } else {
                detail::invokeLeading<sizeof...(args)>(work, given);
            }
        });
    });
}

} // namespace tarvex
