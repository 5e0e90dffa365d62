// The scene that comes with the program: it is what its source makes, and it opens and renders.

#include "core/ProjectFile.h"
#include "render/Renderer.h"
#include "testing/TestMain.h"

#include <QDirIterator>
#include <QProcess>
#include <QTemporaryDir>

using namespace rostrum;

class TestSampleScene : public QObject
{
    Q_OBJECT

private slots:
    void theSceneInTheTreeIsWhatItsSourceMakes();
    void itsTimingHasOneKeyARun();
    void everyFrameOfItRenders();
};

namespace {

const QString kScene = QStringLiteral(SAMPLES "/puddles");

QStringList FilesIn(const QString &folder)
{
    QStringList files;
    QDirIterator walk(folder, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files << QDir(folder).relativeFilePath(walk.next());
    files.sort();
    return files;
}

QByteArray Bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("not to be read");
}

Project Scene()
{
    return LoadProject(kScene + QStringLiteral("/puddles.rostrum")).project;
}

const Composition &CompositionOf(const Project &project, ItemId *id = nullptr)
{
    ItemId item = project.RootFolder();
    while (!project.FindComposition(item))
        item = project.NextInWalk(item);
    if (id)
        *id = item;
    return *project.FindComposition(item);
}

} // namespace

void TestSampleScene::theSceneInTheTreeIsWhatItsSourceMakes()
{
    const QTemporaryDir made;
    QCOMPARE(QProcess::execute(QStringLiteral(DRAW_SCENE), { made.path() }), 0);
    const QStringList files = FilesIn(kScene);
    QCOMPARE(FilesIn(made.path()), files);
    for (const QString &file : files) {
        const QString tree = QDir(kScene).filePath(file), fresh = QDir(made.path()).filePath(file);
        if (file.endsWith(QLatin1String(".png")))
            QVERIFY2(QImage(tree) == QImage(fresh) && !QImage(tree).isNull(), qPrintable(file));
        else
            QCOMPARE(Bytes(fresh), Bytes(tree));
    }
}

void TestSampleScene::itsTimingHasOneKeyARun()
{
    const Project project = Scene();
    const Composition &scene = CompositionOf(project);
    QCOMPARE(scene.layers.size(), 3);
    // 12 drawings and the blank behind them, three times, and the blank at the start
    QCOMPARE(scene.layers[0]->timeRemap.KeyCount(), 3 * 13 + 1);
    QCOMPARE(scene.layers[1]->timeRemap.KeyCount(), 96 / 2); // on twos
    QVERIFY(!scene.layers[2]->timeRemap.HasKeys());
}

void TestSampleScene::everyFrameOfItRenders()
{
    const Project project = Scene();
    ItemId id = 0;
    const Composition &scene = CompositionOf(project, &id);
    DrawingCache cache;
    Renderer renderer(cache);
    QImage before;
    int changes = 0;
    for (qint32 frame = 0; frame < 96; frame += 8) {
        QImage image;
        QVERIFY(renderer.Render(project, id, frame, &image));
        QCOMPARE(renderer.Messages(), QStringList());
        QCOMPARE(image.size(), scene.size);
        changes += image != before ? 1 : 0;
        before = image;
    }
    QCOMPARE(changes, 12); // somebody walks
}

VN_TEST_MAIN(TestSampleScene)
#include "tst_sample_scene.moc"
