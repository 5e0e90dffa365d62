#include "TimingSheet.h"

#include "panel/Doc.h"

using namespace rostrum;

namespace {

bool HasChangeAt(const Timing &timing, int frame)
{
    return std::any_of(timing.begin(), timing.end(),
        [frame](const testing::KeyAt &change) { return change.frame == frame; });
}

} // namespace

TimingSheet::TimingSheet(int frames) : LibrarySheet({}, frames)
{
    EditProject().RemoveLayer(composition, layer);
    host.GetDocument().Replace(Project(host.GetProject()));
    host.GetDocument().view.activeItem = composition;
    SelectCompo("scene 7"); // the handles of the project before are stale
    GetVipLi()->Layer = nullptr;
    GetDoc()->SetRow(-1);
    GetDoc()->col = -1;
}

QString TimingSheet::AddColumn(const QString &drawing)
{
    if (GetVipLi()->FindCompo() && GetVipLi()->AddSequenceColumn(drawing.toUtf8()))
        return {};
    return QString::fromUtf8(ImportMessage);
}

void TimingSheet::Show()
{
    grid.UpdateFromCompo();
    robot = std::make_unique<GridRobot>(grid);
    grid.resize(80 + grid.columnCount() * 48, 60 + Frames() * 18); // no cell is to be scrolled to
}

void TimingSheet::Type(int col, const Timing &timing)
{
    for (const testing::KeyAt &change : timing) {
        robot->Click(col, change.frame);
        robot->Type(QString::number(change.image));
        if (!HasChangeAt(timing, change.frame + 1))
            robot->Key(Qt::Key_Return);
    }
}

const Layer &TimingSheet::LayerOf(int col) const
{
    return *host.GetProject().FindComposition(composition)->layers[col];
}
