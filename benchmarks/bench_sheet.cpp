// The exposure sheet over a host, at its largest: what loading it costs, what a command and a typed
// cell cost beside the host's own work.
#include "bench/Bench.h"
#include "bench/TraceOff.h"

#include "panel/Doc.h"
#include "panel/WinGridDataAE.h"
#include "suites/Host.h"
#include "vnAE/vipLi.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <cstring>
#include <memory>

using namespace rostrum;

namespace {

constexpr int kColumns = 50;
constexpr int kRows = 1500;
constexpr int kImages = 2000; // drawings of each series
constexpr int kRounds = 9;
constexpr int kCommandRows = 1400;

/// Another number on every third row.
int Drawing(int col, int row)
{
    return 1 + (row / 3 + col) % 24;
}

/// A composition of series columns, on threes all of them.
class Scene
{
public:
    explicit Scene(int rows) : rows(rows)
    {
        Project project;
        Composition composition;
        composition.duration = composition.rate.FrameTime(rows);
        compo = project.AddComposition("bench", composition);
        Footage series;
        series.folder = QStringLiteral("/bench");
        series.isSeries = true;
        series.size = { 64, 64 };
        for (int image = 0; image < kImages; ++image) {
            series.files << QStringLiteral("b%1.png").arg(image, 4, 10, QLatin1Char('0'));
            series.numbers << image;
        }
        const ItemId footage = project.AddFootage("b", series);
        for (int col = kColumns - 1; col >= 0; --col) { // each lies on top
            const LayerId layer = project.AddLayer(footage, compo);
            Stream &remap = project.EditLayer(compo, layer)->timeRemap;
            for (int row = 0; row < rows; row += 3)
                PutKey(remap, row, Drawing(col, row));
            layers.prepend(layer);
        }
        host.GetDocument().Replace(project);
        host.GetDocument().view.activeItem = compo;
        vipLi *library = GetVipLi();
        library->BasicSuite = host.BasicSuite();
        library->PluginId = 1;
        library->Compo = nullptr;
        library->Layer = nullptr;
        std::strcpy(library->CompoName, "bench");
        library->FindCompo();
        GetDoc()->SetRow(-1);
        GetDoc()->SetCol(-1);
    }

    /// Drawings on the first rows of a column, and one on all others.
    void SetTop(int col, const QVector<int> &top, int below)
    {
        Stream &remap = host.GetDocument().Edit("top").EditLayer(compo, layers[col])->timeRemap;
        while (remap.HasKeys())
            remap.DeleteKey(remap.KeyCount() - 1);
        for (int row = 0; row < top.size(); ++row)
            PutKey(remap, row, top[row]);
        PutKey(remap, top.size(), below);
        host.GetDocument().CloseLooseEnds();
    }

    Host host;
    ItemId compo = 0;
    QVector<LayerId> layers;
    int rows;

private:
    static void PutKey(Stream &remap, int row, int image)
    {
        const int key = remap.InsertKey({ row, 25 }, { image / 25.0, 0, 0, 0 });
        remap.SetKeyInterpolation(key, Interpolation::Hold, Interpolation::Hold);
    }
};

/// Notes the cells that a command writes, in their order.
class NotingGrid : public WinGridDataAE
{
public:
    struct Written
    {
        int col, row, value;
    };

    bool SetCellValue(int row, int col, int value) override
    {
        if (isNoting)
            written << Written{ col, row, value };
        return WinGridDataAE::SetCellValue(row, col, value);
    }

    bool isNoting = false;
    QVector<Written> written;
};

void Key(QWidget *widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
    const QString &text = QString())
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(widget, &press);
}

/// The load's own reading, and nothing else.
void SampleAll()
{
    for (int col = 0; col < kColumns; ++col) {
        GetVipLi()->SetCurrentColumn(col);
        qint32 image = 0;
        for (int row = 0; row < kRows; ++row)
            GetVipLi()->GetCellImage(row, image);
    }
}

struct Texts
{
    explicit Texts(WinGridDataAE &grid)
    {
        for (int col = 0; col < grid.columnCount(); ++col) {
            columns << grid.horizontalHeaderItem(col)->text();
            for (int row = 0; row < grid.rowCount(); ++row) {
                cells << grid.item(row, col)->text();
                brushes << grid.item(row, col)->background();
            }
        }
    }
    QStringList columns;
    QVector<QString> cells;
    QVector<QBrush> brushes;
};

/// The least that shows a sheet of these texts: a table, its items, its headers and row heights.
std::unique_ptr<QTableWidget> FillBareTable(const Texts &texts)
{
    auto table = std::make_unique<QTableWidget>(kRows, kColumns);
    QStringList rowLabels;
    for (int row = 0; row < kRows; ++row)
        rowLabels << QString::number(row + 1);
    table->setVerticalHeaderLabels(rowLabels);
    table->setHorizontalHeaderLabels(texts.columns);
    for (int col = 0; col < kColumns; ++col) {
        for (int row = 0; row < kRows; ++row) {
            auto *item = new QTableWidgetItem(texts.cells[col * kRows + row]);
            item->setBackground(texts.brushes[col * kRows + row]);
            table->setItem(row, col, item);
        }
        table->setColumnWidth(col, 48);
    }
    for (int row = 0; row < kRows; ++row)
        table->setRowHeight(row, 18);
    return table;
}

bench::Figures Loading()
{
    Scene scene(kRows);
    WinGridDataAE loaded;
    loaded.UpdateFromCompo();
    const Texts texts(loaded);

    std::unique_ptr<WinGridDataAE> fresh;
    std::unique_ptr<QTableWidget> bare; // the end of either is not measured
    const auto renew = [&] {
        bare.reset();
        fresh = std::make_unique<WinGridDataAE>();
    };
    renew();
    bench::Figures figures;
    figures << bench::Compare(
        QStringLiteral("first load over sampling and a bare fill"), 1.2, kRounds,
        [&] { fresh->UpdateFromCompo(); },
        [&] {
            SampleAll();
            bare = FillBareTable(texts);
        },
        renew);
    fresh.reset();
    figures << bench::Compare(
        QStringLiteral("reload, nothing changed, over sampling and a rebuild"), 1.2, kRounds,
        [&] { loaded.UpdateFromCompo(); },
        [&] {
            SampleAll();
            loaded.RefreshGrid();
        });
    return figures;
}

/// A command that the keyboard runs on a selection of column 7.
struct Command
{
    const char *name;
    int key;
    Qt::KeyboardModifiers modifiers;
    QVector<int> top; // drawings of the first rows; nothing on the others
    int given; // rows that are selected, counted from the first; 0 for all that the command is for
};

const Command kCommands[] = {
    { "Serie", Qt::Key_G, Qt::ControlModifier, { 1, 2 }, 2 },
    { "Cycle", Qt::Key_H, Qt::ControlModifier, { 1, 2, 5 }, 3 },
    { "Insert", Qt::Key_Insert, Qt::NoModifier, {}, 1 },
    { "Clear", Qt::Key_Delete, Qt::NoModifier, {}, 0 },
};

constexpr int kCol = 7;

/// A sheet of its own for one command, made ready for it over and over.
class Bench
{
public:
    Bench(const Command &command, int sheetRows, int commandRows)
        : command(command), rows(commandRows), scene(sheetRows)
    {
        if (!command.top.isEmpty()) { // they stop where another drawing begins
            scene.SetTop(kCol, command.top, 0);
            PutEnd();
        }
        start = scene.host.GetProject();
        grid.UpdateFromCompo();
        const int first = command.key == Qt::Key_Insert ? grid.GetNbl() - rows - 1 : 0;
        const int last = command.given ? first + command.given - 1 : rows - 1;
        grid.setCurrentCell(last, kCol, QItemSelectionModel::NoUpdate);
        grid.SelectBloc(kCol, kCol, first, last);
        for (int row = 0; row < grid.GetNbl(); ++row)
            table << grid.GetCellValue(kCol, row);
        grid.isNoting = true;
        Run();
        grid.isNoting = false;
        if (grid.written.size() < rows - command.given)
            qFatal("%s wrote %d cells", command.name, grid.written.size());
        Reset();
    }

    void Run() { Key(&grid, command.key, command.modifiers); }

    void Reset()
    {
        while (scene.host.GetProject() != start && scene.host.GetDocument().Undo()) { }
        grid.UpdateFromCompo();
    }

    /// What the command writes into the host, and one rebuild.
    void WriteAndRebuild()
    {
        vipLi *library = GetVipLi();
        QVector<int> cells = table;
        library->StartUndoGroup(QStringLiteral("bench"));
        library->SetCurrentColumn(kCol);
        for (const NotingGrid::Written &cell : qAsConst(grid.written)) {
            cells[cell.row] = cell.value;
            library->SetCellImage(cell.row, cell.value);
            if (cell.row + 1 < cells.size() && cells[cell.row + 1] != cell.value)
                library->SetCellImage(cell.row + 1, cells[cell.row + 1]);
        }
        library->EndUndoGroup();
        grid.RefreshGrid();
    }

    NotingGrid grid;

private:
    void PutEnd()
    {
        Stream &remap = scene.host.GetDocument()
                            .Edit("end")
                            .EditLayer(scene.compo, scene.layers[kCol])
                            ->timeRemap;
        const int key = remap.InsertKey({ rows, 25 }, { 8 / 25.0, 0, 0, 0 });
        remap.SetKeyInterpolation(key, Interpolation::Hold, Interpolation::Hold);
        scene.host.GetDocument().CloseLooseEnds();
    }

    const Command &command;
    int rows;
    Scene scene;
    Project start;
    QVector<int> table;
};

bench::Figures Commands()
{
    bench::Figures figures;
    for (const Command &command : kCommands) {
        Bench bench(command, kRows, kCommandRows);
        figures << bench::Compare(
            QStringLiteral("%1 over 1400 rows over its writes and a rebuild")
                .arg(QLatin1String(command.name)),
            4, 5, [&] { bench.Run(); }, [&] { bench.WriteAndRebuild(); }, [&] { bench.Reset(); });
    }
    for (const Command &command : kCommands) {
        const int rows = command.key == Qt::Key_Insert ? 98 : 100;
        Bench bench(command, /*sheetRows=*/100, rows);
        figures << bench::Compare(
            QStringLiteral("%1 over 100 rows over a rebuild a cell")
                .arg(QLatin1String(command.name)),
            0, 3, [&] { bench.Run(); },
            [&] {
                bench.grid.SetRefreshAtOnce(true);
                bench.Run();
                bench.grid.SetRefreshAtOnce(false);
            },
            [&] { bench.Reset(); });
    }
    return figures;
}

/// From the key that opens the editor to the table that shows the cell and the host that holds it.
void TypeCell(WinGridDataAE &grid)
{
    const int value = 1 + grid.GetCellValue(2, 4) % 8; // another one each time, of one digit
    Key(&grid, Qt::Key_0 + value, Qt::NoModifier, QString::number(value));
    if (auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget()))
        Key(editor, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall); // the editor hands over later
    qint32 image = 0;
    GetVipLi()->SetCurrentColumn(2);
    GetVipLi()->GetCellImage(4, image);
    if (image != value || grid.item(4, 2)->text() != grid.GetCellText(2, 4))
        qFatal("a typed cell did not get to the table");
}

bench::Figures Typing()
{
    Scene scene(kRows);
    WinGridDataAE grid;
    grid.UpdateFromCompo();
    grid.resize(900, 700);
    grid.show();
    grid.setCurrentCell(4, 2);
    grid.setFocus();
    QApplication::processEvents();
    return { bench::Compare(
        QStringLiteral("a typed cell, keyboard to table, over a rebuild"), 1.5, 15,
        [&] { TypeCell(grid); }, [&] { grid.RefreshGrid(); },
        [] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QApplication::processEvents();
        }) };
}

const bench::Registration sheet("sheet", [] {
    const bench::TraceOff traceOff;
    return Loading() + Commands() + Typing();
});

} // namespace
