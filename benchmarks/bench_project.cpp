// Opening and saving a large project: 50 layers with 1500 keys each. The floor reads and writes the
// same bytes as JSON that nobody looks at.
#include "bench/Bench.h"

#include "core/ProjectFile.h"
#include "core/WholeFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <memory>

namespace {

using namespace bench;
using namespace rostrum;

constexpr int kLayers = 50;
constexpr int kKeys = 1500; // of each layer
constexpr int kRounds = 5;

Project LargeProject()
{
    Footage series;
    series.folder = QStringLiteral("/cut");
    series.isSeries = true;
    series.size = { 640, 480 };
    for (int number = 0; number < 40; ++number) {
        series.files << QStringLiteral("walk%1.png").arg(number, 4, 10, QLatin1Char('0'));
        series.numbers << number;
    }
    Project project;
    Composition composition;
    composition.duration = composition.rate.FrameTime(kKeys);
    const ItemId compo = project.AddComposition("cut", composition);
    const ItemId footage = project.AddFootage("walk", series);
    for (int layer = 0; layer < kLayers; ++layer) {
        Stream &remap = project.EditLayer(compo, project.AddLayer(footage, compo))->timeRemap;
        for (int frame = 0; frame < kKeys; ++frame) {
            const int key = remap.InsertKey(
                composition.rate.FrameTime(frame), { (frame + layer) % 40 / 25.0, 0, 0, 0 });
            remap.SetKeyInterpolation(key, Interpolation::Hold, Interpolation::Hold);
        }
    }
    return project;
}

struct Files
{
    Files()
    {
        SaveProject(project, path); // unchecked: reading it would show
        QFile file(path);
        file.open(QIODevice::ReadOnly); // unchecked: as above
        bare = QJsonDocument::fromJson(file.readAll());
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("large.rostrum"));
    QString barePath = folder.filePath(QStringLiteral("bare.json"));
    Project project = LargeProject();
    QJsonDocument bare;
};

const Registration project("project", [] {
    const auto files = std::make_shared<Files>();
    const auto readBare = [files] {
        QFile file(files->path);
        file.open(QIODevice::ReadOnly); // unchecked: it was just written
        const volatile bool read = !QJsonDocument::fromJson(file.readAll()).isNull();
        (void)read;
    };
    const auto writeBare = [files] {
        WriteWholeFile(files->barePath, files->bare.toJson(QJsonDocument::Compact)); // unchecked
    };
    const auto open = [files] {
        const volatile bool read = LoadProject(files->path).Ok();
        (void)read;
    };
    const auto save = [files] { SaveProject(files->project, files->path); };
    return Figures{ Compare(QStringLiteral("open 50 layers of 1500 keys"), /*goal=*/2, kRounds,
                        open, readBare),
        Compare(
            QStringLiteral("save 50 layers of 1500 keys"), /*goal=*/2, kRounds, save, writeBare),
        Compare(
            QStringLiteral("save and open them"), /*goal=*/2, kRounds,
            [=] {
                save();
                open();
            },
            [=] {
                writeBare();
                readBare();
            }) };
});

} // namespace
