#include "bench/Bench.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace bench {
namespace {

struct Group
{
    QString name;
    std::function<Figures()> measure;
};

QVector<Group> &Groups()
{
    static QVector<Group> groups;
    return groups;
}

void Print(const Figure &figure)
{
    std::printf("%-46s ours %12.2f %-5s floor %12.2f  ratio %7.3f  goal %7s  %s\n",
        qPrintable(figure.name), figure.ours, qPrintable(figure.unit), figure.floor, figure.Ratio(),
        qPrintable(figure.goal > 0 ? QString::number(figure.goal) : QStringLiteral("-")),
        figure.Reached() ? "ok" : "short");
    std::fflush(stdout);
}

} // namespace

Registration::Registration(const char *name, std::function<Figures()> measure)
{
    Groups() << Group{ QString::fromUtf8(name), std::move(measure) };
}

double Median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values[values.size() / 2];
}

double Once(const std::function<void()> &work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::micro> taken
        = std::chrono::steady_clock::now() - start;
    return taken.count();
}

double MedianTime(int rounds, const std::function<void()> &work)
{
    work();
    QVector<double> times;
    for (int i = 0; i < rounds; ++i)
        times << Once(work);
    return Median(times);
}

Figure Compare(const QString &name, double goal, int rounds, const std::function<void()> &ours,
    const std::function<void()> &floor, const std::function<void()> &between)
{
    const auto measured = [&](const std::function<void()> &work) {
        const double time = Once(work);
        if (between)
            between();
        return time;
    };
    measured(ours); // the first round warms up
    measured(floor);
    QVector<double> oursTimes, floorTimes;
    for (int i = 0; i < rounds; ++i) {
        oursTimes << measured(ours);
        floorTimes << measured(floor);
    }
    Figure figure;
    figure.name = name;
    figure.ours = Median(oursTimes);
    figure.floor = Median(floorTimes);
    figure.goal = goal;
    return figure;
}

int Run(const QString &name)
{
    bool found = false;
    bool reached = true;
    for (const Group &group : Groups()) {
        if (!name.isEmpty() && name != group.name)
            continue;
        found = true;
        for (const Figure &figure : group.measure()) {
            Print(figure);
            reached = reached && figure.Reached();
        }
    }
    if (!found) {
        std::fprintf(stderr, "bench: there is no \"%s\"; there are:", qPrintable(name));
        for (const Group &group : Groups())
            std::fprintf(stderr, " %s", qPrintable(group.name));
        std::fputc('\n', stderr);
        return 2;
    }
    return reached ? 0 : 1;
}

} // namespace bench
