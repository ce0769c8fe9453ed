#pragma once

#include <QString>
#include <functional>

namespace core {

/// Screens that are opened from screens of other modules, which don't know them. Set by menu.cpp.
struct ScreenLinks {
    std::function<void()> evolution;
    std::function<void(const QString& first, const QString& last)> result;
};
void LinkScreens(ScreenLinks links);

/// Shows the screen "Évolution" until it is closed.
void OpenEvolution();
/// Shows the screen "Résultat" with the result of a period, given by its days as dd/mm/yyyy.
void OpenResult(const QString& first, const QString& last);

} // namespace core
