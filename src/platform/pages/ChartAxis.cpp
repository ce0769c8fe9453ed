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
    const auto axisOf = [lowest, highest](double step) {
        return ChartAxis{std::floor(std::min(lowest, 0.0) / step) * step,
                         std::ceil(std::max(highest, 0.0) / step) * step, step};
    };
    double power = 1;
    for (;; power *= 10)
        for (const double factor : {1, 2, 5})
            if (ChartAxis axis = axisOf(factor * power); axis.Steps() <= mostSteps) {
                axis.highest = axis.lowest == axis.highest ? axis.step : axis.highest;
                return axis;
            }
}

} // namespace pages
