#pragma once

#include <QObject>
#include <functional>
#include <type_traits>
#include <utility>

namespace forms {

/// Runs a handler. A RuntimeError that nothing catches shows "Erreur d'exécution '6' :" with its description, runs the
/// closing step and ends the program. No exception gets past it into the toolkit.
///
/// An error that comes while another one is being reported is dropped: the first one ends the program anyway.
void Guarded(const std::function<void()>& handler);

/// What a fatal error does before the program ends: the core closes the database here. An error it raises is dropped.
void OnFatalError(std::function<void()> closingStep);

/// Thrown by a desk whose EndProgram can't end the process, so that no handler goes on after the program's end. Guarded
/// swallows it.
struct ProgramEnded {
    int code = 0;
};

/// Calls a handler, a callable or a member function of `receiver`, with what it accepts: all that is given, or nothing.
template <class Handler, class Receiver, class... Given>
void Call(Handler& handler, [[maybe_unused]] Receiver& receiver, Given&&... given)
{
    if constexpr (std::is_member_function_pointer_v<Handler>) {
        if constexpr (std::is_invocable_v<Handler, Receiver&, Given...>)
            std::invoke(handler, receiver, std::forward<Given>(given)...);
        else
            std::invoke(handler, receiver);
    } else if constexpr (std::is_invocable_v<Handler&, Given...>) {
        handler(std::forward<Given>(given)...);
    } else {
        handler();
    }
}

/// Connects a signal to a handler that runs guarded: a callable, or a member function of `receiver`. It is given the
/// signal's arguments when it accepts them, and none otherwise. The connection ends with the sender or with `receiver`.
template <class Sender, class Signal, class Receiver, class Handler>
void On(Sender& sender, Signal signal, Receiver& receiver, Handler handler)
{
    QObject::connect(&sender, signal, &receiver,
                     [handler = std::move(handler), &receiver](auto&&... given) mutable -> void {
                         Guarded([&] { Call(handler, receiver, std::forward<decltype(given)>(given)...); });
                     });
}

/// Connects a signal of each control of an array to a member function of `receiver` that is given the control's index.
template <class Array, class Signal, class Receiver>
void OnEach(Array& controls, Signal signal, Receiver& receiver, void (Receiver::*handler)(int))
{
    for (int index = Array::FirstIndex(); index <= Array::LastIndex(); ++index)
        On(controls[index], signal, receiver, [&receiver, handler, index] { (receiver.*handler)(index); });
}

} // namespace forms
