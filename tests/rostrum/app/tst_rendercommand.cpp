#include "app/RenderCommand.h"
#include "core/FootageFiles.h"
#include "core/ProjectFile.h"

#include "testing/Platform.h"
#include "testing/TestMain.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

using namespace rostrum;

namespace {

struct Outcome
{
    int status = -1;
    QByteArray printed; // on standard error
};

/// Runs the command in a process of its own, since it prints.
Outcome Run(const QStringList &arguments)
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
        QStringList{ QStringLiteral("--run") } + arguments);
    Outcome outcome;
    if (child.waitForFinished() && child.exitStatus() == QProcess::NormalExit)
        outcome.status = child.exitCode();
    outcome.printed = child.readAllStandardError().replace("\r\n", "\n"); // Windows' end of a line
    return outcome;
}

QStringList Files(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files, QDir::Name);
}

/// A project over the walk of the tests' drawings: compositions "walk" of 12 frames, and more.
Project MakeProject(const QString &drawing, const QByteArrayList &compositions)
{
    Project project;
    const ImportResult import = ImportDrawings(drawing, /*series=*/true);
    if (!import.Ok())
        qFatal("%s", qPrintable(import.error));
    const ItemId series = project.AddFootage(import.name, import.footage);
    for (const QByteArray &name : compositions) {
        Composition made;
        made.size = QSize(96, 72);
        made.duration = Time{ 12, 25 };
        const ItemId item = project.AddComposition(name, made);
        project.AddLayer(series, item);
    }
    return project;
}

} // namespace

class TestRenderCommand : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void framesAreWrittenAndTheWayIsShown();
    void oneFrameCanBeAskedFor();
    void withoutFramesAllAreWritten();
    void theCompositionIsChosenByName();
    void transparentFramesHaveNoBackground();
    void wordsThatAreNotUnderstood_data();
    void wordsThatAreNotUnderstood();
    void whatGoesWrongIsTold_data();
    void whatGoesWrongIsTold();
    void aMissingDrawingIsToldAndTheFramesAreWritten();
    void ctrlCEndsWithWholeFiles();

private:
    QString PathOf(const char *name) const { return folder->filePath(QString::fromUtf8(name)); }
    void Save(const QByteArrayList &compositions) const;

    QScopedPointer<QTemporaryDir> folder;
};

void TestRenderCommand::init()
{
    folder.reset(new QTemporaryDir);
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("dessins é")));
    for (int number = 0; number < 4; ++number) {
        const QString name = QStringLiteral("step000%1.png").arg(number);
        QVERIFY(QFile::copy(
            QStringLiteral(VN_TEST_DATA "/render/") + name, PathOf("dessins é/") + name));
    }
    Save({ "walk" });
}

void TestRenderCommand::Save(const QByteArrayList &compositions) const
{
    const Project project = MakeProject(PathOf("dessins é/step0001.png"), compositions);
    QCOMPARE(SaveProject(project, PathOf("a.rostrum")), QString());
}

void TestRenderCommand::framesAreWrittenAndTheWayIsShown()
{
    const Outcome outcome = Run({ PathOf("a.rostrum"), QStringLiteral("--frames"),
        QStringLiteral("1-3"), QStringLiteral("--out"), PathOf("out") });
    QCOMPARE(outcome.status, 0);
    QCOMPARE(Files(PathOf("out")),
        QStringList({ QStringLiteral("walk_0001.png"), QStringLiteral("walk_0002.png"),
            QStringLiteral("walk_0003.png") }));
    QCOMPARE(QImage(PathOf("out/walk_0002.png")).pixel(28 + 10, 21 + 10), qRgb(0x20, 0xc0, 0x40));
    QVERIFY2(outcome.printed.contains("]  3/3  left 0:00\n"), outcome.printed.constData());
}

void TestRenderCommand::oneFrameCanBeAskedFor()
{
    QCOMPARE(Run({ QStringLiteral("--out"), PathOf("out"), QStringLiteral("--frames"),
                     QStringLiteral("7"), PathOf("a.rostrum") })
                 .status,
        0);
    QCOMPARE(Files(PathOf("out")), QStringList{ QStringLiteral("walk_0007.png") });
}

void TestRenderCommand::withoutFramesAllAreWritten()
{
    QCOMPARE(Run({ PathOf("a.rostrum"), QStringLiteral("--out"), PathOf("out") }).status, 0);
    QCOMPARE(Files(PathOf("out")).size(), 12);
}

void TestRenderCommand::theCompositionIsChosenByName()
{
    Save({ "walk", "été", "twice", "twice" });
    const auto run = [this](const QStringList &more) {
        return Run(
            QStringList{ PathOf("a.rostrum"), QStringLiteral("--out"), PathOf("out") } + more);
    };
    const QByteArray names = "\"walk\", \"été\", \"twice\", \"twice\"\n";
    Outcome outcome = run({});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(
        outcome.printed, "rostrum: Name one of the project's compositions with --comp: " + names);
    outcome = run({ QStringLiteral("--comp"), QStringLiteral("run") });
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.printed,
        "rostrum: None of the project's compositions has the name \"run\"; there are: " + names);
    outcome = run({ QStringLiteral("--comp"), QStringLiteral("twice") });
    QCOMPARE(outcome.status, 1);
    QVERIFY(outcome.printed.startsWith("rostrum: Not only one of "));
    QCOMPARE(Files(PathOf("out")), QStringList());

    QCOMPARE(run({ QStringLiteral("--comp"), QStringLiteral("été") }).status, 0);
    QCOMPARE(Files(PathOf("out")).first(), QStringLiteral("été_0000.png"));
}

void TestRenderCommand::transparentFramesHaveNoBackground()
{
    QCOMPARE(Run({ PathOf("a.rostrum"), QStringLiteral("--transparent"), QStringLiteral("--out"),
                     PathOf("out"), QStringLiteral("--frames"), QStringLiteral("2-2") })
                 .status,
        0);
    QCOMPARE(QImage(PathOf("out/walk_0002.png")).pixel(1, 1), 0U);
}

void TestRenderCommand::wordsThatAreNotUnderstood_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QByteArray>("printed");
    const auto row = [](const char *words, const char *printed) {
        QTest::newRow(words) << QString::fromLatin1(words) << QByteArray(printed);
    };
    row("", "render wants a project");
    row("a", "render wants --out and a folder");
    row("a b --out o", "render wants one project");
    row("a --out", "--out wants something behind it");
    row("a --out --frames 1", "--out wants something behind it");
    row("a --out o --frames x", "--frames wants A-B, not \"x\"");
    row("a --out o --frames 1-", "--frames wants A-B, not \"1-\"");
    row("a --out o --frames -1", "--frames wants A-B, not \"-1\"");
    row("a --out o --frames 1-99999999999", "--frames wants A-B, not \"1-99999999999\"");
    row("a --out o --speed 3", "\"--speed\" is no option of render");
}

void TestRenderCommand::wordsThatAreNotUnderstood()
{
    QFETCH(QString, words);
    QFETCH(QByteArray, printed);
    const Outcome outcome = Run(words.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.printed, "rostrum: " + printed + "; see rostrum --help\n");
}

void TestRenderCommand::whatGoesWrongIsTold_data()
{
    QTest::addColumn<QByteArray>("project"); // its bytes; "walk" for the usual one
    QTest::addColumn<QString>("frames");
    QTest::addColumn<QByteArray>("printed");
    QTest::newRow("a damaged project")
        << QByteArray("{") << QStringLiteral("0") << QByteArray("is damaged at byte ");
    QTest::newRow("frames that are not there")
        << QByteArray("walk") << QStringLiteral("5-12")
        << QByteArray("The frames 5 to 12 are not in the composition \"walk\", which has 0 to 11");
    QTest::newRow("backwards") << QByteArray("walk") << QStringLiteral("5-4")
                               << QByteArray("The frames 5 to 4 are not in ");
}

void TestRenderCommand::whatGoesWrongIsTold()
{
    QFETCH(QByteArray, project);
    QFETCH(QString, frames);
    QFETCH(QByteArray, printed);
    if (project != "walk") {
        QFile file(PathOf("a.rostrum"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(project), project.size());
    }
    const Outcome outcome = Run({ PathOf("a.rostrum"), QStringLiteral("--out"), PathOf("out"),
        QStringLiteral("--frames"), frames });
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.printed.contains(printed), outcome.printed.constData());
    QCOMPARE(Files(PathOf("out")), QStringList());
}

void TestRenderCommand::aMissingDrawingIsToldAndTheFramesAreWritten()
{
    QVERIFY(QFile::remove(PathOf("dessins é/step0002.png")));
    const Outcome outcome = Run({ PathOf("a.rostrum"), QStringLiteral("--out"), PathOf("out") });
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.printed.contains("rostrum: Frame 2: The image \""
                 + PathOf("dessins é/step0002.png").toUtf8()
                 + "\" cannot be read: there is no such file\n"),
        outcome.printed.constData());
    QCOMPARE(Files(PathOf("out")).size(), 12);
}

void TestRenderCommand::ctrlCEndsWithWholeFiles()
{
    Project project = MakeProject(PathOf("dessins é/step0001.png"), { "long" });
    const ItemId composition = project.NextInWalk(project.NextInWalk(project.RootFolder()));
    project.EditComposition(composition)->duration = Time{ 100000, 25 };
    QCOMPARE(SaveProject(project, PathOf("a.rostrum")), QString());
    QProcess child;
    child.setReadChannel(QProcess::StandardError);
    child.start(QCoreApplication::applicationFilePath(),
        { QStringLiteral("--run"), PathOf("a.rostrum"), QStringLiteral("--out"), PathOf("out") });
    QVERIFY(child.waitForStarted());
    QVERIFY(child.waitForReadyRead()); // the first line of the way: it has begun
    QVERIFY(testing::Interrupt(child));
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 1);
    QVERIFY(child.readAllStandardError().contains("rostrum: stopped after "));
    const QStringList files = Files(PathOf("out"));
    QVERIFY(files.size() < 100000);
    for (const QString &file : files)
        QCOMPARE(QImage(PathOf("out/") + file).size(), QSize(96, 72));
}

int main(int argc, char **argv)
{
    if (argc > 1 && qstrcmp(argv[1], "--run") == 0) {
        testing::AwaitInterrupt();
        QStringList words;
        for (int i = 2; i < argc; ++i)
            words << QString::fromLocal8Bit(argv[i]);
        return RunRender(words);
    }
    QApplication application(argc, argv);
    TestRenderCommand tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_rendercommand.moc"
