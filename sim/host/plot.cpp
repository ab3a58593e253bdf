#include "sim/host/plot.h"

#include <algorithm>
#include <cstdio>

namespace sim {

std::string RenderPlot(const std::vector<CPlotSeries>& series, const std::string& title,
                       const std::string& xLabel, const std::string& yLabel) {
    const double left = 70, right = 20, top = 50, bottom = 50, width = 720, height = 420;
    double xMax = 1e-9, yMax = 1e-9;
    for (const auto& s : series) {
        for (const auto& [x, y] : s.points) {
            xMax = std::max(xMax, x);
            yMax = std::max(yMax, y);
        }
    }
    const double plotW = width - left - right, plotH = height - top - bottom;
    auto px = [&](double x) { return left + x / xMax * plotW; };
    auto py = [&](double y) { return top + plotH - y / yMax * plotH; };
    char buf[512];
    std::string svg;
    std::snprintf(buf, sizeof buf,
                  "<svg xmlns='http://www.w3.org/2000/svg' width='%.0f' height='%.0f'>\n"
                  "<rect width='100%%' height='100%%' fill='white'/>\n"
                  "<text x='%.0f' y='28' font-size='18' font-family='sans-serif'>%s</text>\n",
                  width, height, left, title.c_str());
    svg += buf;
    for (int i = 0; i <= 5; ++i) {
        double y = yMax * i / 5, x = xMax * i / 5;
        std::snprintf(buf, sizeof buf,
                      "<line x1='%.1f' y1='%.1f' x2='%.1f' y2='%.1f' stroke='#ddd'/>"
                      "<text x='%.1f' y='%.1f' font-size='12' text-anchor='end' "
                      "font-family='sans-serif'>%.2f</text>"
                      "<text x='%.1f' y='%.1f' font-size='12' text-anchor='middle' "
                      "font-family='sans-serif'>%.0f</text>\n",
                      left, py(y), left + plotW, py(y), left - 6, py(y) + 4, y, px(x),
                      top + plotH + 18, x);
        svg += buf;
    }
    std::snprintf(buf, sizeof buf,
                  "<text x='%.1f' y='%.1f' font-size='13' text-anchor='middle' "
                  "font-family='sans-serif'>%s</text>"
                  "<text x='16' y='%.1f' font-size='13' font-family='sans-serif' "
                  "transform='rotate(-90 16 %.1f)' text-anchor='middle'>%s</text>\n",
                  left + plotW / 2, height - 10, xLabel.c_str(), top + plotH / 2, top + plotH / 2,
                  yLabel.c_str());
    svg += buf;
    int row = 0;
    for (const auto& s : series) {
        svg += "<polyline fill='none' stroke-width='2' stroke='" + s.colour + "' points='";
        for (const auto& [x, y] : s.points) {
            std::snprintf(buf, sizeof buf, "%.1f,%.1f ", px(x), py(y));
            svg += buf;
        }
        svg += "'/>\n";
        std::snprintf(buf, sizeof buf,
                      "<text x='%.1f' y='%.1f' font-size='13' fill='%s' text-anchor='end' "
                      "font-family='sans-serif'>%s</text>\n",
                      left + plotW - 12, top + 16 + 18.0 * row++, s.colour.c_str(), s.name.c_str());
        svg += buf;
    }
    return svg + "</svg>\n";
}

}  // namespace sim
