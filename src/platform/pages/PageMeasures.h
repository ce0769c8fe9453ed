#pragma once

/// Measures common to all reports, in millimetres unless noted.
namespace pages::measures {

inline constexpr double PerInch = 25.4;
inline constexpr double PerPoint = PerInch / 72;
inline constexpr double LineSpacing = 1.6; ///< height of a line of text, in heights of its letters
inline constexpr double HeadLines = 1.35;  ///< height of column heads, group headings and sums, in lines
inline constexpr double AboveLines = 1.2;  ///< height of the headings above column heads, in lines
inline constexpr double EndingLines = 1.25;
inline constexpr double EmptyLines = 3; ///< height of the text printed if there are no rows, in lines
inline constexpr double CellPadding = 1.2;
inline constexpr double SpaceBelowHeading = 4;
inline constexpr double SpaceAboveEnding = 6;
inline constexpr double EndingWidth = 90;
inline constexpr double FooterHeight = 8;
inline constexpr double FooterPoints = 8;
inline constexpr double ChartPoints = 8;
inline constexpr double ChartGap = 2; ///< between the parts of a chart
inline constexpr double SmallestChart = 40;

constexpr double LineHeight(double points)
{
    return points * PerPoint * LineSpacing;
}

inline constexpr double ChartLine = LineHeight(ChartPoints);

} // namespace pages::measures
