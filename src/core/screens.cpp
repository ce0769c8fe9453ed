#include "core/screens.h"

#include <QtGlobal>
#include <utility>

namespace core {

namespace {

ScreenLinks linked;

} // namespace

void LinkScreens(ScreenLinks links)
{
    linked = std::move(links);
}

void OpenEvolution()
{
    Q_ASSERT(linked.evolution);
    linked.evolution();
}

void OpenResult(const QString& first, const QString& last)
{
    Q_ASSERT(linked.result);
    linked.result(first, last);
}

} // namespace core
