#include "WindowFixture.h"
#include "core/FootageFiles.h"
#include "testhost/HostTestMain.h"

#include <QProgressBar>

using testing::ClickButton;
using testing::DialogHand;
using testing::Type;
using testing::WindowFixture;

namespace {

/// PATH as it was comes back at the end.
class PathScope
{
public:
    explicit PathScope(const QByteArray &path) : before(qgetenv("PATH")) { qputenv("PATH", path); }
    ~PathScope() { qputenv("PATH", before); }

private:
    QByteArray before;
};

/// The window with a composition in it, and what its render dialog shows.
class RenderFixture : public WindowFixture
{
public:
    RenderFixture(int frames, const QSize &size = { 64, 48 })
    {
        rostrum::Composition composition;
        composition.size = size;
        composition.duration = rostrum::Rate().FrameTime(frames);
        rostrum::ItemId made = 0;
        Session().Do("Make", [&](rostrum::Project &project) {
            made = project.AddComposition("scene", composition);
        });
        Session().SetActiveItem(made);
    }
    QStringList Files(const char *place) const
    {
        return QDir(Path(place))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    /// An encoder that does what a shell script does. @return the path to find it by
    QByteArray FakeEncoder(const QByteArray &does) const
    {
        QDir().mkpath(Path("tools"));
        QFile script(Path("tools/ffmpeg"));
        if (!script.open(QIODevice::WriteOnly) || script.write("#!/bin/sh\n" + does + "\n") < 0
            || !script.setPermissions(QFile::ReadOwner | QFile::ExeOwner))
            qFatal("no script can be written");
        return Path("tools").toUtf8() + ':' + qgetenv("PATH");
    }
};

QString StateOf(QDialog &dialog)
{
    return dialog.findChild<QLabel *>(QStringLiteral("state"))->text();
}

bool IsEnabled(QDialog &dialog, const char *name)
{
    return dialog.findChild<QWidget *>(QLatin1String(name))->isEnabled();
}

/// Renders to the end. @return what the dialog then says
QString RunIn(QDialog &dialog)
{
    ClickButton(dialog, QStringLiteral("Render"));
    [&] { QTRY_VERIFY_WITH_TIMEOUT(IsEnabled(dialog, "render"), 60000); }();
    return StateOf(dialog);
}

} // namespace

/// The dialog of File > Render Frames and File > Render Movie.
class TestRenderDialog : public QObject
{
    Q_OBJECT

private slots:
    void framesCountFromOneAndFilesFromZero();
    void aLongNameLeavesTheDialogAsWideAsItIs();
    void aMovieIsRenderedFromTheMenu();
    void anEndingIsAddedToAMoviesName();
    void aMovieThatIsThereIsReplacedOnlyWhenAsked_data();
    void aMovieThatIsThereIsReplacedOnlyWhenAsked();
    void withoutTheEncoderTheEntryIsGreyAndSaysWhy();
    void anEncoderThatFailsIsToldInTheDialog();
    void aStopLeavesTheFramesThatAreDone_data();
    void aStopLeavesTheFramesThatAreDone();
    void aStoppedMovieLeavesNothing();
    void aRangeTurnedRoundCannotBeRendered();
    void aPlaceIsWanted();
    void aFolderThatCannotBeMadeIsTold();
    void missingDrawingsAreTold();
};

/// Its frame 12 was the frame 13 of viewer, timeline and sheet.
void TestRenderDialog::framesCountFromOneAndFilesFromZero()
{
    RenderFixture fixture(40);
    const DialogHand hand([&](QDialog &d) {
        const auto text = [&](const char *name) {
            return d.findChild<QSpinBox *>(QLatin1String(name))->text();
        };
        auto *files = d.findChild<QLabel *>(QStringLiteral("files"));
        QCOMPARE(text("first"), QStringLiteral("1"));
        QCOMPARE(text("last"), QStringLiteral("40"));
        QCOMPARE(files->text(), QStringLiteral("scene_0000.png to scene_0039.png"));
        QVERIFY(files->width() > files->fontMetrics().horizontalAdvance(files->text()));
        Type(d, "first", QStringLiteral("0")); // there is none
        QCOMPARE(files->text(), QStringLiteral("scene_0000.png to scene_0039.png"));
        Type(d, "place", fixture.Path("out"));
        Type(d, "first", QStringLiteral("13"));
        Type(d, "last", QStringLiteral("12"));
        QCOMPARE(files->text(), QString());
        Type(d, "last", QStringLiteral("13"));
        QCOMPARE(files->text(), QStringLiteral("scene_0012.png"));
        Type(d, "last", QStringLiteral("15"));
        QCOMPARE(files->text(), QStringLiteral("scene_0012.png to scene_0014.png"));
        QVERIFY(files->toolTip().contains(QStringLiteral("frame 1 is file 0")));
        RunIn(d);
    });

    fixture.Choose(QStringLiteral("File/Render Frames..."));

    QVERIFY(hand.Answered());
    QCOMPARE(fixture.Files("out"),
        QStringList({ QStringLiteral("scene_0012.png"), QStringLiteral("scene_0013.png"),
            QStringLiteral("scene_0014.png") }));
}

void TestRenderDialog::aLongNameLeavesTheDialogAsWideAsItIs()
{
    RenderFixture fixture(40);
    int width = 0;
    const auto look = [&] {
        const DialogHand hand([&](QDialog &d) { width = d.width(); });
        fixture.Choose(QStringLiteral("File/Render Frames..."));
        QVERIFY(hand.Answered());
    };
    look();
    const int before = width;
    const rostrum::ItemId composition = fixture.Session().ActiveCompositionId();
    fixture.Session().Do("Rename",
        [&](rostrum::Project &project) { project.Edit(composition)->name = QByteArray(60, 'm'); });

    look();

    QCOMPARE(width, before);
}

void TestRenderDialog::aMovieIsRenderedFromTheMenu()
{
    RenderFixture fixture(5);
    QString told;
    const DialogHand hand([&](QDialog &d) {
        QCOMPARE(d.windowTitle(), QStringLiteral("Render Movie of scene"));
        QVERIFY(!d.findChild<QWidget *>(QStringLiteral("background"))->isVisible());
        Type(d, "place", fixture.Path("out.mp4"));
        Type(d, "last", QStringLiteral("4"));
        QVERIFY(!d.findChild<QWidget *>(QStringLiteral("files")));
        told = RunIn(d);
    });

    fixture.Choose(QStringLiteral("File/Render Movie..."));

    QVERIFY(hand.Answered());
    QCOMPARE(told, QStringLiteral("4 frames are in ") + fixture.Path("out.mp4"));
    QCOMPARE(fixture.Message(), told);
    QVERIFY(QFileInfo(fixture.Path("out.mp4")).size() > 100);
}

void TestRenderDialog::anEndingIsAddedToAMoviesName()
{
    RenderFixture fixture(2);
    const DialogHand hand([&](QDialog &d) {
        Type(d, "place", fixture.Path("out"));
        RunIn(d);
    });

    fixture.Choose(QStringLiteral("File/Render Movie..."));

    QVERIFY(hand.Answered());
    QVERIFY(QFile::exists(fixture.Path("out.mp4")));
}

void TestRenderDialog::aMovieThatIsThereIsReplacedOnlyWhenAsked_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("isReplaced");
    QTest::newRow("yes") << QStringLiteral("Yes") << true;
    QTest::newRow("no") << QStringLiteral("No") << false;
}

void TestRenderDialog::aMovieThatIsThereIsReplacedOnlyWhenAsked()
{
    QFETCH(QString, button);
    QFETCH(bool, isReplaced);
    RenderFixture fixture(2);
    QFile old(fixture.Path("out.mp4"));
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    const DialogHand hand([&](QDialog &d) {
        Type(d, "place", fixture.Path("out.mp4"));
        const DialogHand question([&](QDialog &box) { ClickButton(box, button); });
        RunIn(d);
        QVERIFY(question.Answered());
        QVERIFY(question.Text().contains(fixture.Path("out.mp4")));
    });

    fixture.Choose(QStringLiteral("File/Render Movie..."));

    QVERIFY(hand.Answered());
    QCOMPARE(old.size() > 3, isReplaced);
}

void TestRenderDialog::withoutTheEncoderTheEntryIsGreyAndSaysWhy()
{
    RenderFixture fixture(2);
    QMenu *menu = fixture.Look(QStringLiteral("File"));
    QVERIFY(WindowFixture::Find(menu, QStringLiteral("Render Movie..."))->isEnabled());
    emit menu->aboutToHide();
    {
        const PathScope nothing("");
        menu = fixture.Look(QStringLiteral("File"));
        const QString why = QStringLiteral("Render Movie... (ffmpeg is not installed)");
        QVERIFY(!WindowFixture::Find(menu, why)->isEnabled());
        emit menu->aboutToHide();
    }
    menu = fixture.Look(QStringLiteral("File")); // it was installed meanwhile
    QVERIFY(WindowFixture::Find(menu, QStringLiteral("Render Movie..."))->isEnabled());
}

void TestRenderDialog::anEncoderThatFailsIsToldInTheDialog()
{
    RenderFixture fixture(2);
    const PathScope path(fixture.FakeEncoder("echo the tape is torn >&2; exit 1"));
    QString told;
    const DialogHand hand([&](QDialog &d) {
        Type(d, "place", fixture.Path("out.mp4"));
        told = RunIn(d);
    });

    fixture.Choose(QStringLiteral("File/Render Movie..."));

    QVERIFY(hand.Answered());
    QVERIFY2(told.contains(QStringLiteral("the tape is torn")), qPrintable(told));
    QVERIFY(!QFile::exists(fixture.Path("out.mp4")));
}

void TestRenderDialog::aStopLeavesTheFramesThatAreDone_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("button") << false;
    QTest::newRow("Escape") << true;
}

void TestRenderDialog::aStopLeavesTheFramesThatAreDone()
{
    QFETCH(bool, byEscape);
    RenderFixture fixture(100000); // hours
    QString told;
    const DialogHand hand([&](QDialog &d) {
        Type(d, "place", fixture.Path("out"));
        ClickButton(d, QStringLiteral("Render"));
        QVERIFY(!IsEnabled(d, "render") && !IsEnabled(d, "place") && !IsEnabled(d, "first"));
        auto *bar = d.findChild<QProgressBar *>();
        QTRY_VERIFY(bar->isVisible() && bar->value() > 2);
        QVERIFY2(StateOf(d).contains(QStringLiteral("of 100000, about")), qPrintable(StateOf(d)));
        if (byEscape)
            QTest::keyClick(&d, Qt::Key_Escape);
        else
            ClickButton(d, QStringLiteral("Stop"));
        QTRY_VERIFY(IsEnabled(d, "render"));
        told = StateOf(d);
        QVERIFY(d.isVisible() && IsEnabled(d, "place"));
    });

    fixture.Choose(QStringLiteral("File/Render Frames..."));

    QVERIFY(hand.Answered());
    const int files = fixture.Files("out").size();
    QVERIFY(files > 0 && files < 100000);
    QCOMPARE(told, QStringLiteral("Stopped after %1 frames.").arg(files));
}

void TestRenderDialog::aStoppedMovieLeavesNothing()
{
    RenderFixture fixture(3);
    const PathScope path(fixture.FakeEncoder("exec sleep 600"));
    QDir().mkpath(fixture.Path("out"));
    QString told;
    const DialogHand hand([&](QDialog &d) {
        Type(d, "place", fixture.Path("out/a.mp4"));
        ClickButton(d, QStringLiteral("Render"));
        QTRY_COMPARE(StateOf(d), QStringLiteral("Making the movie..."));
        ClickButton(d, QStringLiteral("Stop"));
        QTRY_VERIFY(IsEnabled(d, "render"));
        told = StateOf(d);
    });

    fixture.Choose(QStringLiteral("File/Render Movie..."));

    QVERIFY(hand.Answered());
    QCOMPARE(told, QStringLiteral("Stopped; no movie was made."));
    QCOMPARE(fixture.Files("out"), QStringList());
}

void TestRenderDialog::aRangeTurnedRoundCannotBeRendered()
{
    RenderFixture fixture(10);
    const DialogHand hand([&](QDialog &d) {
        Type(d, "first", QStringLiteral("6"));
        Type(d, "last", QStringLiteral("5"));
        QVERIFY(!IsEnabled(d, "render"));
        Type(d, "last", QStringLiteral("6"));
        QVERIFY(IsEnabled(d, "render"));
    });

    fixture.Choose(QStringLiteral("File/Render Frames..."));

    QVERIFY(hand.Answered());
}

void TestRenderDialog::aPlaceIsWanted()
{
    RenderFixture fixture(10);
    const DialogHand hand([&](QDialog &d) {
        Type(d, "place", QStringLiteral(" "));
        ClickButton(d, QStringLiteral("Render"));
        QCOMPARE(StateOf(d), QStringLiteral("Say where to put it."));
        QVERIFY(IsEnabled(d, "render"));
    });

    fixture.Choose(QStringLiteral("File/Render Frames..."));

    QVERIFY(hand.Answered());
}

void TestRenderDialog::aFolderThatCannotBeMadeIsTold()
{
    RenderFixture fixture(2);
    QFile file(fixture.Path("out"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QString told;
    const DialogHand hand([&](QDialog &d) {
        Type(d, "place", fixture.Path("out/frames"));
        told = RunIn(d);
    });

    fixture.Choose(QStringLiteral("File/Render Frames..."));

    QVERIFY(hand.Answered());
    QVERIFY2(told.contains(QStringLiteral("cannot be made")), qPrintable(told));
}

/// Each drawing is told once; the frames are there all the same.
void TestRenderDialog::missingDrawingsAreTold()
{
    RenderFixture fixture(3);
    const QString drawing
        = testing::WriteSeries(fixture.folder.path(), QStringLiteral("walk"), 1, 3);
    const auto footage = rostrum::ImportDrawings(drawing, /*series=*/true).footage;
    fixture.Session().Do("Add", [&](rostrum::Project &project) {
        project.AddLayer(
            project.AddFootage("walk", footage), fixture.Session().ActiveCompositionId());
    });
    QVERIFY(QFile::remove(fixture.Path("walk0002.png")));
    QString told;
    const DialogHand hand([&](QDialog &d) {
        Type(d, "place", fixture.Path("out"));
        told = RunIn(d);
    });

    fixture.Choose(QStringLiteral("File/Render Frames..."));

    QVERIFY(hand.Answered());
    QVERIFY2(told.contains(QStringLiteral("3 frames are in"))
            && told.contains(QStringLiteral("Frame 2: "))
            && told.contains(QStringLiteral("walk0002.png")),
        qPrintable(told));
    QCOMPARE(fixture.Files("out").size(), 3);
}

VN_HOST_TEST_MAIN(TestRenderDialog)
#include "tst_renderdialog.moc"
