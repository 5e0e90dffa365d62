// The frame of the benchmarks. A figure is a ratio: what ours costs over what the floor costs, both
// measured in the same run, round by round, so that a machine's mood hits them alike.
//
//     const Registration cells("cells", [] {
//         return Figures { Compare("GetCellImage", 1.5, 15, ours, floor) };
//     });
#pragma once

#include <QString>
#include <QVector>

#include <functional>

namespace bench {

struct Figure
{
    QString name;
    double ours = 0; // in `unit`
    double floor = 0; // in `unit`; 0 for a plain report
    double goal = 0; // the largest ratio that is well; 0 for a figure that is only reported
    QString unit = QStringLiteral("us");

    double Ratio() const { return floor > 0 ? ours / floor : 0; }
    bool Reached() const { return goal <= 0 || Ratio() <= goal; }
};

using Figures = QVector<Figure>;

/// Names a group of figures and the function that measures it, for `./bench NAME`.
struct Registration
{
    Registration(const char *name, std::function<Figures()> measure);
};

double Median(QVector<double> values);

/// Microseconds of this one call.
double Once(const std::function<void()> &work);

/// Median microseconds of one call. @param rounds number of measured calls, after one warm-up
double MedianTime(int rounds, const std::function<void()> &work);

/// Ours and the floor in turn, the median of each. @param goal see Figure
/// @param between runs behind each call and is not measured
Figure Compare(const QString &name, double goal, int rounds, const std::function<void()> &ours,
    const std::function<void()> &floor, const std::function<void()> &between = {});

/// Runs the group of this name, or all; prints a line a figure: name, ours, floor, ratio, goal, and
/// "ok" or "short". @return the program's exit status: 1 when a goal is missed, 2 for an unknown
/// name
int Run(const QString &name);

} // namespace bench
