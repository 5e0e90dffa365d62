// The exposure sheet in a window, over cells held in memory: to be looked at and tried by hand.
//   grid_demo          the panel's colours and style
//   grid_demo light    the light colours
#include "MemoryGrid.h"
#include "support/vnPalette.h"

#include <QApplication>
#include <QStyleFactory>

namespace {

constexpr int kRows = 96; // four seconds

/// Numbers that rise by one every `hold` rows, from a row on.
QVector<int> OnHolds(int first, int hold, int fromRow, int drawings)
{
    QVector<int> cells(fromRow, 0);
    for (int i = 0; i < drawings * hold; ++i)
        cells << first + i / hold;
    return cells;
}

void FillSheet(MemoryGrid &grid)
{
    grid.SetSize(7, kRows);
    grid.names = QStringList{ QStringLiteral("titre"), QStringLiteral("fx"),
        QStringLiteral("bouche"), QStringLiteral("tête"), QStringLiteral("corps_marche"),
        QStringLiteral("ombre"), QStringLiteral("décor") };
    grid.SetColumn(0, OnHolds(1, 24, 12, 2));
    grid.SetColumn(1, OnHolds(101, 1, 30, 20));
    grid.SetColumn(2, { 1, 4, 4, 2, 2, 1, 0, 0, 3, 3, 5, 5, 5, 2, 1, 1 });
    grid.SetColumn(3, OnHolds(1, 3, 0, 32));
    grid.SetColumn(4, OnHolds(1, 2, 0, 48));
    grid.SetColumn(5, OnHolds(1, 4, 0, 24));
    grid.fixed = { 6 };
    for (int row : { 0, 8, 9, 24, 25 }) {
        grid.SetKey(3, row, true);
        grid.SetKey(4, row / 2, true);
    }
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const bool isLight = argc > 1 && QByteArray(argv[1]) == "light";
    if (QStyle *style = QStyleFactory::create(QStringLiteral("plastique")))
        QApplication::setStyle(style);
    QPalette palette = QApplication::palette();
    ApplyColorSet(palette, /*set=*/isLight ? 2 : 1, /*range=*/1.0);
    QApplication::setPalette(palette);
    QFont font = QApplication::font();
    font.setPointSize(8); // the panel's
    QApplication::setFont(font);

    MemoryGrid grid;
    FillSheet(grid);
    grid.setWindowTitle(QStringLiteral("Morvex, the exposure sheet"));
    grid.RefreshGrid();
    grid.resize(440, 560);
    grid.show();
    grid.setCurrentCell(8, 3);
    return QApplication::exec();
}
