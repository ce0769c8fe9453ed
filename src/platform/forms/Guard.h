#pragma once

#include <functional>
#include <utility>

namespace forms {

/// Runs a handler. A RuntimeError that nothing catches shows "Erreur d'exécution '6' :" with its description, runs the
/// closing step and ends the program. No exception gets past it into the toolkit.
void Guarded(const std::function<void()>& handler);

/// What a fatal error does before the program ends: the core closes the database here.
void OnFatalError(std::function<void()> closingStep);

/// Connects a signal to a handler that runs guarded. The connection ends with the sender or with `receiver`.
template <class Sender, class Signal, class Receiver, class Handler>
void On(Sender& sender, Signal signal, Receiver& receiver, Handler handler)
{
    Sender::connect(&sender, signal, &receiver,
                    [handler = std::move(handler)](auto&&...) { Guarded(handler); });
}

} // namespace forms
