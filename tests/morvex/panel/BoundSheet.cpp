#include "BoundSheet.h"

#include "panel/Doc.h"

using namespace rostrum;

namespace {

/// One to four digits; every other text is no drawing.
int ByTheRule(int image, const ColumnPlan &plan)
{
    const QString text = image == 0 ? QString() : QString::number(image);
    const bool isNumber = QRegExp(QStringLiteral("[0-9]{1,4}")).exactMatch(text);
    const int value = isNumber ? text.toInt() : 0;
    const int last = plan.images - 1;
    const bool isBlank = plan.extension == QLatin1String("png");
    return value <= last ? value : isBlank ? 0 : last;
}

} // namespace

BoundSheet::BoundSheet(const SheetPlan &columns, int rows)
    : LibrarySheet({}, rows)
    , plan(columns)
    , frames(rows)
    , sheet(std::make_unique<WinGridDataAE>())
    , grid(*sheet)
{
    Project &project = host.GetDocument().Edit("plan");
    project.RemoveLayer(composition, layer);
    for (int col = plan.size() - 1; col >= 0; --col) // each lies on top of those before
        layers.prepend(Add(plan[col]));
    host.GetDocument().Replace(Project(host.GetProject()));
    host.GetDocument().view.activeItem = composition;
    SelectCompo("scene 7"); // the handles of the project before are stale
    GetVipLi()->Layer = nullptr;
    GetDoc()->SetRow(-1);
    GetDoc()->col = -1;
    GetDoc()->colWidth = 48;
}

LayerId BoundSheet::Add(const ColumnPlan &column)
{
    switch (column.source) {
    case Source::Still:
        return AddStill(column.name);
    case Source::Solid:
        return AddSolid(column.name);
    case Source::Camera:
        return AddCamera(column.name);
    case Source::Series:
        break;
    }
    const LayerId added = AddSeries(column.name, column.images, column.keys, column.extension);
    Stream &remap = EditProject().EditLayer(composition, added)->timeRemap;
    for (int key : column.linear)
        remap.SetKeyInterpolation(key, Interpolation::Linear, Interpolation::Linear);
    return added;
}

void BoundSheet::Show()
{
    grid.UpdateFromCompo();
    robot = std::make_unique<GridRobot>(grid);
    grid.resize(80 + plan.size() * 48, 60 + frames * 18); // no cell is to be scrolled to
}

Layer &BoundSheet::EditLayerOf(int col, const QByteArray &entry)
{
    return *host.GetDocument().Edit(entry).EditLayer(composition, layers[col]);
}

QVector<int> BoundSheet::HostImages(int col) const
{
    QVector<int> images;
    for (int frame = 0; frame < frames; ++frame) {
        StreamValue value{};
        const bool read
            = host.GetProject().StreamValueAt(LayerOf(col), kTimeRemap, Time{ frame, 25 }, &value);
        images << (read ? static_cast<int>(25 * value[0] + 0.5) : 0);
    }
    return images;
}

QVector<int> BoundSheet::HostColumn(int col) const
{
    QVector<int> numbers = HostImages(col);
    for (int &number : numbers)
        number = ByTheRule(number, plan[col]);
    return numbers;
}

bool BoundSheet::HoldsFromStart(int col) const
{
    const Stream &remap = LayerOf(col).timeRemap;
    for (int i = 0; i < remap.KeyCount(); ++i) {
        if (remap.KeyAt(i).out != Interpolation::Hold)
            return false;
    }
    return remap.HasKeys() && remap.KeyAt(0).time <= Time{ 0, 1 };
}

QVector<int> BoundSheet::Table(int col) const
{
    QVector<int> values;
    for (int row = 0; row < frames; ++row)
        values << grid.GetCellValue(col, row);
    return values;
}

QStringList BoundSheet::Shown(int col) const
{
    QStringList texts;
    for (int row = 0; row < grid.rowCount(); ++row)
        texts << (grid.item(row, col) ? grid.item(row, col)->text() : QStringLiteral("no item"));
    return texts;
}

ColumnPlan SeriesColumn(
    const QByteArray &name, int images, const Keys &keys, const QString &extension)
{
    ColumnPlan column;
    column.name = name;
    column.images = images;
    column.keys = keys;
    column.extension = extension;
    return column;
}

ColumnPlan StillColumn(const QByteArray &name)
{
    ColumnPlan column;
    column.source = Source::Still;
    column.name = name;
    return column;
}
