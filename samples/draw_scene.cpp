// Makes the sample scene: a walker crosses a street in the evening and steps into three puddles.
//
//     draw_scene FOLDER     street.png, walk/, splash/ and puddles.rostrum are written there
//
// The columns are made and timed by the composition library, as the sheet does it, so that the keys
// that stand are those that an animator's own typing would leave.

#include "Drawings.h"

#include "core/ProjectFile.h"
#include "suites/Host.h"
#include "vnAE/vipLi.h"

#include <QDir>
#include <QGuiApplication>

#include <cstdio>
#include <cstring>
#include <functional>

using namespace rostrum;

namespace {

constexpr char kName[] = "puddles";
constexpr int kFrames = 96;
constexpr int kOnTwos = 2; // frames that each drawing of the walk stands
constexpr int kStepFrames = kWalkDrawings / 2 * kOnTwos;
constexpr int kStartX = -240; // of the walker's centre: out of the picture
constexpr int kWalkSize = 480; // pixels

/// A foot lands half a step before the walker's centre.
constexpr int LandingX(int step)
{
    return kStartX + step * kStepLength + kStepLength / 2;
}

constexpr int kWetSteps[] = { 3, 6, 9 };

bool Fail(const QString &what)
{
    std::fprintf(stderr, "draw_scene: %s\n", qPrintable(what));
    return false;
}

QString NumberedName(const QString &stem, int number)
{
    return QStringLiteral("%1/%1%2.png").arg(stem).arg(number, 4, 10, QLatin1Char('0'));
}

bool WriteSeries(const QDir &folder, const QString &stem, int count, QImage (*draw)(int))
{
    if (!folder.mkpath(stem))
        return Fail(QStringLiteral("cannot make the folder ") + folder.filePath(stem));
    for (int number = 1; number <= count; ++number) {
        const QString path = folder.filePath(NumberedName(stem, number));
        if (!draw(number).save(path))
            return Fail(QStringLiteral("cannot write ") + path);
    }
    return true;
}

bool WriteDrawings(const QDir &folder)
{
    QVector<int> puddles;
    for (const int step : kWetSteps)
        puddles << LandingX(step);
    const QString street = folder.filePath(QStringLiteral("street.png"));
    if (!Street(puddles).save(street))
        return Fail(QStringLiteral("cannot write ") + street);
    return WriteSeries(folder, QStringLiteral("walk"), kWalkDrawings, WalkDrawing)
        && WriteSeries(folder, QStringLiteral("splash"), kSplashDrawings, SplashDrawing);
}

ItemId MakeComposition(Host &host)
{
    Project project;
    Composition composition;
    composition.size = { 1280, 720 };
    composition.duration = composition.rate.FrameTime(kFrames);
    const ItemId compo = project.AddComposition(kName, composition);
    host.GetDocument().Replace(project);
    host.GetDocument().view.activeItem = compo;
    vipLi *library = GetVipLi();
    library->BasicSuite = host.BasicSuite();
    std::strcpy(library->CompoName, kName);
    return library->FindCompo() ? compo : 0;
}

/// Each column lies below those before.
bool AddColumns(const QDir &folder)
{
    vipLi *library = GetVipLi();
    const auto path = [&](const QString &file) { return folder.absoluteFilePath(file).toUtf8(); };
    if (library->AddSequenceColumn(path(NumberedName(QStringLiteral("splash"), 1)))
        && library->AddSequenceColumn(path(NumberedName(QStringLiteral("walk"), 1)))
        && library->AddFixeColumn(path(QStringLiteral("street.png"))))
        return true;
    return Fail(QString::fromUtf8(ImportMessage));
}

/// The splash on ones while it rises, on twos while it falls back.
int SplashAt(int frame)
{
    constexpr int kRising = 6;
    for (const int step : kWetSteps) {
        const int age = frame - step * kStepFrames;
        const int number = age < kRising ? age + 1 : kRising + 1 + (age - kRising) / 2;
        if (age >= 0 && number <= kSplashDrawings)
            return number;
    }
    return 0;
}

int WalkAt(int frame)
{
    return frame / kOnTwos % kWalkDrawings + 1;
}

void WriteTiming(int column, int (*numberAt)(int))
{
    GetVipLi()->SetCurrentColumn(column);
    for (int frame = 0; frame < kFrames; ++frame)
        GetVipLi()->SetCellImage(frame, numberAt(frame));
}

/// What moves the layers: the walker goes on at one pace, the splash waits at the next puddle.
void Place(Host &host, ItemId compo)
{
    Project &project = host.GetDocument().Edit("place");
    const Composition &composition = *project.FindComposition(compo);
    const LayerId splash = composition.layers[0]->id, walker = composition.layers[1]->id;
    const Rate rate = composition.rate;

    Stream &going = project.EditLayer(compo, walker)->position;
    const double y = kStreetGround - kWalkGround + kWalkSize / 2.0;
    constexpr int kLast = kFrames - 1;
    going.InsertKey(rate.FrameTime(0), { kStartX, y, 0, 0 });
    going.InsertKey(rate.FrameTime(kLast),
        { kStartX + static_cast<double>(kStepLength) * kLast / kStepFrames, y, 0, 0 });

    Stream &waiting = project.EditLayer(compo, splash)->position;
    for (const int step : kWetSteps) {
        const int frame = step == kWetSteps[0] ? 0 : step * kStepFrames;
        const int key = waiting.InsertKey(rate.FrameTime(frame),
            { static_cast<double>(LandingX(step)), kStreetGround - kSplashGround + 130.0, 0, 0 });
        waiting.SetKeyInterpolation(key, Interpolation::Hold, Interpolation::Hold);
    }
    for (int layer = 0; layer < 3; ++layer) // told apart in the timeline
        project.EditLayer(compo, composition.layers[layer]->id)->label
            = static_cast<qint8>(layer + 1);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", VN_OFFSCREEN);
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: draw_scene FOLDER\n");
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    if (!WriteDrawings(folder))
        return 1;
    Host host;
    const ItemId compo = MakeComposition(host);
    if (!compo || !AddColumns(folder))
        return 1;
    WriteTiming(0, SplashAt);
    WriteTiming(1, WalkAt);
    Place(host, compo);
    const QString wrong = SaveProject(
        host.GetProject(), folder.absoluteFilePath(QStringLiteral("puddles.rostrum")));
    return wrong.isEmpty() ? 0 : !Fail(wrong);
}
