// The program itself, in its own process and window, worked by keys that come from outside: it is
// killed in the middle of the work, started again, and the work is there.
#include "core/ProjectFile.h"
#include "testing/TestMain.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using rostrum::LoadProject;
using rostrum::Project;

namespace {

constexpr int kPatience = 60000; // ms, on a busy machine
constexpr int kOneTry = 8000; // ms for keys to have an effect

/// Works the keyboard and looks for windows, as a person does.
QByteArray Tell(const QStringList &words)
{
    QProcess hand;
    hand.start(QStringLiteral("xdotool"), words);
    hand.waitForFinished(kPatience);
    return hand.readAllStandardOutput().trimmed();
}

/// The window whose title matches, empty when there is none.
QString FindWindow(const QString &title)
{
    const QByteArray found = Tell({ QStringLiteral("search"), QStringLiteral("--onlyvisible"),
        QStringLiteral("--name"), title });
    return QString::fromLatin1(found.split('\n').last());
}

/// Presses keys in a window until they have the effect: what comes before a window is quite up is lost.
/// @return false when it never comes
template <typename Effect>
bool Press(const QString &title, const QString &keys, Effect effect)
{
    QElapsedTimer passed;
    for (passed.start(); passed.elapsed() < kPatience;) {
        const QString window = FindWindow(title);
        if (!window.isEmpty()) {
            Tell({ QStringLiteral("windowactivate"), QStringLiteral("--sync"), window });
            Tell({ QStringLiteral("key"), QStringLiteral("--clearmodifiers"), keys });
        }
        if (QTest::qWaitFor(effect, window.isEmpty() ? 100 : kOneTry))
            return true;
    }
    return false;
}

bool IsThere(const QString &title)
{
    return !FindWindow(title).isEmpty();
}

/// Makes a composition as the dialog proposes it.
bool MakeComposition(const QString &title)
{
    const QString dialog = QStringLiteral("^New Composition$");
    return Press(title, QStringLiteral("ctrl+n"), [&] { return IsThere(dialog); })
        && Press(dialog, QStringLiteral("Return"), [&] { return !IsThere(dialog); });
}

/// Takes what is offered at the start.
bool Recover(const QString &titleThen)
{
    return Press(
        QStringLiteral("^Rostrum$"), QStringLiteral("Return"), [&] { return IsThere(titleThen); });
}

QByteArray Bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

/// What the program is given to live in, and the project in it.
class Home
{
public:
    Home()
    {
        QSettings settings(
            folder.filePath(QStringLiteral("config/rostrum/rostrum.ini")), QSettings::IniFormat);
        settings.setValue(QStringLiteral("autosave/seconds"), 1);
        settings.sync();
        QDir().mkpath(folder.filePath(QStringLiteral("cut")));
    }
    QString Path(const char *name) const
    {
        return folder.filePath(QStringLiteral("cut/") + QLatin1String(name));
    }
    void Start(QProcess &program, const QStringList &words) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(
            QStringLiteral("XDG_CONFIG_HOME"), folder.filePath(QStringLiteral("config")));
        environment.insert(
            QStringLiteral("XDG_DATA_HOME"), folder.filePath(QStringLiteral("data")));
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedChannels);
        program.start(QStringLiteral(VN_ROSTRUM), words);
    }

    QTemporaryDir folder;
};

} // namespace

class TestKilled : public QObject
{
    Q_OBJECT

private slots:
    void theWorkSinceTheLastSaveIsThereAfterAKill();
    void aProjectThatWasNeverSavedIsThereAfterAKill();
};

void TestKilled::theWorkSinceTheLastSaveIsThereAfterAKill()
{
    const Home home;
    const QString path = home.Path("scene.rostrum");
    const QString clean = QStringLiteral("^scene\\.rostrum - Rostrum$");
    const QString changed = QStringLiteral("^scene\\.rostrum\\* - Rostrum$");
    QCOMPARE(rostrum::SaveProject(Project(), path), QString());
    const QByteArray before = Bytes(path);
    {
        QProcess program;
        home.Start(program, { path });
        QVERIFY(MakeComposition(clean));
        const QString copy = home.Path("scene.autosave.rostrum");
        QTRY_VERIFY_WITH_TIMEOUT(LoadProject(copy).project.ItemCount() == 2, kPatience);
        program.kill();
        QVERIFY(program.waitForFinished(kPatience));
        QCOMPARE(program.exitStatus(), QProcess::CrashExit);
    }
    QCOMPARE(Bytes(path), before);

    QProcess program;
    home.Start(program, { path });
    QVERIFY(Recover(changed));
    QVERIFY(Press(changed, QStringLiteral("ctrl+s"),
        [&] { return LoadProject(path).project.ItemCount() == 2; }));
    QVERIFY(Press(
        clean, QStringLiteral("ctrl+q"), [&] { return program.state() == QProcess::NotRunning; }));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(QDir(home.Path("")).entryList(QDir::Files | QDir::Hidden),
        QStringList{ QStringLiteral("scene.rostrum") });
}

void TestKilled::aProjectThatWasNeverSavedIsThereAfterAKill()
{
    const Home home;
    const QDir data(home.folder.filePath(QStringLiteral("data/rostrum")));
    const QStringList copies{ QStringLiteral("untitled-*.autosave.rostrum") };
    {
        QProcess program;
        home.Start(program, {});
        QVERIFY(MakeComposition(QStringLiteral("^Untitled - Rostrum$")));
        QTRY_COMPARE_WITH_TIMEOUT(data.entryList(copies, QDir::Files).size(), 1, kPatience);
        program.kill();
        QVERIFY(program.waitForFinished(kPatience));
    }
    const QByteArray copy = Bytes(data.filePath(data.entryList(copies, QDir::Files).first()));
    for (int time = 0; time < 2; ++time) { // killed once more, it is still there
        QProcess program;
        home.Start(program, {});
        QVERIFY(Recover(QStringLiteral("^Untitled\\* - Rostrum$")));
        program.kill();
        QVERIFY(program.waitForFinished(kPatience));
        const QStringList left = data.entryList(copies, QDir::Files);
        QCOMPARE(left.size(), 1);
        QCOMPARE(Bytes(data.filePath(left.first())), copy);
    }
}

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    TestKilled tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_killed.moc"
