#include "platform/pages/Chart.h"

#include <algorithm>
#include <cmath>

namespace pages {

int ChartAxis::Steps() const
{
    return static_cast<int>(std::lround((highest - lowest) / step));
}

ChartAxis RoundAxis(double lowest, double highest, int mostSteps)
{
    lowest = std::min(lowest, 0.0);
    highest = std::max(highest, 0.0);
    const double roughStep = (highest - lowest) / mostSteps;
    double step = 1;
    if (roughStep > 1) {
        const double power = std::pow(10, std::floor(std::log10(roughStep)));
        for (const double factor : {1, 2, 5, 10}) {
            step = factor * power;
            if (step >= roughStep)
                break;
        }
    }
    ChartAxis axis{std::floor(lowest / step) * step, std::ceil(highest / step) * step, step};
    if (axis.lowest == axis.highest)
        axis.highest = step;
    return axis;
}

} // namespace pages
