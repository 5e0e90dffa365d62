// The main job, from the drawings to the rendered frames, by mouse and keyboard alone: drawings are
// imported, a column is made and timed with every command of the trade, played, saved; the program is
// left and started again, as another process, and renders. Each frame is then the drawing that the
// sheet has named.
//
//     tst_main_job --keep FOLDER    leaves project, frames and pictures of the window there

#include "MainDesk.h"

#include "testing/TestMain.h"
#include "window/Style.h"
#include "window/Viewer.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProcess>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <cstdio>

using namespace rostrum;
using testing::MainDesk;

namespace {

constexpr int kFrames = 24;
constexpr int kDrawings = 8;
const QSize kSize(480, 480); // of the drawings and the composition

QString keep; // the folder that was asked for; empty for one that goes
constexpr char kAgain[] = "--again";
constexpr char kScene[] = "--scene";
constexpr int kWentWrong = 3;

using Cells = QVector<int>;

/// What a person expects of the commands, said once more: the sheet is held against it.
class Paper
{
public:
    Cells cells = Cells(kFrames, 0);

    void Fill(int from, int to, int number) { std::fill(At(from), At(to), number); }
    void Insert(int from, int count)
    {
        std::copy_backward(At(from), cells.end() - count, cells.end());
        Fill(from, from + count, cells[from]);
    }
    void Remove(int from, int count)
    {
        std::copy(At(from + count), cells.end(), At(from));
        Fill(kFrames - count, kFrames, 0);
    }
    /// Numbers from the top; " ~ " where the one above goes on, nothing for the blank drawing.
    QStringList Shown() const
    {
        QStringList texts;
        for (int row = 0; row < kFrames; ++row) {
            const bool holds = row > 0 && cells[row] == cells[row - 1] && cells[row] != 0;
            texts << (holds           ? QStringLiteral("~")
                    : cells[row] == 0 ? QString()
                                      : QString::number(cells[row]));
        }
        return texts;
    }

private:
    Cells::iterator At(int row) { return cells.begin() + row; }
};

/// The project's folder with the drawings in it.
class Cut
{
public:
    Cut()
    {
        if (!keep.isEmpty())
            folder = keep;
        QDir(folder).mkpath(QStringLiteral("walk"));
        for (int number = 0; number <= kDrawings; ++number) // 0 is blank
            QFile::copy(QStringLiteral(VN_WALK) + NameOf(number), DrawingPath(number));
    }

    static QString NameOf(int number)
    {
        return QStringLiteral("/walk%1.png").arg(number, 4, 10, QLatin1Char('0'));
    }
    QString DrawingPath(int number) const
    {
        return folder + QStringLiteral("/walk") + NameOf(number);
    }
    QString ProjectPath() const { return folder + QStringLiteral("/walk.rostrum"); }
    QString FramesPath() const { return folder + QStringLiteral("/frames"); }

private:
    QTemporaryDir temporary;

public:
    QString folder = temporary.path();
};

/// The frame that shows a drawing: the drawing over the composition's background.
QImage FrameOf(const Cut &cut, int number)
{
    QImage frame(kSize, QImage::Format_ARGB32_Premultiplied);
    frame.fill(Qt::black);
    if (number > 0)
        QPainter(&frame).drawImage(0, 0, QImage(cut.DrawingPath(number)));
    return frame.convertToFormat(QImage::Format_RGB32);
}

/// The second process: the saved project comes up with its sheet, and is rendered.
int RunAgain(const QString &project, const QString &frames)
{
    MainDesk desk;
    if (!desk.Window().Open(project))
        return kWentWrong;
    if (!desk.Choose("Window", QStringLiteral("morvex")))
        return kWentWrong;
    if (!QTest::qWaitFor([&] { return desk.Sheet() && desk.Sheet()->rowCount() == kFrames; }))
        return kWentWrong;
    std::printf("sheet %s\n", qPrintable(desk.Shown(0).join(QLatin1Char(','))));
    desk.WhenAsked([&](QWidget &dialog) {
        auto *place = dialog.findChild<QLineEdit *>(QStringLiteral("place"));
        place->selectAll();
        QTest::keyClicks(place, frames);
        QTest::mouseClick(
            dialog.findChild<QPushButton *>(QStringLiteral("render")), Qt::LeftButton);
        auto *state = dialog.findChild<QLabel *>(QStringLiteral("state"));
        QTRY_VERIFY_WITH_TIMEOUT(state->text().contains(QStringLiteral("frames are in")), 60000);
        QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("close")), Qt::LeftButton);
    });
    const bool rendered = desk.Choose("File", QStringLiteral("Render Frames"));
    const bool quit = desk.Quit(); // nothing was changed, so that nothing is asked
    return rendered && quit && desk.AllAsked() ? 0 : kWentWrong;
}

/// A process that opens the sample scene and shows its sheet.
int ShowScene(const QString &project, const QString &pictures)
{
    MainDesk desk;
    desk.pictures = pictures;
    if (!desk.Window().Open(project) || !desk.Choose("Window", QStringLiteral("morvex"))
        || !QTest::qWaitFor(
            [&] { return desk.Sheet() && desk.Sheet()->columnCount() == 3; }, MainDesk::kPatience))
        return kWentWrong;
    auto *viewer = desk.Window().findChild<Viewer *>();
    desk.Session().SetCurrentFrame(29); // of a splash
    desk.Click(&viewer->View());
    desk.ClickCell(1, 29);
    for (int col = 0; col < 3; ++col)
        std::printf("column %d %s\n", col, qPrintable(desk.Shown(col).join(QLatin1Char(','))));
    desk.Picture(QStringLiteral("window"));
    return desk.Quit() && desk.AllAsked() ? 0 : kWentWrong;
}

} // namespace

class TestMainJob : public QObject
{
    Q_OBJECT

private slots:
    void fromTheDrawingsToTheRenderedFrames();
    void theSampleSceneComesUpWithItsSheet();

private:
    void ImportAndMakeComposition();
    void MakeColumn();
    void TypeRuns();
    void UseSerieAndCycle();
    void UseBlocks();
    void UseClipboard();
    void UseExpo();
    void UndoAndRedo();
    void Play();
    void LookAtSheet();
    void RenderInANewProcess();

    const Cut cut;
    Paper paper;
    MainDesk *desk = nullptr;
};

void TestMainJob::LookAtSheet()
{
    QCOMPARE(desk->Shown(0), paper.Shown());
}

void TestMainJob::ImportAndMakeComposition()
{
    desk->WhenAskedForFile(cut.DrawingPath(3)); // any one of them
    QVERIFY(desk->Choose("File", QStringLiteral("Import Drawings")));
    desk->WhenAsked([](QWidget &dialog) {
        const auto put = [&](const char *name, int value) {
            auto *box = dialog.findChild<QSpinBox *>(QLatin1String(name));
            box->selectAll();
            QTest::keyClicks(box, QString::number(value));
        };
        put("width", kSize.width());
        put("height", kSize.height());
        put("frames", kFrames);
        MainDesk::Accept(dialog);
    });
    QVERIFY(desk->Choose("Composition", QStringLiteral("New Composition")));
    QVERIFY(desk->Session().ActiveComposition());
    QCOMPARE(desk->Session().ActiveComposition()->size, kSize);
    QCOMPARE(desk->Session().FrameCount(), kFrames);
    desk->WhenAskedForFile(cut.ProjectPath());
    QVERIFY(desk->Choose("File", QStringLiteral("Save As")));
    QVERIFY(QFileInfo::exists(cut.ProjectPath()));
}

void TestMainJob::MakeColumn()
{
    QVERIFY(desk->Choose("Window", QStringLiteral("morvex")));
    QTRY_VERIFY(desk->Sheet() && desk->Sheet()->isVisible());
    QTRY_COMPARE(desk->Sheet()->rowCount(), kFrames);
    auto *name = desk->InputOf<QLineEdit>("Name");
    QVERIFY(name);
    name->setFocus();
    QTest::keyClicks(name, cut.DrawingPath(1));
    QTest::keyClick(name, Qt::Key_Return);
    auto *make = desk->InputOf<QPushButton>("New Col");
    QVERIFY(make);
    QTest::mouseClick(make, Qt::LeftButton);
    QCOMPARE(desk->Sheet()->columnCount(), 1);
    QCOMPARE(desk->Session().GetProject().ItemCount(), 3); // the root, the series, the composition
    LookAtSheet();
    desk->Picture(QStringLiteral("new-column"));
}

void TestMainJob::TypeRuns()
{
    const struct
    {
        int frame, drawing;
    } runs[] = { { 0, 1 }, { 3, 2 }, { 6, 5 } };
    for (const auto &run : runs) {
        desk->ClickCell(0, run.frame);
        desk->TypeCell(run.drawing);
        desk->Key(Qt::Key_Return);
        paper.Fill(run.frame, kFrames, run.drawing);
    }
    LookAtSheet();
    desk->Picture(QStringLiteral("typed"));
}

void TestMainJob::UseSerieAndCycle()
{
    const int begun[] = { 1, 1, 2 };
    for (int row = 0; row < 3; ++row) {
        desk->ClickCell(0, row);
        desk->TypeCell(begun[row]);
    }
    desk->DragCells(0, 0, 2); // 2 goes on to frame 6, where 5 begins
    desk->Key(Qt::Key_G, Qt::ControlModifier);
    for (int row = 0; row < 6; ++row)
        paper.cells[row] = 1 + row / 2;
    LookAtSheet();
    desk->Picture(QStringLiteral("serie"));

    desk->DragCells(0, 0, 5);
    desk->Key(Qt::Key_H, Qt::ControlModifier);
    for (int row = 6; row < kFrames; ++row)
        paper.cells[row] = paper.cells[row % 6];
    LookAtSheet();
}

void TestMainJob::UseBlocks()
{
    desk->DragCells(0, 4, 5);
    desk->Key(Qt::Key_Insert);
    paper.Insert(4, 2);
    LookAtSheet();
    desk->DragCells(0, 9, 11);
    desk->Key(Qt::Key_Delete, Qt::ControlModifier);
    paper.Remove(9, 3);
    LookAtSheet();
    desk->DragCells(0, 12, 13);
    desk->Key(Qt::Key_Delete);
    paper.Fill(12, 14, 0);
    LookAtSheet();
}

void TestMainJob::UseClipboard()
{
    desk->DragCells(0, 0, 3);
    desk->Key(Qt::Key_C, Qt::ControlModifier);
    desk->ClickCell(0, 19);
    desk->Key(Qt::Key_V, Qt::ControlModifier);
    for (int row = 0; row < 4; ++row)
        paper.cells[19 + row] = paper.cells[row];
    LookAtSheet();
    desk->DragCells(0, 15, 16);
    desk->Key(Qt::Key_X, Qt::ControlModifier);
    paper.Fill(15, 17, 0);
    LookAtSheet();
}

void TestMainJob::UseExpo()
{
    desk->ClickCell(0, 1); // a blank column empties what lies outside
    desk->Key(Qt::Key_Home);
    paper.Fill(0, 1, 0);
    LookAtSheet();
    desk->ClickCell(0, 21);
    desk->Key(Qt::Key_End);
    paper.Fill(22, kFrames, 0);
    LookAtSheet();
}

void TestMainJob::UndoAndRedo()
{
    const QStringList before = desk->Shown(0);
    desk->ClickCell(0, 10);
    desk->TypeCell(7);
    const QStringList after = desk->Shown(0);
    QVERIFY(after != before);
    QVERIFY(desk->Choose("Edit", QStringLiteral("Undo")));
    QTRY_COMPARE(desk->Shown(0), before);
    QVERIFY(desk->Choose("Edit", QStringLiteral("Redo")));
    QTRY_COMPARE(desk->Shown(0), after);
    paper.cells[10] = 7;
    LookAtSheet();
}

void TestMainJob::Play()
{
    auto *viewer = desk->Window().findChild<Viewer *>();
    QVERIFY(viewer);
    desk->Click(&viewer->View());
    desk->Key(Qt::Key_Home);
    QCOMPARE(desk->Session().CurrentFrame(), 0);
    desk->Key(Qt::Key_Space);
    QTRY_VERIFY(desk->Session().CurrentFrame() >= 4);
    desk->Picture(QStringLiteral("playing"));
    desk->Key(Qt::Key_Space);
    QVERIFY(!viewer->GetTransport().IsPlaying());
    desk->Key(Qt::Key_Home);
    desk->Key(Qt::Key_PageDown);
    QCOMPARE(desk->Session().CurrentFrame(), 1);
}

void TestMainJob::RenderInANewProcess()
{
    QProcess again;
    again.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    again.start(QCoreApplication::applicationFilePath(),
        { QLatin1String(kAgain), cut.ProjectPath(), cut.FramesPath() });
    QVERIFY(again.waitForFinished(120000));
    const QByteArray told = again.readAllStandardOutput();
    QCOMPARE(again.exitCode(), 0);
    QVERIFY2(
        told.contains("sheet " + paper.Shown().join(QLatin1Char(',')).toUtf8()), told.constData());

    const QDir frames(cut.FramesPath());
    const QStringList files = frames.entryList(QDir::Files, QDir::Name);
    QCOMPARE(files.size(), kFrames);
    for (int frame = 0; frame < kFrames; ++frame) {
        const QImage rendered(frames.filePath(files[frame]));
        QVERIFY2(rendered.convertToFormat(QImage::Format_RGB32) == FrameOf(cut, paper.cells[frame]),
            qPrintable(QStringLiteral("frame %1 does not show drawing %2")
                           .arg(frame)
                           .arg(paper.cells[frame])));
    }
}

void TestMainJob::fromTheDrawingsToTheRenderedFrames()
{
    {
        MainDesk first;
        first.pictures = keep;
        desk = &first;
        using Step = void (TestMainJob::*)();
        for (const Step step : { &TestMainJob::ImportAndMakeComposition, &TestMainJob::MakeColumn,
                 &TestMainJob::TypeRuns, &TestMainJob::UseSerieAndCycle, &TestMainJob::UseBlocks,
                 &TestMainJob::UseClipboard, &TestMainJob::UseExpo, &TestMainJob::UndoAndRedo,
                 &TestMainJob::Play }) {
            (this->*step)();
            if (QTest::currentTestFailed())
                return;
        }
        QVERIFY(desk->Choose("File", QStringLiteral("Save")));
        QVERIFY(desk->Quit());
        QCOMPARE(desk->Surprises(), QStringList());
        QVERIFY(desk->AllAsked());
        desk = nullptr;
    }
    RenderInANewProcess();
}

/// The walk is on twos all the way, the street stays, the splash comes with three of the steps.
void TestMainJob::theSampleSceneComesUpWithItsSheet()
{
    QProcess scene;
    scene.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    scene.start(QCoreApplication::applicationFilePath(),
        { QLatin1String(kScene), QStringLiteral(VN_SCENE), keep });
    QVERIFY(scene.waitForFinished(60000));
    const QByteArrayList lines = scene.readAllStandardOutput().replace('\r', "").split('\n');
    QCOMPARE(scene.exitCode(), 0);

    QByteArrayList walk;
    for (int frame = 0; frame < 96; ++frame)
        walk << (frame % 2 ? QByteArray("~") : QByteArray::number(frame / 2 % kDrawings + 1));
    QVERIFY2(lines.contains("column 1 " + walk.join(',')), lines.join('\n').constData());
    QVERIFY(lines.contains(
        "column 2 " + QByteArrayList(QVector<QByteArray>(96, "-").toList()).join(',')));
    QByteArrayList splash(QVector<QByteArray>(96, QByteArray()).toList());
    for (const int start : { 24, 48, 72 }) {
        for (int drawing = 1; drawing <= 6; ++drawing) // on ones, then on twos
            splash[start + drawing - 1] = QByteArray::number(drawing);
        for (int drawing = 7; drawing <= 12; ++drawing) {
            splash[start + 2 * drawing - 8] = QByteArray::number(drawing);
            splash[start + 2 * drawing - 7] = "~";
        }
    }
    QVERIFY2(lines.contains("column 0 " + splash.join(',')), lines.join('\n').constData());
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    ApplyStyle(application);
    QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String(kAgain))
        return RunAgain(arguments.value(2), arguments.value(3));
    if (arguments.value(1) == QLatin1String(kScene))
        return ShowScene(arguments.value(2), arguments.value(3));
    if (arguments.value(1) == QLatin1String("--keep")) {
        keep = QDir(arguments.value(2)).absolutePath();
        argc = 1; // the rest is not Qt Test's
    }
    TestMainJob tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_main_job.moc"
