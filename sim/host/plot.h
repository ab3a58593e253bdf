// A line plot as SVG, for the zoom's scale against time.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace sim {

struct CPlotSeries {
    std::string name;
    std::string colour;
    std::vector<std::pair<double, double>> points;  ///< (x, y)
};

/// Both axes start at 0 and end at the largest value of any series; a legend names each line.
std::string RenderPlot(const std::vector<CPlotSeries>& series, const std::string& title,
                       const std::string& xLabel, const std::string& yLabel);

}  // namespace sim
