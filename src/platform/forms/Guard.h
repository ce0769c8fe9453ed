#pragma once

#include <QObject>
#include <functional>
#include <type_traits>
#include <utility>

namespace forms {

/// Runs a handler. An uncaught RuntimeError is shown ("Erreur d'exécution '6' :" and its description), the closing step
/// is run and the program ends. No exception reaches the toolkit.
///
/// An error raised while another one is being reported is ignored: the program ends anyway.
void Guarded(const std::function<void()>& handler);

/// Sets the closing step of a fatal error: the core closes the database. Its errors are ignored.
void OnFatalError(std::function<void()> closingStep);

/// Thrown by a desk whose EndProgram doesn't end the process, so that no handler continues. Caught by Guarded.
struct ProgramEnded {
    int code = 0;
};

/// Calls a handler, a callable or a member function of `receiver`, with all arguments or, if it doesn't accept them,
/// none.
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

/// Connects a signal to a guarded handler, a callable or a member function of `receiver`. It receives the signal's
/// arguments if it accepts them. The connection ends with the sender or `receiver`.
template <class Sender, class Signal, class Receiver, class Handler>
void On(Sender& sender, Signal signal, Receiver& receiver, Handler handler)
{
    QObject::connect(&sender, signal, &receiver,
                     [handler = std::move(handler), &receiver](auto&&... given) mutable -> void {
                         Guarded([&] { Call(handler, receiver, std::forward<decltype(given)>(given)...); });
                     });
}

/// Connects a signal of each control of an array to a member function of `receiver` that takes the control's index.
template <class Array, class Signal, class Receiver>
void OnEach(Array& controls, Signal signal, Receiver& receiver, void (Receiver::*handler)(int))
{
    for (int index = Array::FirstIndex(); index <= Array::LastIndex(); ++index)
        On(controls[index], signal, receiver, [&receiver, handler, index] { (receiver.*handler)(index); });
}

} // namespace forms
