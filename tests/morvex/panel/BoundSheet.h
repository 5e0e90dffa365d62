// BoundSheet: the panel's sheet over a host of its own, made from a plan of columns, with a robot to
// work it by keys and mouse. Column 0 is the first of the plan.
#pragma once

#include "gridtest/GridRobot.h"
#include "librarysheet/LibrarySheet.h"
#include "panel/WinGridDataAE.h"

#include <memory>

enum class Source { Series, Still, Solid, Camera };

/// A layer to be made.
struct ColumnPlan
{
    Source source = Source::Series;
    QByteArray name;
    int images = 40; // of a series, numbered from 0
    Keys keys; // hold keys of the time remap
    QString extension = QStringLiteral("png"); // png and tga make a blank column
    QVector<int> linear; // indexes of keys that run on to the next one in a line
};

using SheetPlan = QVector<ColumnPlan>;

class BoundSheet : public LibrarySheet
{
public:
    /// The host's project with an empty history and an empty sheet over it, unshown.
    BoundSheet(const SheetPlan &plan, int frames);

    /// Fills the sheet and shows it to a robot.
    void Show();
    GridRobot &Robot() { return *robot; }

    rostrum::Document &Doc() { return host.GetDocument(); }
    const rostrum::Layer &LayerOf(int col) const { return Find(layers[col]); }
    /// For what a user does by hand in the host; the change is an entry of this name.
    rostrum::Layer &EditLayerOf(int col, const QByteArray &entry);
    /// What the host shows, by the sheet's rule: rounded, four digits, cut at the last image.
    QVector<int> HostColumn(int col) const;
    /// The same as it is, rounded alone.
    QVector<int> HostImages(int col) const;
    /// Every key holds, and one stands at frame 0 or before.
    bool HoldsFromStart(int col) const;

    QVector<int> Table(int col) const;
    QStringList Shown(int col) const;

    SheetPlan plan;
    QVector<rostrum::LayerId> layers; // by column
    int frames;

private:
    rostrum::LayerId Add(const ColumnPlan &column);

    std::unique_ptr<WinGridDataAE> sheet; // before the robot, which holds on to it
    std::unique_ptr<GridRobot> robot;

public:
    WinGridDataAE &grid;
};

/// A series whose key at frame 0 holds an image.
ColumnPlan SeriesColumn(const QByteArray &name, int images, const Keys &keys,
    const QString &extension = QStringLiteral("png"));
ColumnPlan StillColumn(const QByteArray &name);
