// The sheet's first way through the system, printed: a composition with one column over a series of
// drawings, cells written through the composition library, the keys that stand then, and an undo.
//
//     first_cells DRAWING [PROJECT]     any file of a numbered series; the composition with its cells
//                                       is saved as a project, to be rendered

#include "core/FootageFiles.h"
#include "core/ProjectFile.h"
#include "suites/Host.h"
#include "vnAE/vipLi.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstring>

using namespace rostrum;

namespace {

constexpr qint32 kCells[] = { 1, 1, 1, 2, 2, 0 };
constexpr int kFrames = sizeof kCells / sizeof kCells[0];
constexpr char kCompoName[] = "first cells";

/// An empty composition of the drawings' size, named to the library.
bool MakeComposition(Host &host, const QString &drawing)
{
    const ImportResult series = ImportDrawings(drawing, /*series=*/true);
    if (!series.Ok()) {
        std::fprintf(stderr, "first_cells: %s\n", qPrintable(series.error));
        return false;
    }
    Project project;
    Composition composition;
    composition.size = series.footage.size;
    composition.duration = composition.rate.FrameTime(kFrames);
    const ItemId compo = project.AddComposition(kCompoName, composition);
    host.GetDocument().Replace(project);
    host.GetDocument().view.activeItem = compo;
    std::printf("%s: %d drawings, %d by %d pixels\n", series.name.constData(),
        series.footage.files.size(), series.footage.size.width(), series.footage.size.height());

    vipLi *library = GetVipLi();
    library->BasicSuite = host.BasicSuite();
    std::strcpy(library->CompoName, kCompoName);
    return library->FindCompo();
}

/// One undo step: the series comes in as a new column, with its blank drawing 0 made beside it.
bool AddColumn(const QString &drawing)
{
    vipLi *library = GetVipLi();
    library->StartUndoGroup(QStringLiteral("morvex:NewCol"));
    const bool added = library->AddSequenceColumn(drawing.toUtf8());
    library->EndUndoGroup();
    if (!added)
        std::fprintf(stderr, "first_cells: no column was made: %s\n", ImportMessage);
    return added;
}

/// One undo step: the cells, from top to bottom.
void WriteCells()
{
    vipLi *library = GetVipLi();
    library->StartUndoGroup(QStringLiteral("morvex:EditCell"));
    for (int frame = 0; frame < kFrames; ++frame)
        library->SetCellImage(frame, kCells[frame]);
    library->EndUndoGroup();
}

void Print(const Host &host, const char *title)
{
    const Project &project = host.GetProject();
    const ItemId compo = host.GetProject().NextInWalk(project.RootFolder());
    const Stream &stream = project.FindComposition(compo)->layers[0]->timeRemap;
    std::printf("%s\n  keys ", title);
    for (int i = 0; i < stream.KeyCount(); ++i)
        std::printf(
            "  frame %g: %g s", stream.KeyAt(i).time.Seconds() * 25, stream.KeyAt(i).value[0]);
    std::printf("%s\n  cells", stream.HasKeys() ? "" : "  none, the layer shows its own time");
    for (int frame = 0; frame < kFrames; ++frame) {
        qint32 image = -1;
        GetVipLi()->GetCellImage(frame, image);
        std::printf("  %d", image);
    }
    std::printf("\n");
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", VN_OFFSCREEN);
    const QGuiApplication application(argc, argv);
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: first_cells DRAWING [PROJECT]\n");
        return 2;
    }
    Host host;
    const QString drawing = QString::fromLocal8Bit(argv[1]);
    if (!MakeComposition(host, drawing) || !AddColumn(drawing))
        return 1;
    Print(host, "a new column");
    WriteCells();
    Print(host, "after writing 1 1 1 2 2 0");
    const QString wrong
        = argc == 3 ? SaveProject(host.GetProject(), QString::fromLocal8Bit(argv[2])) : QString();
    GetVipLi()->DoCommand(kHostCommandUndo);
    Print(host, "after Undo");
    if (!wrong.isEmpty())
        std::fprintf(stderr, "first_cells: %s\n", qPrintable(wrong));
    const QByteArrayList leftOpen = host.Account();
    for (const QByteArray &line : leftOpen)
        std::printf("left open: %s\n", line.constData());
    return leftOpen.isEmpty() && wrong.isEmpty() ? 0 : 1;
}
