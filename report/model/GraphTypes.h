// What the graphs of both reports are made of, as the logic sees them:
// two-row plot arrays, plots, cursors, axes and track modes. The KVX report's
// excitation graph and the ZBL report's V graph are built from these, and the
// windows mirror them.
#pragma once

#include <QString>

#include <vector>

namespace quenby {

// A two-row array as the graph draws it: row 0 holds the X values (current,
// mA), row 1 the Y values (volts), column by column.
struct PlotArray
{
    std::vector<double> x; // row 0
    std::vector<double> y; // row 1

    int columns() const { return static_cast<int>(x.size()); }
    // Element (row, column); any other index is Subscript out of range.
    double at(int row, int column) const;
    bool operator==(const PlotArray&) const = default;
};

struct GraphPlot
{
    QString name;   // "Plot-1" to "Plot-10"
    PlotArray data; // the array last drawn on the plot; empty before any
};

struct GraphCursor
{
    QString name;   // "Cursor-1" to "Cursor-10"
    double x = 0.0; // mA
    double y = 0.0; // volts
    bool visible = false;
    bool operator==(const GraphCursor&) const = default;
};

struct GraphAxis
{
    QString caption;
    double minimum = 1.0;
    double maximum = 2000.0;
    bool logarithmic = true;
    bool operator==(const GraphAxis&) const = default;
};

// Track modes: what a drag on the graph does.
inline constexpr int TrackDragCursor = 1;
inline constexpr int TrackZoomRectangle = 6;

} // namespace quenby
